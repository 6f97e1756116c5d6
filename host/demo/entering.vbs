' Enters what belongs to an event through the add-in's own objects, as a user's script would. The
' maker of the demonstration decides what there is and calls these procedures for it.
Option Explicit

Dim Store
Set Store = App.Modules.Events.Objects("Events").EventsManage

Sub Need(saved, what)
    If Not saved Then Err.Raise 5, "Demo", "the add-in did not save " & what
End Sub

Function NewActivity(eventId, title, description, price, cost, available, isSponsorship, onlyCounted)
    Dim activity
    Set activity = Store.GetNewEventActivity(eventId)
    activity.Name = title
    activity.Description = description
    activity.ListPrice = price
    activity.Cost = cost
    activity.QuantityAvailable = available
    activity.Sponsorship = isSponsorship
    If onlyCounted Then activity.QuantityType = 1
    Set NewActivity = activity
End Function

' "choices" has a "|" between the choices of a list.
Sub AskFor(activity, fieldType, title, description, defaultValue, choices)
    Dim field, choice
    Set field = Store.GetNewEventActivityReservationField()
    field.FieldType = fieldType
    field.Name = title
    field.Description = description
    field.DefaultValue = defaultValue
    If choices <> "" Then
        For Each choice In Split(choices, "|")
            field.AddListItem choice, True
        Next
    End If
    activity.ReservationFields.Add field
End Sub

Function SaveActivity(activity)
    Need Store.UpdateEventActivity(activity), "the activity " & activity.Name
    SaveActivity = activity.Id
End Function

Function NewParticipants()
    Set NewParticipants = Store.GetNewEventParticipants()
End Function

Function AddParticipant(participants, eventId, donorId, status, attended, notes)
    Dim participant
    Set participant = Store.GetNewEventParticipant(eventId, donorId)
    participant.Status = status
    participant.Attended = attended
    participant.Notes = notes
    participants.Add participant
    Set AddParticipant = participant
End Function

Sub JoinGroup(participant, groupId, title)
    participant.AddInvitationGroup groupId, title
End Sub

Sub SaveParticipants(eventId, participants)
    Need Store.AddEventParticipants(eventId, participants), "the participants of event " & eventId
End Sub

Function NewReservation(eventId, donorId, day, description, amountPaid)
    Dim reservation
    Set reservation = Store.GetNewEventReservation(eventId)
    reservation.FKdonorId = donorId
    reservation.ReservationDate = day
    reservation.Description = description
    reservation.AmountPaid = amountPaid
    Set NewReservation = reservation
End Function

Function AddLine(reservation, activityId, quantity, price, notes)
    Dim line
    Set line = Store.GetNewEventReservationActivity()
    line.FKActivityId = activityId
    line.Quantity = quantity
    line.Price = price
    line.Notes = notes
    reservation.Activities.Add line
    Set AddLine = line
End Function

Sub Answer(line, fieldType, title, value)
    Dim given
    Set given = Store.GetNewEventReservationActivityField()
    given.FieldType = fieldType
    given.Name = title
    given.Value = value
    line.ReservationFieldValues.Add given, title
End Sub

Function SaveReservation(reservation)
    Need Store.UpdateEventReservation(reservation), _
        "the reservation of donor " & reservation.FKdonorId
    SaveReservation = reservation.Id
End Function

Sub AddExpense(eventId, day, description, amount)
    Dim expense
    Set expense = Store.GetNewEventExpense(eventId)
    expense.ExpenseDate = day
    expense.Description = description
    expense.Amount = amount
    Need Store.UpdateEventExpense(expense), "the expense " & description
End Sub

Sub AddTask(eventId, title, notes, due, completed, assignedTo)
    Dim task
    Set task = Store.GetNewEventTask(eventId)
    task.Name = title
    task.Notes = notes
    task.DueDateTime = due
    task.Completed = completed
    task.FKAssignedToId = assignedTo
    Need Store.UpdateEventTask(task), "the task " & title
End Sub
