#pragma once

#include <vector>

#include "workflow/dialog_catalog.h"
#include "workflow/dialog_template.h"

namespace qmevents {

/// One showing of a dialog: made by key, given its inputs, shown by `Create` (or `Load`, inside an
/// open window), read, dropped. What tells one dialog class from another is its description.
class Dialog : public DialogOwner {
public:
    explicit Dialog(const DialogDescription& description);
    const Members& members() const override;

    /// Shows the dialog; the engine's return value, True when the user confirmed.
    Value Create();
    /// Opens the dialog as a further page of the open window.
    bool Load(const Value& cookie);

    // Properties by name, for the add-in's own callers; a misspelt one is error 438.
    Value get(std::string_view property) const;
    void set(std::string_view property, Value value);

    void onHandleReturnValue(const Value& returnValue) override;
    void onHandleInputValues() override;
    void onDialogChildComplete(const Ref<Object>& child, const Value& cookie,
                               bool& allowClose) override;

    const DialogDescription& description() const { return description_; }

protected:
    Value& slot(std::string_view property);
    DialogTemplate& plumbing() { return *template_; }

private:
    const DialogDescription& description_;
    std::vector<Value> values_; // the headings, then the dialog's own
    Ref<DialogTemplate> template_ = makeRef<DialogTemplate>();
};

/// Finds an event. A search page that it opened inside itself gives the event's id; with a next
/// page set, the window then moves on to that instead of closing.
class FindEventDialog : public Dialog {
public:
    FindEventDialog();
    void onDialogChildComplete(const Ref<Object>& child, const Value& cookie,
                               bool& allowClose) override;
};

/// The factory of dialogs.
class Dialogs : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "Dialogs";
    const Members& members() const override;

    /// A new dialog by its key, matched without regard to case and blanks around. An unknown key
    /// is reported and gives nothing.
    Value NewDialog(const std::string& DialogClass);
};

/// A new dialog of the add-in's own, by key.
Ref<Dialog> newDialog(std::string_view key);

/// The member tables of all dialog classes, for the reference.
std::vector<const Members*> dialogMembers();

} // namespace qmevents
