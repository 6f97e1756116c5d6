#pragma once

#include <string>

#include "host/app/session_context.h"

namespace refhost {

/// The donor chooser: finds a donor, or takes down a new one.
class GetDonorDialog : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "GetDonorDialog";
    const Members& members() const override;

    explicit GetDonorDialog(SharedContext context) : context_(std::move(context)) {}
    std::string Title, Heading, Description;
    bool AllowNew = false;      ///< The user may take down a new donor.
    bool ShowAll = false;       ///< Donors are listed before anything was typed.
    bool AllowAdvanced = false; ///< The user may search by other things than the name.
    std::int32_t DonorId = 0;   ///< Who was chosen.

    bool Create(); ///< Shows the dialog; True when a donor was chosen.

private:
    SharedContext context_;
};

/// `App.Modules.donor.Dialogs`.
class DonorDialogs : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "DonorDialogs";
    const Members& members() const override;

    explicit DonorDialogs(SharedContext context) : context_(std::move(context)) {}
    /// A new dialog by its key, of which there is "getdonor"; error 5 for another.
    Ref<Object> NewDialog(const std::string& key) const;

private:
    SharedContext context_;
};

} // namespace refhost
