#pragma once

#include <string>

#include "automation/members.h"

namespace qmevents {

/// What a dialog does when its template tells it that the page is about to be shown, has closed, or
/// had an inner page complete.
class DialogOwner : public DescribedObject {
public:
    virtual void onHandleReturnValue(const Value& returnValue) = 0;
    virtual void onHandleInputValues() = 0;
    /// Setting `allowClose` to false keeps the window open.
    virtual void onDialogChildComplete(const Ref<Object>& child, const Value& cookie,
                                       bool& allowClose) = 0;
};

/// Whether an engine's return value means that the user confirmed.
bool isConfirmed(const Value& returnValue);

/// The plumbing between a dialog and the host's dialog engine. The engine calls it back as its
/// handler while the page is shown.
class DialogTemplate : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "DialogTemplate";
    static constexpr std::int32_t defaultHeight = 468;
    static constexpr std::int32_t defaultWidth = 550;
    const Members& members() const override;

    std::string ContentFile; ///< The content page; the owner sets it when it pushes its inputs.

    /// Shows the dialog and returns the engine's return value once it has closed; or, when
    /// `recursive`, loads the page into the open window under `cookie` and returns true at once.
    Value Invoke(const Ref<Object>& parent, bool recursive, const Value& cookie,
                 std::int32_t height = defaultHeight, std::int32_t width = defaultWidth);
    /// Stores a value for the page. A required one that is empty is reported, and stored anyway.
    void SetInputValue(const Value& var, const std::string& varName, const std::string& dlgVarName,
                       bool required = false);
    /// The same for an object that the page edits in place.
    void SetInputValueByRef(const Ref<Object>& var, const std::string& varName,
                            const std::string& dlgVarName, bool required = false);
    /// What the page left under a name; `fallback` when that is empty.
    Value GetOutputValue(const std::string& dlgVarName, const Value& fallback = {});

    // Called by the engine.
    /// A step back from an inner page to the page it was loaded from closes the inner dialog.
    void OnDialogBack(const std::string& url, bool* handled);
    /// The page closes. `handled` tells the engine to keep the window open.
    void OnDialogClose(const std::string& url, bool* handled);
    void DialogChildComplete(const Ref<Object>& child, const Value& cookie, bool* allowClose);

private:
    Value showTopLevel(std::int32_t height, std::int32_t width);
    void loadInside(const Value& cookie);

    Ref<DialogOwner> owner_; // set while the dialog is shown
    Value restoreCookie_;    // Empty for a top-level dialog
};

} // namespace qmevents
