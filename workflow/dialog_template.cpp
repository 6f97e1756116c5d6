#include "workflow/dialog_template.h"

#include "automation/describe.h"
#include "automation/error.h"
#include "core/host.h"

namespace qmevents {
namespace {

constexpr std::int32_t missingInputNumber = 1717;

// A number is never empty, whatever its value.
bool isMissingInput(const Value& value)
{
    return value.isEmpty() || value.isNull() || value.isMissing() || value.isNothing() ||
           (value.isText() && value.text().empty());
}

void reportMissing(const std::string& name)
{
    host().shell().errorUnexpected("The " + name +
                                       " parameter must be specified before creating the dialog",
                                   missingInputNumber);
}

// A dialog that cannot be shown must leave no values behind. Why it cannot is what counts; that
// they cannot be dropped either is not worth telling.
void dropValuesQuietly(const DialogEngine& engine)
{
    try {
        engine.clearClipboard();
    } catch (const Error&) {
    }
}

std::string withForwardSlashes(const std::string& url) { return text::replaceAll(url, "\\", "/"); }

} // namespace

bool isConfirmed(const Value& returnValue)
{
    if (returnValue.isText()) return text::sameName(returnValue.text(), "true");
    return returnValue.isNumber() && toBool(returnValue);
}

const Members& DialogTemplate::members() const
{
    using C = DialogTemplate;
    static const Members table =
        describe<C>("The plumbing between a dialog and the host's dialog engine.")
            .property("ContentFile", &C::ContentFile, "Name of the content page.")
            .method("Invoke", &C::Invoke,
                    {arg("Parent"), arg("Recursive"), optional("Cookie"),
                     optional("Height", defaultHeight), optional("Width", defaultWidth)},
                    "Shows the dialog, or loads its page into the open window.")
            .method("SetInputValue", &C::SetInputValue,
                    {arg("Var"), arg("VarName"), arg("DlgVarName"), optional("Required", false)},
                    "Stores a value for the page.")
            .method("SetInputValueByRef", &C::SetInputValueByRef,
                    {arg("Var"), arg("VarName"), arg("DlgVarName"), optional("Required", false)},
                    "Stores an object that the page edits in place.")
            .method("GetOutputValue", &C::GetOutputValue,
                    {arg("DlgVarName"), optional("Default", Value())},
                    "What the page left under a name, or the default.")
            .method("OnDialogBack", &C::OnDialogBack, {arg("Url"), optional("Handled")},
                    "The user goes back inside the window.")
            .method("OnDialogClose", &C::OnDialogClose, {arg("Url"), optional("Handled")},
                    "The page closes.")
            .method("DialogChildComplete", &C::DialogChildComplete,
                    {arg("Child"), arg("Cookie"), optional("AllowClose")},
                    "A page opened inside this dialog is complete.");
    return table;
}

Value DialogTemplate::Invoke(const Ref<Object>& parent, bool recursive, const Value& cookie,
                             std::int32_t height, std::int32_t width)
{
    owner_ = refCast<DialogOwner>(parent);
    if (!owner_) throw Error::with(ErrorNumber::typeMismatch, "a dialog must own its template");
    try {
        if (!recursive) return showTopLevel(height, width);
        loadInside(cookie);
        return true;
    } catch (...) {
        owner_ = {}; // a dialog that could not be shown is closed
        throw;
    }
}

Value DialogTemplate::showTopLevel(std::int32_t height, std::int32_t width)
{
    const Host app = host();
    const DialogEngine engine = app.shell().dialog();
    restoreCookie_ = {};
    engine.setHandler(Ref<Object>(this));
    try {
        owner_->onHandleInputValues();
        app.modules().events().showDialog(ContentFile, height, width);
    } catch (...) {
        dropValuesQuietly(engine);
        throw;
    }
    Value result = engine.returnValue();
    engine.clearClipboard();
    // A window without a result is still open and tells of its close later. One with a result has
    // closed, be it without a word.
    if (!result.isEmpty()) owner_ = {};
    return result;
}

void DialogTemplate::loadInside(const Value& cookie)
{
    const Host app = host();
    const DialogEngine engine = app.shell().dialog();
    restoreCookie_ = cookie;
    engine.setRestorePoint(cookie);
    engine.setHandler(Ref<Object>(this));
    owner_->onHandleInputValues();
    app.modules().events().loadDialog(ContentFile);
}

void DialogTemplate::SetInputValue(const Value& var, const std::string& varName,
                                   const std::string& dlgVarName, bool required)
{
    if (required && isMissingInput(var)) reportMissing(varName);
    host().shell().setDialogValue(dlgVarName, var);
}

void DialogTemplate::SetInputValueByRef(const Ref<Object>& var, const std::string& varName,
                                        const std::string& dlgVarName, bool required)
{
    if (required && !var) reportMissing(varName);
    host().shell().setDialogValue(dlgVarName, var);
}

Value DialogTemplate::GetOutputValue(const std::string& dlgVarName, const Value& fallback)
{
    Value value = host().shell().dialogValue(dlgVarName);
    return value.isEmpty() ? fallback : value;
}

void DialogTemplate::OnDialogBack(const std::string& url, bool* handled)
{
    if (restoreCookie_.isEmpty()) return;
    const std::string outer = host().shell().dialog().restoreTaskUrl(restoreCookie_);
    if (withForwardSlashes(outer) == withForwardSlashes(url)) OnDialogClose(url, handled);
}

void DialogTemplate::OnDialogClose(const std::string&, bool* handled)
{
    if (!owner_) throw Error(51, "Dialog Template", "Dialog has already been closed");
    const DialogEngine engine = host().shell().dialog();
    const Ref<DialogOwner> owner = owner_; // the dialog may be dropped while it handles this
    owner->onHandleReturnValue(engine.returnValue());
    bool allowClose = true;
    if (!restoreCookie_.isEmpty()) {
        // The engine puts the outer dialog's page, values and handler back.
        engine.restore(restoreCookie_);
        Value arguments[] = {owner, restoreCookie_, allowClose};
        invokeNamed(engine.handler(), "DialogChildComplete", CallKind::method, arguments);
        allowClose = toBool(arguments[2]);
    }
    owner_ = {};
    if (handled) *handled = !allowClose;
}

void DialogTemplate::DialogChildComplete(const Ref<Object>& child, const Value& cookie,
                                         bool* allowClose)
{
    bool allow = !allowClose || *allowClose;
    if (owner_) owner_->onDialogChildComplete(child, cookie, allow);
    if (allowClose) *allowClose = allow;
}

} // namespace qmevents
