#include "host/shell/shell.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "automation/conversions.h"
#include "automation/describe.h"
#include "automation/error.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;
using qmevents::Members;
using qmevents::optional;
using qmevents::Ref;
using qmevents::Value;

namespace {

std::optional<int> numberIn(const std::optional<Value>& value)
{
    if (!value || value->isEmpty() || value->isNull() || !qmevents::isNumeric(*value)) return {};
    return qmevents::toInt32(*value);
}

void requireAddress(std::string_view url)
{
    constexpr std::string_view scheme = "obsidian://";
    const std::string_view path = url.substr(std::min(scheme.size(), url.size()));
    const std::size_t slash = path.find('/');
    const bool named = slash != 0 && slash != std::string_view::npos && slash + 1 < path.size();
    const bool clean =
        std::ranges::none_of(url, [](char c) { return static_cast<unsigned char>(c) < ' '; });
    if (named && clean && qmevents::text::sameName(url.substr(0, scheme.size()), scheme)) return;
    throw Error::with(ErrorNumber::invalidCall,
                      '"' + std::string(url) +
                          R"(" is no address of a page; one looks like "obsidian://module/page")");
}

} // namespace

Ref<Shell> makeShell(FrontEnd& frontEnd) { return makeRef<Shell>(frontEnd); }

Shell::Shell(FrontEnd& frontEnd)
    : frontEnd_(frontEnd), dialog_(makeRef<DialogEngine>(frontEnd)), page_(makeRef<Page>(frontEnd)),
      toolbar_(makeRef<Toolbar>())
{
}

const Members& Shell::members() const
{
    static const Members table =
        describe<Shell>("The user interface: messages, questions, navigation and dialogs.")
            .method("MsgBox", &Shell::MsgBox, {arg("Text"), optional("Title", "")},
                    "Shows a message and waits until it is read.")
            .method(
                "MsgPrompt", &Shell::MsgPrompt,
                {arg("Text"), optional("Buttons", 4), optional("Title", "")},
                "Asks with buttons (0 OK; 1 OK, Cancel; 3 Yes, No, Cancel; 4 Yes, No) and gives "
                "the one pressed: 1 OK, 2 Cancel, 6 Yes, 7 No.")
            .method("ErrorUnexpected", &Shell::ErrorUnexpected, {arg("Text"), optional("Number")},
                    "Reports a failure that the user cannot mend.")
            .method("ErrorUser", &Shell::ErrorUser,
                    {arg("Text"), optional("Code"), optional("Flag")},
                    "Shows an error that the user can act on.")
            .method("Navigate", &Shell::Navigate, {arg("Url"), optional("Second")},
                    "Moves the main view to an address such as \"obsidian://events/events-view\".")
            .property("Dialog", &Shell::dialog, &Shell::setDialog, {optional("Name")},
                      "The dialog engine, or one of the values that it holds for a dialog page.")
            .readOnly("Page", &Shell::page, "The page that the main view shows.")
            .readOnly("Toolbar", &Shell::toolbar, "The toolbar of that page.");
    return table;
}

void Shell::MsgBox(const std::string& text, const std::string& title)
{
    frontEnd_.showMessage({Message::Kind::box, text, title, {}});
}

std::int32_t Shell::MsgPrompt(const std::string& text, std::int32_t buttons,
                              const std::string& title)
{
    constexpr std::array known{0, 1, 3, 4};
    if (std::ranges::find(known, buttons) == known.end()) {
        throw Error::with(ErrorNumber::invalidCall,
                          "Buttons of Shell.MsgPrompt must be 0, 1, 3 or 4, not " +
                              std::to_string(buttons));
    }
    return static_cast<std::int32_t>(frontEnd_.ask({text, buttons, title}));
}

void Shell::ErrorUnexpected(const std::string& text, const std::optional<Value>& number)
{
    ++failuresShown_;
    frontEnd_.showMessage({Message::Kind::unexpectedError, text, {}, numberIn(number)});
}

void Shell::ErrorUser(const std::string& text, const std::optional<Value>& code,
                      const std::optional<bool>&)
{
    ++failuresShown_;
    frontEnd_.showMessage({Message::Kind::userError, text, {}, numberIn(code)});
}

void Shell::Navigate(const std::string& url, const std::optional<bool>& second)
{
    requireAddress(url);
    page_->document()->clear();
    frontEnd_.navigate(url, second.value_or(false));
}

Value Shell::dialog(const std::optional<std::string>& name) const
{
    return name ? dialog_->value(*name) : Value(dialog_);
}

void Shell::setDialog(const std::optional<std::string>& name, const Value& value)
{
    if (!name) throw Error::with(ErrorNumber::readOnlyProperty, "Shell.Dialog");
    dialog_->setValue(*name, value);
}

} // namespace refhost
