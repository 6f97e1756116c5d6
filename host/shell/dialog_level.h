#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "automation/text.h"
#include "automation/value.h"
#include "host/shell/front_end.h"

namespace refhost {

/// A page of a dialog: the module whose page it is and its name.
struct DialogPage {
    std::string module;
    std::string name;

    /// "obsidian://events/dialogs/findevent".
    std::string address() const;
    /// The page that `text` names: a bare name, which is a page of `module`, or an address. Error 5
    /// when it can be neither.
    static DialogPage parse(const std::string& text, const std::string& module);
};

using DialogValues = std::unordered_map<std::string, qmevents::Value, qmevents::text::NameHash,
                                        qmevents::text::NameEqual>;

/// The state of a dialog before a further page was loaded into its window.
struct RestorePoint {
    std::string cookie;
    DialogPage page;
    DialogValues values;
    qmevents::Ref<qmevents::Object> handler;
    std::size_t pagesBefore = 0; ///< Length of the window's page history at that time.
};

/// One dialog from the assignment of its handler to the emptying of its values: what
/// `App.Shell.Dialog` means while it is the innermost one.
struct DialogLevel {
    DialogWindow window; ///< Its size, title and id; the page is the one shown last.
    bool isOpen = false;
    bool isClosing = false;    ///< Its handler is being asked whether it may close.
    bool waits = true;         ///< The call that shows it returns only when it has closed.
    bool waitsNextTime = true; ///< What WaitForClose asks of the next window.
    int opener = 0;            ///< The window whose page opened this one; 0 for the main view.

    DialogValues values;
    qmevents::Ref<qmevents::Object> handler;
    qmevents::Value returnValue;
    std::string nextPage;
    std::string title;
    std::string heading;

    DialogPage page;                 ///< The page that the window shows, or is about to show.
    bool pageChanged = false;        ///< The window still shows another page than `page`.
    std::vector<DialogPage> history; ///< The pages before it, the first one first.
    std::vector<RestorePoint> restorePoints;
    bool isPreparingInnerPage = false;  ///< A restore point is set, its page not yet loaded.
    bool awaitsInnerHandler = false;    ///< A restore point is set, its handler not yet assigned.
    std::optional<std::string> closeTo; ///< Close was called; the address to go to afterwards.

    /// Moves on to `next`, remembering where it came from.
    void turnTo(DialogPage next);
    /// Goes back to the latest restore point called `cookie`, dropping it and those set after it.
    /// Values first named since then stay: they are what the inner page found out. Error 5 when
    /// there is no such point.
    void restore(const std::string& cookie);
    const RestorePoint& restorePoint(const std::string& cookie) const;
};

} // namespace refhost
