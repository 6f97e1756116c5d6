// Writes the interface definition of the component's type library from the member tables: a
// dispatch interface for every public class, a class for those and the enumerations.
#include <cstdint>
#include <fstream>
#include <iostream>

#include "automation/conversions.h"
#include "com/class_ids.h"
#include "core/root_objects.h"

namespace {

using qmevents::Member;
using qmevents::Members;
using qmevents::MemberType;
using qmevents::Parameter;
using qmevents::Value;
using Tag = MemberType::Tag;
namespace com = qmevents::com;

// FNV-1a over 64 bits.
std::uint64_t hashOf(std::string_view text, std::uint64_t seed)
{
    std::uint64_t hash = seed;
    for (const char c : text) { hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U; }
    return hash;
}

// An id that follows from the name alone, so that a class keeps its id for as long as its name and
// a new class needs no list to be entered in. Marked as version 8, "made by a rule of one's own".
std::string idOf(std::string_view kind, std::string_view name)
{
    const std::string text =
        std::string(com::typeLibraryId) + "/" + std::string(kind) + "/" + std::string(name);
    std::uint64_t parts[] = {hashOf(text, 0xcbf29ce484222325U), hashOf(text, 0x84222325cbf29ce4U)};
    parts[0] = (parts[0] & ~std::uint64_t{0xf000}) | 0x8000U;
    parts[1] = (parts[1] & ~(std::uint64_t{3} << 62)) | (std::uint64_t{2} << 62);
    std::string digits;
    for (const std::uint64_t part : parts) {
        for (int shift = 60; shift >= 0; shift -= 4) {
            digits += "0123456789ABCDEF"[(part >> shift) & 15];
        }
    }
    for (const std::size_t dash : {20U, 16U, 12U, 8U}) digits.insert(dash, "-");
    return digits;
}

std::string quoted(std::string_view text)
{
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result + "\"";
}

const com::CreatableClass* creatable(std::string_view className)
{
    for (const auto& entry : com::creatableClasses) {
        if (entry.className() == className) return &entry;
    }
    return nullptr;
}

bool isDescribed(std::string_view className)
{
    for (const Members* members : qmevents::publicClasses()) {
        if (members->className() == className) return true;
    }
    return false;
}

std::string interfaceOf(std::string_view className) { return "_" + std::string(className); }

std::string typeText(const MemberType& type)
{
    switch (type.tag) {
    case Tag::none:
        return "void";
    case Tag::variant:
        return "VARIANT";
    case Tag::boolean:
        return "VARIANT_BOOL";
    case Tag::int16:
        return "short";
    case Tag::int32:
        return "long";
    case Tag::real:
        return "double";
    case Tag::currency:
        return "CURRENCY";
    case Tag::date:
        return "DATE";
    case Tag::text:
        return "BSTR";
    case Tag::object:
        return isDescribed(type.name) ? interfaceOf(type.name) + "*" : "IDispatch*";
    case Tag::enumeration:
        return type.name;
    }
    return "VARIANT";
}

std::string defaultText(const Value& value)
{
    if (value.is(qmevents::ValueKind::boolean)) return value.as<bool>() ? "-1" : "0";
    return value.isText() ? quoted(value.text()) : qmevents::toText(value);
}

// A type library can say "may be left out" of a typed argument only with what it then counts as;
// without that, and for results by reference, the argument is a variant.
std::string parameterText(const Parameter& parameter)
{
    const bool hasDefault =
        !parameter.defaultValue.isMissing() && !parameter.defaultValue.isEmpty();
    std::string attributes = parameter.byReference ? "in, out" : "in";
    std::string type = typeText(parameter.type);
    if (parameter.optional) {
        attributes += ", optional";
        if (parameter.byReference || !hasDefault) {
            type = "VARIANT";
        } else {
            attributes += ", defaultvalue(" + defaultText(parameter.defaultValue) + ")";
        }
    }
    return "[" + attributes + "] " + type + (parameter.byReference ? "*" : "") + " " +
           parameter.name;
}

std::string parametersText(const Member& member)
{
    std::string text;
    for (const auto& parameter : member.parameters) {
        text += (text.empty() ? "" : ", ") + parameterText(parameter);
    }
    return text;
}

void writeMember(std::ostream& out, const Member& member)
{
    const auto line = [&](std::string_view access, const std::string& result,
                          const std::string& parameters) {
        out << "        [id(" << member.id << ")" << access
            << (member.hidden ? ", hidden, restricted" : "") << ", helpstring("
            << quoted(member.documentation) << ")]\n        " << result << " " << member.name << "("
            << parameters << ");\n";
    };
    const std::string parameters = parametersText(member);
    if (member.id == qmevents::enumeratorMember) {
        line(", propget", "IUnknown*", parameters);
        return;
    }
    line(member.isMethod ? "" : ", propget", typeText(member.type), parameters);
    if (member.isMethod || !member.put || member.storeOnly) return;
    const std::string separator = parameters.empty() ? "" : ", ";
    line(", propput", "void",
         parameters + separator + "[in] " + typeText(member.type) + " NewValue");
    if (member.type.tag == Tag::object || member.type.tag == Tag::variant) {
        line(", propputref", "void",
             parameters + separator + "[in] " + typeText(member.type) + " NewValue");
    }
}

void writeInterface(std::ostream& out, const Members& members)
{
    out << "    [uuid(" << idOf("interface", members.className()) << "), helpstring("
        << quoted(members.documentation()) << ")]\n    dispinterface "
        << interfaceOf(members.className()) << "\n    {\n    properties:\n    methods:\n";
    for (const auto& member : members.all()) writeMember(out, member);
    out << "    };\n\n";
}

void writeClass(std::ostream& out, const Members& members)
{
    const auto* made = creatable(members.className());
    out << "    [uuid(" << (made ? std::string(made->classId) : idOf("class", members.className()))
        << (made ? ")" : "), noncreatable") << ", helpstring(" << quoted(members.documentation())
        << ")]\n    coclass " << members.className() << "\n    {\n        [default] dispinterface "
        << interfaceOf(members.className()) << ";\n    };\n\n";
}

void writeEnumeration(std::ostream& out, const qmevents::Enumeration& enumeration)
{
    out << "    typedef [uuid(" << idOf("enumeration", enumeration.name) << ")]\n    enum "
        << enumeration.name << " {\n";
    for (const auto& [name, value] : enumeration.values) {
        out << "        " << name << " = " << value
            << (name == enumeration.values.back().first ? "\n" : ",\n");
    }
    out << "    } " << enumeration.name << ";\n\n";
}

// The names of the platform's own types, told to the compiler here rather than taken from the
// platform's files, which the tools of other systems do not bring along; in the type library they
// become references to the system's.
constexpr std::string_view platformTypes = R"(typedef wchar_t* BSTR;
typedef short VARIANT_BOOL;
typedef double DATE;
typedef struct tagCY { __int64 int64; } CURRENCY;
typedef struct tagVARIANT { short vt; } VARIANT;
[object, local, uuid(00000000-0000-0000-C000-000000000046)]
interface IUnknown { }
[object, local, uuid(00020400-0000-0000-C000-000000000046)]
interface IDispatch : IUnknown { }

)";

void writeLibrary(std::ostream& out)
{
    const auto classes = qmevents::publicClasses();
    out << platformTypes << "[uuid(" << com::typeLibraryId << "), version(" << com::typeLibraryMajor
        << "." << com::typeLibraryMinor << "), helpstring(\"Quillmere Events add-in\")]\nlibrary "
        << com::componentName << "\n{\n    importlib(\"stdole2.tlb\");\n\n";
    for (const Members* members : classes) {
        out << "    dispinterface " << interfaceOf(members->className()) << ";\n";
    }
    out << "\n";
    for (const auto& enumeration : qmevents::publicEnumerations()) {
        writeEnumeration(out, enumeration);
    }
    for (const Members* members : classes) writeInterface(out, *members);
    for (const Members* members : classes) writeClass(out, *members);
    out << "}\n";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: make_idl FILE\n";
        return 2;
    }
    std::ofstream file(argv[1]);
    writeLibrary(file);
    file.close();
    if (!file) {
        std::cerr << "make_idl: cannot write " << argv[1] << "\n";
        return 1;
    }
    return 0;
}
