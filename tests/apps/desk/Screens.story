# Signing in, the list of clients, the roll-forward, what is remembered.

== First sign in sets the password and later ones are checked against it
Next
    Choose User: ben
    Type Password: short
    Click OK
    Message Please choose a password of at least 8 characters.
    Focus Password
    Type Password: correct horse
    Type Password again: correct house
    Click OK
    Message The two passwords are not the same.
    Type Password again: correct horse
    Click OK
Next
    Click Close
Start
Signed in ben
Stored BRIXUser: strUserID, strPasswordHash
    ...
    ben|pbkdf2-sha256$600000$...
Next
    Choose User: ben
    Type Password: correct house
    Click OK
    Message The password is not right.
    All selected
    Press Ctrl+A Ctrl+C
    # a password is not copied
    Copied
    Click Cancel
Start

== Practice that cannot be opened is told and asked for again
Next
    Text Practice...: ....not
    Type where the practice is
    Click OK
Next
    Click Cancel
Start where no practice is
    ....not...

== Search finds words of names codes and references as they are typed
Clients
    Count Clients: 14
    Type Search: ashw harr
    Rows Clients
        C0001 | Harriet Ashworth...
    Count Clients: 1
    Type Search: c0002
    Rows Clients
        C0002...
    Count Clients: 1
    Type Search: CEDAR
    Rows Clients
        P0002 | Cedar Advisory LLP | llp...
    Count Clients: 1
    Type Search: nobody at all
    Shows 0 found.
    # opens nothing
    Press Enter
    Click Help
    Help /help/desk.md#20104

== Long list opens with the first ones and shows more when asked
Clients
    Clients more: 450
    Click Refresh
    Count Clients: 200
    Shows The first 200 by name. Type more letters, or show more.
    # names are read once, not at each letter
    Statements are watched
    Type Search: aa10044
    Whole lists read 1
    Count Clients: 10
    Type Search:
    Type Search: aa
    Click Show more
    Count Clients: 400
    Focus Clients

== Roll forward is previewed and then run
Clients
    Choose Tax year: 2017/18
    Next
        Text Into tax year: 2018/19
        Click Preview
        Shows Preview into 2018/19, 14 clients: 14 sources, 140 tasks, 1 enquiry. Nothing was written.
        Shows Estimated Time Remaining:...
        Stored Source: Year
            2018 (11 times)
        Answer Yes
        Click Roll forward
        Message Sources, tasks and enquiries of all clients are carried into the new tax year.\n\nDo you want to continue?
        Stored Source: Year
            2018 (11 times)
            2019 (14 times)
        Click Close
    Click Roll forward...

== Widths and the last page are each users own
In C0001
    Width of Schedules becomes 123
    Press Ctrl+Tab Ctrl+Tab
In C0001
    Page 2
    Press Ctrl+Tab Ctrl+Tab
    Width of Schedules 123
As ben
In C0001
    Page 0
    Width of Schedules 90

== Year of a client shows its status enquiries and tasks
In C0008
    Text Status: ...03/11/2017...
    Press Ctrl+Tab Ctrl+Tab Ctrl+Tab
    Count Sources and their tasks: 10
    Rows Sources and their tasks
        Tax Return | ...
# dates in the order of the practice, as the fields have them
Sql UPDATE BRIXOptions SET nDateFormat = 1
In C0008
    Rows Sources and their tasks
        ...Submitted to HMRC | 01/31/2019 | ...
