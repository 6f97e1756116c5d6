#pragma once

#include <optional>
#include <string>

#include "automation/error.h"
#include "automation/members.h"

namespace refhost::script {

/// What scripts call Err: the failure that On Error Resume Next stepped over.
class ErrObject : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Err";
    const qmevents::Members& members() const override;

    void set(const qmevents::Error& error);
    void Clear();
    /// Fails with `number`; a text not given is the number's standard one.
    void Raise(std::int32_t number, const std::optional<std::string>& source,
               const std::optional<std::string>& description);

    std::int32_t Number = 0;
    std::string Source;
    std::string Description;
};

} // namespace refhost::script
