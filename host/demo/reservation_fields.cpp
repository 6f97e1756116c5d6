#include "host/demo/reservation_fields.h"

namespace refhost::demo {
namespace {

// No text of the plans holds the end of a CDATA section.
std::string element(const std::string& name, std::string_view content)
{
    return "<" + name + "><![CDATA[" + std::string(content) + "]]></" + name + ">";
}

std::string fieldStart(const QuestionPlan& question)
{
    return "<fields><field name=\"" + std::string(question.name) + "\" type=\"" +
           std::to_string(question.fieldType) + "\"";
}

} // namespace

std::vector<std::string> choicesOf(const QuestionPlan& question)
{
    std::vector<std::string> choices;
    std::string_view rest = question.choices;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('|'), rest.size());
        choices.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return choices;
}

std::string fieldDefinitions(const QuestionPlan& question)
{
    if (question.fieldType == 0) return "";
    std::string document = fieldStart(question) + " visible=\"1\">" +
                           element("description", question.description) +
                           element("defaultvalue", question.defaultValue) + "<list>";
    for (const std::string& choice : choicesOf(question)) {
        document += "<listitem visible=\"1\">" + element("value", choice) + "</listitem>";
    }
    return document + "</list></field></fields>";
}

std::string fieldValues(const QuestionPlan& question, const std::string& answer)
{
    if (question.fieldType == 0) return "";
    return fieldStart(question) + ">" + element("value", answer) + "</field></fields>";
}

} // namespace refhost::demo
