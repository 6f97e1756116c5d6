#include "host/cli/answers.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

#include "automation/error.h"
#include "automation/text.h"

namespace refhost {
namespace {

constexpr std::array<std::pair<std::string_view, Button>, 4> buttonNames{
    {{"ok", Button::ok}, {"cancel", Button::cancel}, {"yes", Button::yes}, {"no", Button::no}}};

[[noreturn]] void refuse(const std::string& reason)
{
    throw qmevents::Error(static_cast<int>(qmevents::ErrorNumber::invalidCall), "quillmere",
                          reason);
}

Button buttonFrom(const Json& json)
{
    for (const auto& [name, button] : buttonNames) {
        if (json.is_string() && qmevents::text::sameName(json.get<std::string>(), name)) {
            return button;
        }
        if (json.is_number_integer() && json.get<std::int64_t>() == static_cast<int>(button)) {
            return button;
        }
    }
    refuse("a prompt is answered with 1 (ok), 2 (cancel), 6 (yes) or 7 (no), not " + json.dump());
}

std::string textFrom(const Json& entry, const char* key)
{
    if (!entry.contains(key)) return {};
    if (!entry[key].is_string()) refuse(std::string("\"") + key + "\" must be a text");
    return entry[key].get<std::string>();
}

void requireKnownKeys(const Json& entry, std::initializer_list<std::string_view> known)
{
    for (const auto& [key, value] : entry.items()) {
        if (std::find(known.begin(), known.end(), key) == known.end()) {
            refuse("\"" + key + "\" is no part of such an answer");
        }
    }
}

DialogAnswer dialogFrom(const Json& entry)
{
    requireKnownKeys(entry, {"dialog", "script", "set", "return", "url", "back"});
    DialogAnswer answer;
    answer.page = textFrom(entry, "dialog");
    answer.script = textFrom(entry, "script");
    answer.url = textFrom(entry, "url");
    if (entry.contains("set")) {
        answer.values = entry["set"];
        if (!answer.values.is_object()) refuse("\"set\" must be an object of values");
        for (const auto& [name, value] : answer.values.items()) fromJson(value);
    }
    if (entry.contains("return")) {
        if (!entry["return"].is_boolean()) refuse("\"return\" must be true or false");
        answer.returnValue = entry["return"].get<bool>();
    }
    if (entry.contains("back")) {
        const Json& back = entry["back"];
        if (!back.is_string() && back != Json(true)) refuse("\"back\" must be true or an address");
        answer.backTo = back.is_string() ? back.get<std::string>() : std::string();
    }
    return answer;
}

} // namespace

Answers Answers::parse(const std::string& text)
{
    Json json;
    try {
        json = Json::parse(text);
    } catch (const Json::parse_error& error) {
        refuse(error.what());
    }
    if (!json.is_array()) refuse("an answers file is a list of answers");
    Answers answers;
    int position = 0;
    for (const Json& entry : json) {
        ++position;
        try {
            if (entry.is_object() && entry.contains("prompt")) {
                requireKnownKeys(entry, {"prompt"});
                answers.answers_.push_back({position, buttonFrom(entry["prompt"]), {}});
            } else if (entry.is_object() && entry.contains("dialog")) {
                answers.answers_.push_back({position, {}, dialogFrom(entry)});
            } else {
                refuse("an answer has \"prompt\" or \"dialog\"");
            }
        } catch (const qmevents::Error& error) {
            refuse("answer " + std::to_string(position) + ": " + error.description());
        }
    }
    return answers;
}

std::optional<Answers::Answer> Answers::take()
{
    Answer answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
}

std::optional<Answers::Answer> Answers::takePrompt()
{
    return !answers_.empty() && answers_.front().button ? take() : std::nullopt;
}

std::optional<Answers::Answer> Answers::takeDialog()
{
    return nextDialog() ? take() : std::nullopt;
}

const DialogAnswer* Answers::nextDialog() const
{
    return !answers_.empty() && answers_.front().dialog ? &*answers_.front().dialog : nullptr;
}

} // namespace refhost
