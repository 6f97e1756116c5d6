// What commands and pages reach of the dialog engine.

#include <utility>

#include "automation/describe.h"
#include "host/shell/dialog_engine.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::Members;
using qmevents::Object;
using qmevents::optional;
using qmevents::Ref;
using qmevents::Value;

namespace {

/// What a restore point tells about the page it saved.
class RestoreTask : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "RestoreTask";
    const Members& members() const override
    {
        static const Members table =
            describe<RestoreTask>("A page to which a dialog can go back.")
                .readOnly("Url", &RestoreTask::url, "The address of the page.");
        return table;
    }

    explicit RestoreTask(std::string address) : url(std::move(address)) {}

    std::string url;
};

} // namespace

const Members& DialogEngine::members() const
{
    using Self = DialogEngine;
    static const Members table =
        describe<Self>("Shows dialog pages in modal windows and exchanges values with them.")
            .property("Value", &Self::value, &Self::setValue, {arg("Name")},
                      "A value exchanged with the page; Empty when it was never set.")
            .asDefault()
            .property("Handler", &Self::handler, &Self::setHandler,
                      "The object that is told when a page closes or goes back: OnDialogClose(Url, "
                      "Handled), OnDialogBack(Url, Handled), DialogChildComplete(Child, Cookie, "
                      "AllowClose).")
            .readOnly("ReturnValue", &Self::ReturnValue,
                      "The result with which the page closed; Empty before.")
            .method("ClearClipboard", &Self::ClearClipboard, "Empties the values.")
            .method("SetRestorePoint", &Self::SetRestorePoint, {arg("Cookie")},
                    "Saves page, values and handler before another page is loaded.")
            .method("Restore", &Self::Restore, {arg("Cookie")},
                    "Goes back to the latest restore point of that name.")
            .method("GetRestoreTask", &Self::GetRestoreTask, {arg("Cookie")},
                    "What a restore point saved: an object with Url.")
            .method("Close", &Self::Close, {optional("Url")},
                    "Closes the window once the command that runs for its page has ended; the main "
                    "view then goes to the address, if one is given.")
            .property("NextPage", &Self::nextPage, &Self::setNextPage,
                      "The page that GoNext turns to.")
            .method("GoNext", &Self::GoNext, "Turns to the next page in the same window.")
            .property("WaitForClose", &Self::waitForClose, &Self::setWaitForClose,
                      "Whether showing a dialog returns only once it has closed.")
            .property("Title", &Self::title, &Self::setTitle, "The title of the window.")
            .property("Heading", &Self::heading, &Self::setHeading, "The heading of the page.");
    return table;
}

Value DialogEngine::value(const std::string& name) const
{
    const auto& values = current().values;
    const auto found = values.find(name);
    return found == values.end() ? Value() : found->second;
}

void DialogEngine::setValue(const std::string& name, const Value& value)
{
    // An object may be let go here whose end reads the values, so it goes last.
    const Value former = std::exchange(current().values[name], value);
}

Ref<Object> DialogEngine::handler() const { return current().handler; }

void DialogEngine::setHandler(const Ref<Object>& handler)
{
    DialogLevel* level = &current();
    if (level->isOpen && !level->awaitsInnerHandler && handler) {
        level = &beginLevel();
        contexts_.back().begun.push_back(level);
    }
    level->awaitsInnerHandler = false;
    const Ref<Object> former = std::exchange(level->handler, handler);
}

Value DialogEngine::ReturnValue() const { return current().returnValue; }

void DialogEngine::ClearClipboard()
{
    DialogLevel& level = current();
    const auto formerValues = std::exchange(level.values, {});
    if (level.isOpen) return;
    const Ref<Object> formerHandler = std::exchange(level.handler, nullptr);
    level.title.clear();
    level.heading.clear();
    level.nextPage.clear();
    level.waitsNextTime = true;
    auto& begun = contexts_.back().begun;
    if (begun.empty()) return;
    begun.pop_back();
    dropLevel(&level);
}

void DialogEngine::SetRestorePoint(const std::string& cookie)
{
    DialogLevel& level = current();
    if (!level.isOpen) {
        throw Error::with(ErrorNumber::invalidCall,
                          "no dialog is open that could be restored to \"" + cookie + "\"");
    }
    level.restorePoints.push_back(
        {cookie, level.page, level.values, level.handler, level.history.size()});
    level.isPreparingInnerPage = true;
    level.awaitsInnerHandler = true;
}

void DialogEngine::Restore(const std::string& cookie)
{
    DialogLevel& level = current();
    level.restore(cookie);
    if (!level.isClosing) showChangedPage(level);
}

Ref<Object> DialogEngine::GetRestoreTask(const std::string& cookie)
{
    return qmevents::makeRef<RestoreTask>(current().restorePoint(cookie).page.address());
}

void DialogEngine::Close(const std::optional<std::string>& url)
{
    DialogLevel& level = current();
    if (!level.isOpen) throw Error::with(ErrorNumber::invalidCall, "no dialog is open to close");
    requireClosable(level);
    if (runsCallOf(level))
        level.closeTo = url.value_or("");
    else
        closePage(level.window.id, false, url.value_or(""));
}

void DialogEngine::GoNext()
{
    DialogLevel& level = current();
    if (!level.isOpen) {
        throw Error::with(ErrorNumber::invalidCall, "no dialog is open to turn to its next page");
    }
    level.turnTo(DialogPage::parse(level.nextPage, level.page.module));
    level.nextPage.clear();
    if (!level.isClosing) showChangedPage(level);
}

std::string DialogEngine::nextPage() const { return current().nextPage; }
void DialogEngine::setNextPage(const std::string& page) { current().nextPage = page; }
bool DialogEngine::waitForClose() const { return current().waitsNextTime; }
void DialogEngine::setWaitForClose(bool waits) { current().waitsNextTime = waits; }
std::string DialogEngine::title() const { return current().title; }
void DialogEngine::setTitle(const std::string& title) { current().title = title; }
std::string DialogEngine::heading() const { return current().heading; }
void DialogEngine::setHeading(const std::string& heading) { current().heading = heading; }

} // namespace refhost
