#include "host/modules/actions_module.h"

#include "automation/clock.h"
#include "automation/describe.h"
#include "host/document/objects/sql_literal.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::Date;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

namespace {

std::string literal(const SharedContext& context, const Value& value, LiteralKind kind)
{
    return sqlLiteral(context->sql().dialect(), value, kind);
}

std::string text(const SharedContext& context, const std::string& value)
{
    return literal(context, Value(value), LiteralKind::text);
}

} // namespace

const Members& Note::members() const
{
    static const Members table =
        describe<Note>("What happened with a donor, for the donor's history.")
            .readOnly("Id", &Note::Id, "The key; 0 until it is saved.")
            .readOnly("Created", &Note::Created, "When it was saved, or Null.")
            .property("DonorId", &Note::DonorId, "The donor.")
            .property("Group", &Note::Group, "Which module it concerns, for example \"Event\".")
            .property("Reference", &Note::Reference, "The key of the record there.")
            .property("Text", &Note::Text, "What happened, as markup.")
            .method("Save", &Note::Save, "Adds it to the history.");
    return table;
}

void Note::Save()
{
    if (DonorId < 1) throw Error::with(ErrorNumber::invalidCall, "a note needs its donor");
    if (Id != 0) throw Error::with(ErrorNumber::invalidCall, "the note is saved already");
    Created = Value(qmevents::Clock::now());
    const std::string now = literal(context_, Created, LiteralKind::date);
    runStatement(context_,
                 "INSERT INTO actions_interactions (FKDonorId, grouping, reference, [note], "
                 "FKuserId, created) VALUES (" +
                     std::to_string(DonorId) + ", " + text(context_, Group) + ", " +
                     text(context_, Reference) + ", " + text(context_, Text) + ", " +
                     std::to_string(context_->user.id) + ", " + now + ")");
    Id = newKey(context_);
}

const Members& ActionCriteria::members() const
{
    static const Members table =
        describe<ActionCriteria>("Which assignments are wanted.")
            .property("EntityType", &ActionCriteria::EntityType, "Kind of record; empty for any.")
            .property("EntityId", &ActionCriteria::EntityId, "Key of the record; empty for any.");
    return table;
}

const Members& Assignment::members() const
{
    static const Members table =
        describe<Assignment>("A piece of work about a record.")
            .readOnly("Id", &Assignment::Id, "The key.")
            .readOnly("EntityType", &Assignment::EntityType, "Kind of record it is about.")
            .readOnly("EntityId", &Assignment::EntityId, "Key of that record.")
            .readOnly("Subject", &Assignment::Subject, "What is to be done.")
            .readOnly("AssignedToId", &Assignment::AssignedToId, "Who is to do it.")
            .readOnly("DueDate", &Assignment::DueDate, "Until when, or Null.")
            .readOnly("Completed", &Assignment::Completed, "Whether it is done.");
    return table;
}

const Members& Reminder::members() const
{
    static const Members table =
        describe<Reminder>("What the signed-in user wants to be reminded of.")
            .readOnly("Id", &Reminder::Id, "The key; 0 until it is saved.")
            .property("EntityType", &Reminder::EntityType, "Kind of record it is about.")
            .property("EntityId", &Reminder::EntityId, "Key of that record.")
            .property("Subject", &Reminder::Subject, "What to remember.")
            .property("DueDate", &Reminder::DueDate, "When to be reminded.")
            .method("Save", &Reminder::Save, "Stores it for the signed-in user.");
    return table;
}

void Reminder::Save()
{
    struct {
        const char* column;
        std::string value;
    } const columns[] = {
        {"entitytype", text(context_, EntityType)},
        {"entityid", std::to_string(EntityId)},
        {"subject", text(context_, Subject)},
        {"duedate", literal(context_, Value(DueDate), LiteralKind::date)},
        {"FKuserId", std::to_string(context_->user.id)},
    };
    std::string names, values, changes;
    for (const auto& [column, value] : columns) {
        const std::string separator = names.empty() ? "" : ", ";
        names += separator + column;
        values += separator + value;
        changes += separator + column + " = " + value;
    }
    if (Id != 0) {
        runStatement(context_, "UPDATE actions_reminders SET " + changes +
                                   " WHERE id = " + std::to_string(Id));
        return;
    }
    runStatement(context_, "INSERT INTO actions_reminders (" + names + ") VALUES (" + values + ")");
    Id = newKey(context_);
}

const Members& ActionsModule::members() const
{
    static const Members table =
        describe<ActionsModule>("Notes, assignments and reminders.")
            .method("NewNote", &ActionsModule::NewNote, "A new note for a donor's history.")
            .method("GetNotes", &ActionsModule::GetNotes, {arg("DonorId")},
                    "A donor's history, the newest note first.")
            .method("GetNoteMenu", &ActionsModule::GetNoteMenu, {arg("Note")},
                    "What the modules offer to do with a note.")
            .method("RunNoteCommand", &ActionsModule::RunNoteCommand, {arg("Note"), arg("Command")},
                    "Does what an entry of that menu stands for.")
            .method("NewActionCriteria", &ActionsModule::NewActionCriteria,
                    "New criteria that all assignments satisfy.")
            .method("GetAssignments", &ActionsModule::GetAssignments, {arg("Criteria")},
                    "The assignments that satisfy the criteria, the earliest due first.")
            .method("DeleteAssignment", &ActionsModule::DeleteAssignment, {arg("Id")},
                    "Removes an assignment.")
            .method("GetNewReminder", &ActionsModule::GetNewReminder, "A new reminder.")
            .readOnly("Reminders", &ActionsModule::Reminders,
                      "The signed-in user's reminders, the earliest due first.");
    return table;
}

Ref<Note> ActionsModule::NewNote() const { return makeRef<Note>(context_); }

Ref<Collection> ActionsModule::GetNotes(std::int32_t donorId) const
{
    const auto found = makeRef<Collection>();
    readRows(context_,
             "SELECT id, grouping, reference, [note], created FROM actions_interactions "
             "WHERE FKDonorId = " +
                 std::to_string(donorId) + " ORDER BY created DESC, id DESC",
             [&](const Cursor& row) {
                 const auto note = makeRef<Note>(context_);
                 note->Id = cellOr<std::int32_t>(row, "id", 0);
                 note->DonorId = donorId;
                 note->Group = cellOr<std::string>(row, "grouping", "");
                 note->Reference = cellOr<std::string>(row, "reference", "");
                 note->Text = cellOr<std::string>(row, "note", "");
                 note->Created = row.value(row.columnIndex("created").value());
                 found->append(Value(note));
             });
    return found;
}

Ref<ContextMenu> ActionsModule::GetNoteMenu(const Ref<Note>& note) const
{
    const auto payload = makeRef<InteractionPayload>(note);
    context_->raise("interaction-menu", Value(payload));
    return payload->contextMenu;
}

void ActionsModule::RunNoteCommand(const Ref<Note>& note, std::int32_t command) const
{
    context_->raise("interaction-command", Value(makeRef<InteractionPayload>(note, command)));
}

Ref<ActionCriteria> ActionsModule::NewActionCriteria() const { return makeRef<ActionCriteria>(); }

Ref<Collection> ActionsModule::GetAssignments(const Ref<ActionCriteria>& criteria) const
{
    if (!criteria) throw Error::with(ErrorNumber::objectNotSet, "action criteria");
    std::string query = "SELECT id, entitytype, entityid, subject, FKAssignedToId, duedate, "
                        "completed FROM actions_assignments WHERE id > 0";
    if (!criteria->EntityType.empty()) {
        query += " AND entitytype = " + text(context_, criteria->EntityType);
    }
    if (!criteria->EntityId.isEmpty()) {
        query += " AND entityid = " + literal(context_, criteria->EntityId, LiteralKind::number);
    }
    const auto found = makeRef<Collection>();
    readRows(context_, query + " ORDER BY duedate, id", [&](const Cursor& row) {
        const auto assignment = makeRef<Assignment>();
        assignment->Id = cellOr<std::int32_t>(row, "id", 0);
        assignment->EntityType = cellOr<std::string>(row, "entitytype", "");
        assignment->EntityId = cellOr<std::int32_t>(row, "entityid", 0);
        assignment->Subject = cellOr<std::string>(row, "subject", "");
        assignment->AssignedToId = cellOr<std::int32_t>(row, "FKAssignedToId", 0);
        assignment->DueDate = row.value(row.columnIndex("duedate").value());
        assignment->Completed = cellOr<bool>(row, "completed", false);
        found->append(Value(assignment));
    });
    return found;
}

void ActionsModule::DeleteAssignment(std::int32_t id) const
{
    if (runStatement(context_,
                     "DELETE FROM actions_assignments WHERE id = " + std::to_string(id)) == 0) {
        throw Error::with(ErrorNumber::invalidCall,
                          "there is no assignment with the id " + std::to_string(id));
    }
}

Ref<Reminder> ActionsModule::GetNewReminder() const { return makeRef<Reminder>(context_); }

Ref<Collection> ActionsModule::Reminders() const
{
    const auto found = makeRef<Collection>();
    readRows(context_,
             "SELECT id, entitytype, entityid, subject, duedate FROM actions_reminders "
             "WHERE FKuserId = " +
                 std::to_string(context_->user.id) + " ORDER BY duedate, id",
             [&](const Cursor& row) {
                 const auto reminder = makeRef<Reminder>(context_);
                 reminder->Id = cellOr<std::int32_t>(row, "id", 0);
                 reminder->EntityType = cellOr<std::string>(row, "entitytype", "");
                 reminder->EntityId = cellOr<std::int32_t>(row, "entityid", 0);
                 reminder->Subject = cellOr<std::string>(row, "subject", "");
                 reminder->DueDate = cellOr<Date>(row, "duedate", {});
                 found->append(Value(reminder));
             });
    return found;
}

} // namespace refhost
