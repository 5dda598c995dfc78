# Sheets worked by hand: their transaction, the share of a spouse, their notes.

== Commit what all pages accepted and nothing else
Sheet
    Type Name: New
    Cannot be opened again
    Click OK
Others see New
Sheet
    Type Name: Other
    Click Cancel
Others see New
# a page that refuses
Sheet
    Type Name: bad
    Click OK
    Text Name: bad
    Click Cancel
Others see New
# for others, too, while the sheet is open
Sheet
    Type Name: Applied
    The page has changed
    Click Apply
    Others see Applied
    Sql UPDATE BRIXNewInterest SET strName = 'Later'
    Click Cancel
Others see Applied

== Stay open while another program writes
Sql PRAGMA busy_timeout = 1
Sheet
    Type Name: Typed
    Another program begins to write
    Click OK
    Message Another program is writing to the practice. Please try again in a moment.
    Another program ends
    Text Name: Typed
    # nothing was applied
    Enabled Apply
    Next
        Type Any information...: Noted
        Another program begins to write
        Click OK
        Message Another program is writing to the practice. Please try again in a moment.
        Another program ends
        Click OK
    Click Notes...
    Next
        Type Any information...: Not this
        Click Cancel
    Click Notes...
    Click OK
Stored BRIXNewInterest: strName, strNotesAudit
    Typed|Noted

== Forget a note that could not be saved and was cancelled
Sql PRAGMA busy_timeout = 1
Sheet
    Type Name: Typed
    Next
        Type Any information...: Not this
        Another program begins to write
        Click OK
        Message Another program is writing to the practice. Please try again in a moment.
        Another program ends
        Click Cancel
    Click Notes...
    Click OK
Stored BRIXNewInterest: strName, strNotesAudit
    Typed|-

== Check the share of a spouse
Sheet
    Text Partnership: Ann & Bob
    # which is only shown
    Click Partnership
    Press Ctrl+A Ctrl+X
    Copied Ann & Bob
    Text Partnership: Ann & Bob
    Disabled Client's share (%)
    Click Joint with spouse
    Type Client's share (%): -0.01
    Click OK
    Message Please enter a valid client share percentage.
    Type Client's share (%): 100.01
    Click OK
    Message Please enter a valid client share percentage.
    Type Client's share (%): x
    Click OK
    Message Please enter a valid client share percentage.
    Focus Client's share (%)
    All selected
    # which nobody asks for without a spouse
    Click Joint with spouse
    The page has changed
    Click Apply
    Click Joint with spouse
    Type Client's share (%): 0
    The share is taken 0
    Type Client's share (%): 100
    The share is taken 100
    Type Client's share (%): 12.50 %
    Press Tab
    Text Client's share (%): 12.5
    Choose View: Spouse's share
    The sheet was told
        joint share ...view...
    The spouse's return is finalised
    Disabled Joint with spouse
    Shows The spouse's return is finalised.
    Click Cancel

== Keep notes of every kind
Sheet
    Click Completed
    Completed is 1
    Next
        Shows Any information you type here about the current schedule will be included in the Detailed Computation report. ...
        Type Any information...: one
        Press Enter
        Write two
        Press Ctrl+Tab Ctrl+Tab Ctrl+Tab
        Click OK
        Message Please enter a scheme reference number.
        Focus Scheme reference number
        Write 12345678
        Click Expected advantage to the partners arises in tax year ended 5 April
        Click Other
        Type Other (2): 17
        Click OK
        Message The tax year cannot be earlier than the current tax year.
        Focus Other (2)
        Text Other (2): 2017
        All selected
        Write "2019 "
        Click OK
    Click Notes...
    Shows Audit, Avoidance
    Click OK
Stored BRIXNewInterest: strNotesAudit, strNotesReturn, strSchemeReference, nSchemeYear
    one
    two|-|12345678|2019

== Keep no year of a scheme without an advantage in one
Sheet
    Next
        Press Ctrl+Tab Ctrl+Tab Ctrl+Tab
        Type Scheme reference number: 12345678
        Click OK
    Click Notes...
    Click OK
Stored BRIXNewInterest: strSchemeReference, nSchemeYear
    12345678|0

== Open the notes at the kind which was clicked
Sheet
    There are notes on loans, too
    Next
        The pages are called
            Audit
            Tax Return
            Estimates
            Avoidance
            Loans
        Focus Any information...
        Shows Any information you type here about the current schedule will be printed on the relevant tax form.
        Press Ctrl+Tab
        Shows Any information you type here about the estimated figures will be printed on the Tax Return form.
        Click OK
    The program opens the notes on the return
    Shows Special
    Click Cancel

== Dialogs commit by OK alone
Dialog
    The program writes 1
    Click Cancel
Others see 1
Dialog with a level
    The program writes 2
    Click Cancel
Others see 1
Dialog with a level
    The program writes 2
    Cannot be opened again
    Click OK
Others see 2

== Show notes that do not apply and write none back
Sheet
    Only notes on estimates, which do not apply
    Next
        Shows Estimate notes are not appropriate to the current form. Any entries made on this dialog will not be written back to the form.
        Type Estimate notes...: lost
        Click OK
    Click Notes...
    Click OK
Stored BRIXNewInterest: strNotesEstimate
    -

== Have no furniture unless asked
Plain sheet
    Furniture
        are shown
    The share is taken 0
    Click Cancel

== Have their furniture where it is seen
Sheet
    Furniture
        line 1 notes spouse are shown
    Shows Line
    Press F1
    Help interest.html#501
    The line ends before the sheet does, whose width is 400
    The line ends before the sheet does, whose width is 300
    The page hides its name and the label
    The program disables the notes
    Disabled Notes...
    Press Ctrl+Tab
    Furniture
        notes spouse are shown
    Type Name: x
    Press Tab
    Focus OK
    Press Tab
    Focus Completed
    Click Cancel
