#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/members.h"

namespace refhost {

/// A property named by a path such as "Activities.Count", read from many objects. Member ids are
/// looked up once per class.
class Column {
public:
    /// BadRequest when `path` is no path.
    explicit Column(std::string_view path);

    const std::string& path() const { return path_; }
    /// The property of `object`; Nothing on the way makes it Null.
    qmevents::Value read(const qmevents::Ref<qmevents::Object>& object);
    /// Assigns the property, to an object by reference.
    void write(const qmevents::Ref<qmevents::Object>& object, qmevents::Value value);

private:
    struct Part {
        std::string name;
        const qmevents::Members* boundTo = nullptr;
        qmevents::MemberId id = qmevents::unknownMember;
    };
    static qmevents::Value readPart(Part& part, qmevents::Object& object);

    std::string path_;
    std::vector<Part> parts_;
};

/// The items of a collection or array, in order: those that it enumerates, or those of the array
/// that its member `member` gives. Error 451 when it has none.
std::vector<qmevents::Value> itemsOf(const qmevents::Value& list, const std::string& member);

} // namespace refhost
