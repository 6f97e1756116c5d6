#include "core/host_event.h"

namespace qmevents {

std::optional<EventGroup> eventGroupOf(std::string_view key)
{
    struct Row {
        std::string_view key;
        EventGroup group;
    };
    static constexpr Row table[] = {
        {"donor-detailspage-summarysections", EventGroup::donor},
        {"donor-detailspage-detailsections", EventGroup::donor},
        {"donor-detailspage-relationshipsections", EventGroup::donor},
        {"donor-delete-validate-and-confirm", EventGroup::donor},
        {"donor-delete", EventGroup::donor},
        {"donor-delete-smartlist", EventGroup::donor},
        {"donor-delete-smartlist-confirm", EventGroup::donor},
        {"donor-detailspage-tabinit", EventGroup::donor},
        {"reports-categories", EventGroup::report},
        {"reports-categories-reports", EventGroup::report},
        {"reports-chooser-dialog", EventGroup::report},
        {"smartlist-schema", EventGroup::smartList},
        {"smartlist-columns", EventGroup::smartList},
        {"smartlist-loadtypes", EventGroup::smartList},
        {"smartlist-modifytypes", EventGroup::smartList},
        {"mailing-fields", EventGroup::mailing},
        {"mailing-data", EventGroup::mailing},
        {"settings-categories", EventGroup::setting},
        {"attribute-delete", EventGroup::setting},
        {"application-modules-initialized", EventGroup::general},
        {"homepage-content", EventGroup::general},
        {"interaction-menu", EventGroup::general},
        {"interaction-command", EventGroup::general},
        {"application-signin", EventGroup::general},
        {"application-signout", EventGroup::general},
        {"homepage-init", EventGroup::general},
        {"widgets-load", EventGroup::general},
        {"widgets-content", EventGroup::general},
        {"widgets-options", EventGroup::general},
        {"widgets-options-action", EventGroup::general},
        {"security-zones-load", EventGroup::security},
    };
    for (const auto& row : table) {
        if (row.key == key) return row.group;
    }
    return std::nullopt;
}

} // namespace qmevents
