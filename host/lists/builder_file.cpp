#include "host/lists/builder_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>

#include "automation/text.h"
#include "host/app/file_finder.h"
#include "host/xml/xml_parser.h"

namespace refhost {
namespace {

using qmevents::text::sameName;

class Reader {
public:
    Reader(std::string content, std::string shownAs)
        : content_(std::move(content)), shownAs_(std::move(shownAs))
    {
    }
    BuilderFile read(const std::string& type);

private:
    struct Unusable {
        std::string why;
    };
    /// What filters offer: the rows of a query, or pairs of a key and a name.
    struct Choices {
        std::string query;
        std::vector<std::pair<std::string, std::string>> fixed;
    };

    std::string place(pugi::xml_node node) const;
    static Choices choicesIn(pugi::xml_node node);
    Choices choicesOf(pugi::xml_node filter) const;
    void readSource(pugi::xml_node node);
    std::vector<ListSource> sourcesOf(const std::string& expressions) const;
    void readField(pugi::xml_node node);
    void readFilter(pugi::xml_node node, const ListField* owner);
    template <typename Read>
    void guarded(pugi::xml_node node, Read read);

    static std::string required(pugi::xml_node node, const char* attribute);
    static std::string childText(pugi::xml_node node, const char* child);
    static ListKind kindOf(pugi::xml_node node);

    std::string content_, shownAs_;
    std::map<std::string, Choices> namedChoices_;
    std::vector<ListSource> sources_;
    BuilderFile result_;
};

std::string Reader::place(pugi::xml_node node) const
{
    const auto offset = node.offset_debug();
    if (offset < 0 || static_cast<std::size_t>(offset) > content_.size()) return shownAs_;
    // A text begins with what parts it from the element before it.
    const auto begin = std::min(
        content_.find_first_not_of(" \t\r\n", static_cast<std::size_t>(offset)), content_.size());
    const auto lines = std::ranges::count(content_.substr(0, begin), '\n');
    return shownAs_ + ", line " + std::to_string(lines + 1);
}

std::string Reader::required(pugi::xml_node node, const char* attribute)
{
    const std::string value(qmevents::text::trim(node.attribute(attribute).value()));
    if (value.empty())
        throw Unusable{std::string("the attribute \"") + attribute + "\" is missing"};
    return value;
}

std::string Reader::childText(pugi::xml_node node, const char* child)
{
    return std::string(qmevents::text::trim(node.child(child).text().get()));
}

ListKind Reader::kindOf(pugi::xml_node node)
{
    const std::string name = required(node, "kind");
    const auto kind = listKind(name);
    if (!kind) throw Unusable{"there is no kind called \"" + name + "\""};
    return *kind;
}

// A part that cannot be used is named and left out; the rest of the file counts.
template <typename Read>
void Reader::guarded(pugi::xml_node node, Read read)
{
    try {
        read();
    } catch (const Unusable& fault) {
        result_.faults.push_back(place(node) + ": " + fault.why + ".");
    }
}

Reader::Choices Reader::choicesIn(pugi::xml_node node)
{
    Choices choices;
    for (const pugi::xml_node choice : node.children("choice")) {
        choices.fixed.emplace_back(required(choice, "id"), choice.text().get());
    }
    if (choices.fixed.empty()) choices.query = qmevents::text::trim(node.text().get());
    if (choices.fixed.empty() && choices.query.empty()) throw Unusable{"there are no choices"};
    return choices;
}

Reader::Choices Reader::choicesOf(pugi::xml_node filter) const
{
    const std::string key = filter.attribute("choices").value();
    if (key.empty()) return choicesIn(filter.child("choices"));
    const auto named = namedChoices_.find(key);
    if (named == namedChoices_.end()) throw Unusable{"there are no choices \"" + key + "\""};
    return named->second;
}

void Reader::readSource(pugi::xml_node node)
{
    ListSource source{.key = required(node, "key"),
                      .query = std::string(qmevents::text::trim(node.text().get()))};
    if (source.query.empty()) throw Unusable{"the source \"" + source.key + "\" has no query"};
    sources_.push_back(std::move(source));
}

std::vector<ListSource> Reader::sourcesOf(const std::string& expressions) const
{
    std::vector<ListSource> found;
    for (const ListSource& source : sources_) {
        if (expressions.find("{" + source.key + "}") != std::string::npos) found.push_back(source);
    }
    return found;
}

void Reader::readField(pugi::xml_node node)
{
    ListField field{.name = required(node, "name"),
                    .caption = required(node, "caption"),
                    .group = node.attribute("group").value(),
                    .kind = kindOf(node),
                    .value = childText(node, "value"),
                    .operation = node.attribute("operation").value(),
                    .origin = place(node),
                    .leadsToEvent = sameName(node.attribute("leadsto").value(), "event")};
    if (field.kind == ListKind::choice) throw Unusable{"a field cannot be a choice"};
    if (field.value.empty()) throw Unusable{"the field \"" + field.name + "\" has no value"};
    field.sources = sourcesOf(field.value);
    const auto known = std::ranges::any_of(result_.offer.fields, [&](const ListField& other) {
        return sameName(other.name, field.name);
    });
    if (known) throw Unusable{"the field \"" + field.name + "\" is defined twice"};
    result_.offer.fields.push_back(field);
    for (const pugi::xml_node filter : node.children("filter")) {
        guarded(filter, [&] { readFilter(filter, &field); });
    }
}

void Reader::readFilter(pugi::xml_node node, const ListField* owner)
{
    ListCriterion criterion{.key = node.attribute("key").value(),
                            .caption = required(node, "caption"),
                            .group = node.attribute("group").value(),
                            .kind = kindOf(node),
                            .value = childText(node, "value"),
                            .condition = childText(node, "condition"),
                            .hasTextKeys = sameName(node.attribute("keys").value(), "text"),
                            .operation = node.attribute("operation").value(),
                            .origin = place(node)};
    if (owner) {
        criterion.owner = owner->name;
        // A field's filters need no keys of their own: their captions tell them apart.
        if (criterion.key.empty()) criterion.key = owner->name + ":" + criterion.caption;
        if (criterion.group.empty()) criterion.group = owner->group;
        if (criterion.operation.empty()) criterion.operation = owner->operation;
        if (criterion.value.empty()) criterion.value = owner->value;
    }
    if (criterion.key.empty()) throw Unusable{"the attribute \"key\" is missing"};
    criterion.sources = sourcesOf(criterion.value + criterion.condition);
    const bool isChoice = criterion.kind == ListKind::choice;
    if (isChoice) {
        const Choices choices = choicesOf(node);
        criterion.choices = choices.query;
        criterion.fixedChoices = choices.fixed;
        if (criterion.condition.find("{values}") == std::string::npos) {
            throw Unusable{"the condition of the filter has no {values}"};
        }
    }
    if (!isChoice && criterion.value.empty()) throw Unusable{"the filter has no value"};
    const auto known = std::ranges::any_of(result_.offer.criteria, [&](const ListCriterion& other) {
        return sameName(other.key, criterion.key);
    });
    if (known) throw Unusable{"the filter \"" + criterion.key + "\" is defined twice"};
    result_.offer.criteria.push_back(std::move(criterion));
}

BuilderFile Reader::read(const std::string& type)
{
    pugi::xml_document document;
    const XmlFault fault = parseXml(content_, XmlSource::file, document);
    if (fault.code != 0) {
        const std::string line = fault.line > 0 ? ", line " + std::to_string(fault.line) : "";
        return {.offer = {}, .faults = {shownAs_ + line + ": " + fault.reason}};
    }
    const pugi::xml_node root = document.document_element();
    guarded(root, [&] {
        if (root.name() != std::string_view("listbuilder")) {
            throw Unusable{"the top level element must be <listbuilder>"};
        }
        if (required(root, "type") != type) {
            throw Unusable{"the fields are not for lists of " + type};
        }
        for (const pugi::xml_node node : root.children("choices")) {
            guarded(node, [&] { namedChoices_[required(node, "key")] = choicesIn(node); });
        }
        for (const pugi::xml_node node : root.children("source")) {
            guarded(node, [&] { readSource(node); });
        }
        for (const pugi::xml_node node : root.children()) {
            guarded(node, [&] {
                const std::string_view name = node.name();
                if (name == "field") return readField(node);
                if (name == "filter") return readFilter(node, nullptr);
                if (name == "choices" || name == "source") return;
                const std::string what = name.empty() ? "text" : "<" + std::string(name) + ">";
                throw Unusable{what + " is no part of a list-builder file"};
            });
        }
    });
    return std::move(result_);
}

} // namespace

BuilderFile readBuilderFile(const std::string& path, const std::string& shownAs,
                            const std::string& type)
{
    const auto failed = [&](const char* why) {
        return BuilderFile{.offer = {}, .faults = {shownAs + ": " + why}};
    };
    const auto file = findFile(path);
    if (!file) return failed("the file was not found.");
    std::ifstream in(*file, std::ios::binary);
    std::string content((std::istreambuf_iterator<char>(in)), {});
    if (!in) return failed("the file could not be read.");
    return Reader(std::move(content), shownAs).read(type);
}

} // namespace refhost
