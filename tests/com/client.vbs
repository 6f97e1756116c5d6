' A host written in VBScript: it offers App from script classes, initialises the add-in, and calls
' both ways.
Option Explicit

Dim failures, log
failures = 0
log = ""

Sub Expect(what, actual, wanted)
    If actual <> wanted Then
        failures = failures + 1
        WScript.Echo what & ": got " & actual & " instead of " & wanted
    End If
End Sub

Class Cell
    Public Value
End Class

Class RowFields
    Public row
    Public Function Item(name)
        Set Item = row.Item(LCase(name))
    End Function
End Class

' One row, or none.
Class RecordSet
    Public EOF
    Public Fields
    Private Sub Class_Initialize
        EOF = True
        Set Fields = New RowFields
        Set Fields.row = CreateObject("Scripting.Dictionary")
    End Sub
    Public Sub Column(name, value)
        Dim cell
        Set cell = New Cell
        cell.Value = value
        Fields.row.Add LCase(name), cell
        EOF = False
    End Sub
    Public Sub MoveNext
        EOF = True
    End Sub
    Public Sub Close
    End Sub
End Class

Class Document
    Public settings
    Public Function GetDataSet(sql)
        log = log & sql & vbLf
        Set GetDataSet = New RecordSet
        If InStr(sql, "WHERE Id = #2:12#") > 0 Then
            Dim name
            For Each name In Array("Description", "FKLocationId", "StartDateTime", "EndDateTime", _
                "RSVPDateTime", "MaxCapacity", "MinCapacity", "FKCategoryId", "FKStatusId", _
                "FKCoordinatorId", "RevenueGoal", "AttendanceGoal", "FKFundId", "FKCampaignId", _
                "FKAppealId", "Notes", "CreateUser", "CreateDate", "LastUpdateUser", _
                "LastUpdateDate")
                GetDataSet.Column name, Null
            Next
            GetDataSet.Column "Id", 12
            GetDataSet.Column "Name", "Spring Gala"
        End If
    End Function
    Public Sub Execute(sql)
        log = log & sql & vbLf
    End Sub
    Public Function GetLock(kind, id)
        log = log & "lock " & kind & " " & id & vbLf
        Set GetLock = New Cell
    End Function
    Public Sub ForceUpdate
    End Sub
End Class

Class Provider
    Public Function GetDocumentType
        GetDocumentType = 1
    End Function
    Public Function VToSQL(value, kind)
        VToSQL = "#" & kind & ":" & value & "#"
    End Function
End Class

Class User
    Public Id
End Class

Class SecurityZone
    Public CurrentUser
    Public Function IsAllowed(right)
        IsAllowed = True
    End Function
End Class

Class Shell
    Public Sub Navigate(url, options)
        log = log & "go " & url & vbLf
    End Sub
    Public Sub MsgBox(message, title)
        log = log & title & vbLf
    End Sub
    Public Sub ErrorUnexpected(message)
        log = log & "unexpected " & message & vbLf
    End Sub
    Public Sub ErrorUser(message)
        log = log & "user " & message & vbLf
    End Sub
End Class

Class EventsModule
    Public roots
    Public Function Objects(name)
        Set Objects = roots.Item(name)
    End Function
End Class

Class Modules
    Public Events
End Class

Class Application
    Public Document
    Public Provider
    Public Security
    Public Shell
    Public Modules
    Public Property Get Session(key)
        Session = ""
    End Property
    Public Property Let Session(key, value)
        log = log & key & " = " & value & vbLf
    End Property
End Class

Class HostEvent
    Public Key
    Public Data
End Class

Class Interaction
    Public Group
    Public Reference
End Class

Class Payload
    Public Interaction
    Public ContextMenu
End Class

Class ContextMenu
    Public Sub AppendItem(style, caption, command)
        log = log & style & " " & caption & " " & command & vbLf
    End Sub
End Class

Dim App, root, name, store
Set App = New Application
Set App.Document = New Document
Set App.Provider = New Provider
Set App.Security = New SecurityZone
Set App.Security.CurrentUser = New User
App.Security.CurrentUser.Id = 5
Set App.Shell = New Shell
Set App.Modules = New Modules
Set App.Modules.Events = New EventsModule
Set App.Modules.Events.roots = CreateObject("Scripting.Dictionary")
For Each name In Array("Events", "Workflow", "Handler", "Security")
    App.Modules.Events.roots.Add name, CreateObject("QMEvents." & name)
Next
For Each name In Array("Events", "Workflow", "Handler", "Security")
    Set root = App.Modules.Events.Objects(name)
    root.OnInitialize App
Next

' A command of the user walks through the script's document and shell.
App.Modules.Events.Objects("Workflow").Events.ViewEvent 12
Expect "ViewEvent", log, "SELECT * FROM events_event_info WHERE Id = #2:12#" & vbLf & _
    "eventdetailsparticipants-lastselectedrow-12 = " & vbLf & _
    "eventdetailsparticipants-lastselectedid-12 = " & vbLf & _
    "eventdetailsparticipants-lastliststate-12 = " & vbLf & _
    "go obsidian://events/event-details?id=12" & vbLf

' Results come back through variables.
Dim reason, record, valid
Set store = App.Modules.Events.Objects("Events").EventsManage
valid = store.IsValidEventAction(99, 3, reason)
Expect "valid", CStr(valid), "False"
Expect "reason", reason, _
    "The request to View the event is no longer valid.</br></br>The event no longer exists."
valid = store.IsValidEventAction(12, 3, reason, record)
Expect "valid", CStr(valid), "True"
Expect "name", record.Name, "Spring Gala"

' Properties, dates, amounts, collections.
Dim draft, link, links, walked
Set draft = store.GetNewEvent()
draft.StartDateTime = DateSerial(2026, 12, 1) + TimeSerial(18, 0, 0)
draft.RevenueGoal = CCur("12.3456")
Expect "hour", draft.StartHour & draft.StartAMPM, "06PM"
Expect "goal", VarType(draft.RevenueGoal) & " " & CStr(draft.RevenueGoal * 10000), "6 123456"
Expect "dirty", CStr(draft.IsDirty), "True"
Set links = App.Modules.Events.Objects("Events").Links()
For Each name In Array("a", "b", "c")
    Set link = App.Modules.Events.Objects("Events").GetNewLink()
    link.Title = name
    links.Add link, name
Next
For Each link In links
    walked = walked & link.Title
Next
Expect "walk", walked, "abc"
Expect "default", links("b").Title, "b"
Expect "identity", CStr(links(1) Is links("a")), "True"

' A host event with a payload of script objects.
Dim ev
log = ""
Set ev = New HostEvent
ev.Key = "interaction-menu"
Set ev.Data = New Payload
Set ev.Data.Interaction = New Interaction
ev.Data.Interaction.Group = "event"
Set ev.Data.ContextMenu = New ContextMenu
App.Modules.Events.Objects("Handler").EventHandler ev
Expect "menu", log, "8192 View Event 10001" & vbLf

' Failures have numbers and texts.
On Error Resume Next
draft.MaxCapacity = "ten"
Expect "mismatch", Err.Number & " " & Err.Source, "13 QMEvents"
Err.Clear
draft.Id = 7
Expect "store only", Err.Number, 70
Err.Clear
store.NoSuchMember
Expect "unknown", Err.Number, 438
On Error GoTo 0

If failures = 0 Then WScript.Echo "all is well"
