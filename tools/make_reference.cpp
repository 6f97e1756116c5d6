// Writes the object reference, one page a class, from the member tables.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "automation/conversions.h"
#include "core/root_objects.h"

namespace {

using qmevents::Marking;
using qmevents::Member;
using qmevents::Members;
using qmevents::MemberType;
using qmevents::Parameter;

std::string typeText(const MemberType& type)
{
    switch (type.tag) {
    case MemberType::Tag::none:
        return "";
    case MemberType::Tag::variant:
        return "Variant";
    case MemberType::Tag::boolean:
        return "Boolean";
    case MemberType::Tag::int16:
        return "Integer";
    case MemberType::Tag::int32:
        return "Long";
    case MemberType::Tag::real:
        return "Double";
    case MemberType::Tag::currency:
        return "Currency";
    case MemberType::Tag::date:
        return "Date";
    case MemberType::Tag::text:
        return "String";
    case MemberType::Tag::object:
        return type.name.empty() ? "Object" : type.name;
    case MemberType::Tag::enumeration:
        return type.name;
    }
    return "";
}

std::string defaultText(const qmevents::Value& value)
{
    if (value.isMissing() || value.isEmpty()) return "";
    if (value.isText()) return " = \"" + value.text() + "\"";
    return " = " + qmevents::toText(value);
}

std::string parameterText(const Parameter& parameter)
{
    const std::string text = (parameter.byReference ? "ByRef " : "") + parameter.name + " As " +
                             typeText(parameter.type);
    return parameter.optional ? "[" + text + defaultText(parameter.defaultValue) + "]" : text;
}

std::string signatureOf(const Member& member)
{
    std::string text = member.name;
    if (member.isMethod || !member.parameters.empty()) {
        text += "(";
        for (std::size_t i = 0; i < member.parameters.size(); ++i) {
            text += (i == 0 ? "" : ", ") + parameterText(member.parameters[i]);
        }
        text += ")";
    }
    const std::string type = typeText(member.type);
    return type.empty() ? text : text + " As " + type;
}

std::string accessOf(const Member& member)
{
    if (member.isMethod) return "method";
    if (member.storeOnly) return "read; written by the store";
    if (!member.put) return "read";
    if (member.marking == Marking::marksDirty) return "read, write; marks dirty";
    return "read, write";
}

void writeClass(const Members& members, const std::filesystem::path& folder)
{
    std::ofstream page(folder / (members.className() + ".md"));
    page << "# " << members.className() << "\n\n" << members.documentation() << "\n\n";
    page << "| Member | Access | Meaning |\n|---|---|---|\n";
    for (const auto& member : members.all()) {
        if (member.hidden) continue;
        page << "| `" << signatureOf(member) << "` | " << accessOf(member) << " | "
             << member.documentation << " |\n";
    }
}

void writeIndex(const std::filesystem::path& folder)
{
    std::ofstream page(folder / "README.md");
    page << "# Object reference\n\nMade from the member tables by the build target `reference`; do "
            "not edit by hand.\n\n| Class | What it is |\n|---|---|\n";
    for (const auto* members : qmevents::publicClasses()) {
        page << "| [" << members->className() << "](" << members->className() << ".md) | "
             << members->documentation() << " |\n";
    }
    for (const auto& enumeration : qmevents::publicEnumerations()) {
        page << "\n## " << enumeration.name << "\n\n| Name | Value |\n|---|---|\n";
        for (const auto& [name, value] : enumeration.values) {
            page << "| " << name << " | " << value << " |\n";
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: make_reference FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::remove_all(folder); // pages of classes that are gone go too
    std::filesystem::create_directories(folder);
    for (const auto* members : qmevents::publicClasses()) writeClass(*members, folder);
    writeIndex(folder);
    return 0;
}
