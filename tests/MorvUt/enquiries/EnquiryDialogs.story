# The list of enquiries and the dialog for one. "Listed" is the number of the status and the description.

== Check a new enquiry in order and save it
The list
    Next
        Text Date: 01/03/2024
        Type Due: 1/3/2024
        Click OK
        Message Please enter a description
        Focus Description
        Write O'Brien's P11D
        Click OK
        Message The due date should be after the start date
        Focus Due
        All selected
        Write 2/3/2024
        Click Reminder
        Click OK
        Message Please specify a reminder date
        Write 1/3/2024
        Click OK
        Message The reminder date should be after the start date
        Type Date: 1/1/2024
        Type Reminder (2): 2/1/2024
        Answer Yes
        Click OK
        Message The reminder date has already passed and so no reminder will be set. Do you want to change the reminder date?
        Focus Reminder (2)
        Disabled Source
        Click Link to tracker
        Click OK
        Message Please select the tracker source this enquiry should be linked to
        Warned
        Choose Source: Return (2024)
        Click OK
        Message Please select the tracker task this enquiry should be linked to
        Choose Task: Send
        Answer No
        Click OK
        Message The reminder date has already passed and so no reminder will be set. Do you want to change the reminder date?
    Click New...
    # by status, then as they were made
    Listed
        0 P60
        1 Answered
        2 Books
        2 O'Brien's P11D
    Tip of row 3
        Linked to Return, Send which is outstanding
    Rows Enquiries
        ...O'Brien's P11D | 02/03/2024 | 02/01/2024 | Task incomplete | 2023/24
    Click Close
Stored ClientEnquiry: lID, lClientID, nYear, SourceID, TypeID, dtReminder
    ...
    5|1|2024|10|7|2024-01-02

== Link a new enquiry to the task that the list is of
The list of a task
    Next
        Type Description: Signature
        Click Cancel
    Click New...
    Next
        Type Description: Signature
        Click OK
    Click New...
    Click Close
Stored ClientEnquiry: lID, SourceID, TypeID, strDescription
    ...
    4|-|-|Old
    5|10|7|Signature

== Edit by double click and empty what no box asks for
The list
    Next
        Text Received (2): 01/02/2024
        Click Received
        Text Received (2):
        Disabled Received (2)
        Type Date: 31/4/2024
        Click OK
        Message Please enter a valid date
        Focus Date
        Write 1/1/2024
        Click OK
    Double click row 1
    Listed
        0 P60
        2 Books
        2 Answered
    Click Show all years
    Listed
        0 P60
        2 Books
        2 Answered
        2 Old
    # although it cannot be kept
    Settings cannot be written
    Click Show all years
    Listed
        0 P60
        2 Books
        2 Answered
    Settings can be written
    Click Show all years
    Click Close
# as it was left
The list
    Listed
        0 P60
        2 Books
        2 Answered
        2 Old
    Click Close

== Delete many after asking and refuse without the right
The list
    Disabled Delete
    # from the row with the focus, which need not be a selected one
    Choose Enquiries: ...Answered
    Press Ctrl+Home Shift+Down
    Disabled Edit...
    The client is read-only
    Press Delete
    Message Operation cannot be performed. Client is read only.
    The client can be written
    Answer No
    Press Delete
    Message Are you sure you want to delete the selected item(s)?
    Answer Yes
    Click Delete
    Message Are you sure you want to delete the selected item(s)?
    Listed
        2 Books
    Click Close
The list, read-only
    Double click row 0
    Disabled New...
    Click Close
