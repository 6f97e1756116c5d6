#pragma once

#include <string>

#include "automation/collection.h"
#include "host/app/host_event.h"

namespace refhost {

/// What happened with a donor, for the donor's history.
class Note : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Note";
    const Members& members() const override;

    explicit Note(SharedContext context) : context_(std::move(context)) {}
    std::int32_t Id = 0; ///< 0 until it is saved.
    std::int32_t DonorId = 0;
    Value Created = qmevents::Null{}; ///< When it was saved, or Null.
    std::string Group;                ///< Which module it concerns, for example "Event".
    std::string Reference;            ///< The key of the record there.
    std::string Text;                 ///< Markup.
    /// Adds it to the history, once. Error 5 without a donor.
    void Save();

private:
    SharedContext context_;
};

/// Which assignments are wanted.
class ActionCriteria : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ActionCriteria";
    const Members& members() const override;

    std::string EntityType; ///< Empty for any.
    Value EntityId;         ///< Empty for any.
};

/// A piece of work about a record that somebody has been given.
class Assignment : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Assignment";
    const Members& members() const override;

    std::int32_t Id = 0;
    std::string EntityType;
    std::int32_t EntityId = 0;
    std::string Subject;
    std::int32_t AssignedToId = 0;
    Value DueDate; ///< A date, or Null.
    bool Completed = false;
};

/// What the signed-in user wants to be reminded of.
class Reminder : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "Reminder";
    const Members& members() const override;

    explicit Reminder(SharedContext context) : context_(std::move(context)) {}
    std::int32_t Id = 0; ///< 0 until it is saved.
    std::string EntityType;
    std::int32_t EntityId = 0;
    std::string Subject;
    qmevents::Date DueDate;
    void Save(); ///< Inserts a new one, updates another.

private:
    SharedContext context_;
};

/// `App.Modules.Actions`.
class ActionsModule : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "ActionsModule";
    const Members& members() const override;

    explicit ActionsModule(SharedContext context) : context_(std::move(context)) {}
    Ref<Note> NewNote() const;
    Ref<qmevents::Collection> GetNotes(std::int32_t donorId) const; ///< The newest first.
    /// What the modules offer to do with an entry of a donor's history.
    Ref<ContextMenu> GetNoteMenu(const Ref<Note>& note) const;
    /// Does what an entry of that menu stands for.
    void RunNoteCommand(const Ref<Note>& note, std::int32_t command) const;
    Ref<ActionCriteria> NewActionCriteria() const;
    Ref<qmevents::Collection> GetAssignments(const Ref<ActionCriteria>& criteria) const;
    void DeleteAssignment(std::int32_t id) const; ///< Error 5 when there is none with this id.
    Ref<Reminder> GetNewReminder() const;
    Ref<qmevents::Collection> Reminders() const; ///< The user's own, the earliest due first.

private:
    SharedContext context_;
};

} // namespace refhost
