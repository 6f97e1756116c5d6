#pragma once

#include <cstdint>
#include <string>

#include "core/host_part.h"

namespace qmevents {

/// `App.Shell.Dialog`: the host's dialog engine and the values that it exchanges with dialog pages.
class DialogEngine : public HostPart {
public:
    using HostPart::HostPart;

    void setHandler(const Ref<Object>& handler) const { put("Handler", handler); }
    Ref<Object> handler() const { return part("Handler"); }
    Value returnValue() const { return get("ReturnValue"); }
    void clearClipboard() const { call("ClearClipboard"); }
    void setRestorePoint(Value cookie) const { call("SetRestorePoint", std::move(cookie)); }
    void restore(Value cookie) const { call("Restore", std::move(cookie)); }
    /// Where the page stood that a restore point saved.
    std::string restoreTaskUrl(Value cookie) const
    {
        return toText(qmevents::get(toObject(call("GetRestoreTask", std::move(cookie))), "Url"));
    }
    /// Closes the open dialog; the main view then goes to `url`.
    void close(const std::string& url) const { call("Close", url); }
    void setNextPage(Value page) const { put("NextPage", std::move(page)); }
    void goNext() const { call("GoNext"); }
    void setWaitForClose(bool wait) const { put("WaitForClose", wait); }
    void setTitle(const std::string& title) const { put("Title", title); }
    void setHeading(const std::string& heading) const { put("Heading", heading); }
};

/// `App.Shell.Page`, the page that is shown.
class Page : public HostPart {
public:
    using HostPart::HostPart;
    void setModified() const { call("SetModified"); }
    Ref<Object> element(const std::string& id) const
    {
        return toObject(qmevents::call(part("Document"), "getElementById", id));
    }
};

/// `App.Shell`: messages, questions, navigation and dialogs.
class Shell : public HostPart {
public:
    using HostPart::HostPart;

    void msgBox(const std::string& text, const std::string& title) const
    {
        call("MsgBox", text, title);
    }
    /// Asks a Yes/No question; true on Yes.
    bool askYesNo(const std::string& text, const std::string& title) const
    {
        constexpr std::int32_t yesNoButtons = 4;
        constexpr std::int32_t yes = 6;
        return toInt32(call("MsgPrompt", text, yesNoButtons, title)) == yes;
    }
    /// Reports what the user cannot mend.
    void errorUnexpected(const std::string& text) const { call("ErrorUnexpected", text); }
    void errorUnexpected(const std::string& text, std::int32_t number) const
    {
        call("ErrorUnexpected", text, number);
    }
    /// Shows an error that the user can act on.
    void errorUser(const std::string& text) const { call("ErrorUser", text); }
    void errorUser(const std::string& text, std::int32_t code, bool flag) const
    {
        call("ErrorUser", text, code, flag);
    }
    void navigate(const std::string& url) const { call("Navigate", url); }
    void navigate(const std::string& url, bool second) const { call("Navigate", url, second); }

    DialogEngine dialog() const { return DialogEngine(part("Dialog")); }
    Value dialogValue(const std::string& name) const { return get("Dialog", name); }
    /// Stores a value for the dialog page; an object is stored by reference.
    void setDialogValue(const std::string& name, Value value) const
    {
        put("Dialog", name, std::move(value));
    }
    Page page() const { return Page(part("Page")); }
    Ref<Object> toolbarButtons() const { return getObject(part("Toolbar"), "Buttons"); }
};

} // namespace qmevents
