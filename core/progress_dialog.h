#pragma once

#include <cstdint>
#include <string>

namespace qmevents {

/// The progress dialog, left open while long work goes on; closed when the scope ends.
class ProgressDialog {
public:
    ProgressDialog(const std::string& title, const std::string& heading,
                   const std::string& description);
    ProgressDialog(const ProgressDialog&) = delete;
    ProgressDialog& operator=(const ProgressDialog&) = delete;
    ~ProgressDialog();

    /// Shows what is being done and how much of it is, and lets the host handle its input.
    void show(const std::string& description, std::int64_t done, std::int64_t total) const;
    /// Whether the user has closed the dialog: the work shall end, undone.
    bool isCancelled() const;
};

} // namespace qmevents
