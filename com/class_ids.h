#pragma once

#include <string_view>

// The component's identity. These ids are fixed for ever: hosts and registries know the component
// by them. Texts, so that the generator of the type library can read them on any platform.
namespace qmevents::com {

/// A class that a host creates by name.
struct CreatableClass {
    std::string_view progId; ///< Version-independent: "QMEvents.Workflow".
    std::string_view classId;
    std::string_view description;

    /// The name in the member tables and in the type library: "Workflow".
    constexpr std::string_view className() const { return progId.substr(progId.find('.') + 1); }
};

inline constexpr std::string_view componentName = "QMEvents";
inline constexpr std::string_view typeLibraryId = "96DAB580-9275-4E8D-AC31-9195B2D164D1";
inline constexpr int typeLibraryMajor = 1;
inline constexpr int typeLibraryMinor = 0;

inline constexpr CreatableClass creatableClasses[] = {
    {"QMEvents.Workflow", "88D769E4-F065-40F2-B031-0F9113FA1BA6",
     "Quillmere Events: entry object for the commands"},
    {"QMEvents.Events", "1ED44753-D1BA-4836-8688-D5F6C1D62FE9", "Quillmere Events: root object"},
    {"QMEvents.Handler", "D03F661B-F01B-4FC5-98C5-E3E72A9DA89D",
     "Quillmere Events: dispatcher of host events"},
    {"QMEvents.Security", "3E034CE1-D1B5-4B02-B4BD-9BFD6D5CD4AF",
     "Quillmere Events: item-level security"},
    {"QMEvents.Utils", "7015368D-0CBC-4470-83D2-DD0FD1B5E17A", "Quillmere Events: value helpers"},
    {"QMEvents.DateTimeUtil", "8F106787-4F1B-4CD0-A3C6-49490114FC81",
     "Quillmere Events: short texts for dates"},
    {"QMEvents.ApplicationLink", "2E21A379-60E8-4257-B1B3-47607B44DA79",
     "Quillmere Events: link that the host shows and runs"},
    {"QMEvents.EntityKeyLock", "A8381AAB-6AE3-4684-BD77-4B9FADA87EC0",
     "Quillmere Events: name of one record"},
};

} // namespace qmevents::com
