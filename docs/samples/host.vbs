' A host in one page: makes the add-in's objects, hands them its App object, and raises a host
' event, as a host does when the user opens the menu of an entry in a donor's history.
'
'   regsvr32 QMEvents.dll          (once)
'   cscript //nologo host.vbs
Option Explicit

' --- What the host shows the add-in. A real host offers more; what is missing fails where it is
' asked for, with the name of the object and the member.

' App. The add-in keeps the first one it is given.
Class Application
    Public Modules
End Class

' App.Modules: the other modules by name.
Class ModuleList
    Public Events
End Class

' App.Modules.Events: the add-in's objects as this host made and registered them.
Class EventsModule
    Public Made

    Public Property Get Objects(name)
        Set Objects = Made(name)
    End Property
End Class

' A host event: its name, and what it is about.
Class HostEvent
    Public Key
    Public Data
End Class

' What "interaction-menu" is about: an entry of a donor's history and its menu.
Class MenuRequest
    Public Interaction
    Public ContextMenu
End Class

Class HistoryEntry
    Public Group
    Public Reference
End Class

Class Menu
    Public Sub AppendItem(flags, text, command)
        WScript.Echo "Menu entry: " & text & " (command " & command & ")"
    End Sub
End Class

' --- Creating the add-in.

Dim App, made, name
Set made = CreateObject("Scripting.Dictionary")
For Each name In Array("Events", "Workflow", "Handler", "Security")
    made.Add name, CreateObject("QMEvents." & name)
Next

Set App = New Application
Set App.Modules = New ModuleList
Set App.Modules.Events = New EventsModule
Set App.Modules.Events.Made = made

' "Events" first: the others look it up through App.
For Each name In made.Keys
    made(name).OnInitialize App
Next

' --- Raising an event.

Dim ev
Set ev = New HostEvent
ev.Key = "interaction-menu"
Set ev.Data = New MenuRequest
Set ev.Data.Interaction = New HistoryEntry
ev.Data.Interaction.Group = "Event"
ev.Data.Interaction.Reference = 12
Set ev.Data.ContextMenu = New Menu
made("Handler").EventHandler ev

' A key that the add-in does not know is ignored.
ev.Key = "no-such-event"
made("Handler").EventHandler ev

' --- A failure arrives as an error with number, source and description: this App has no Document,
' which a command asks for first.

On Error Resume Next
made("Workflow").Events.EditEvent 12
If Err.Number = 0 Then
    WScript.Echo "Nothing failed."
Else
    WScript.Echo "Error " & (Err.Number And 65535) & " from " & Err.Source & ": " & Err.Description
End If
