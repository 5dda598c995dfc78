# Grids worked by hand: new rows, splits, changes of basis.

== Insertable grid offers a blank row up to its maximum
Payments, three at most
    # the first, with its automatic cell; nothing behind a blank one
    Look for a new row
    Look for a new row
    Rows Grid
        ||A||
    The program goes to Grid
    Write 29/2
    Press Tab
    Message 29 February 2023 does not exist; February 2023 has 28 days
    Enter 6/4/24
    # net is not filled
    Count Grid: 1
    Enter 80+10
    Count Grid: 2
    Enter 10
    Rows Grid
        06/04/2024|90.00|10.00|100.00|
        ||A||
    # the year of a pasted date is that of a typed one
    Go to 0, Paid
    Clipboard 1/5
    Press Ctrl+V
    Cell 0, Paid: 01/05/2023
    Undo
    # nor is a row added for what is refused
    Go to 1, Paid
    The program begins anew
    Press Enter
    Cell 1, Paid:
    Go to 1, Paid
    Clipboard \t1\n\t3\t4\t7\n
    Press Ctrl+V
    Message Nothing was pasted. Row 3, Gross: this cell cannot be changed.
    Count Grid: 2
    Clipboard \t1\t2\n\t3\tauto\n
    Press Ctrl+V
    Rows Grid
        06/04/2024|90.00|10.00|100.00|
        |1.00|2.00|3.00|
        |3.00|A|3.00|
    Go to 2, Paid
    Press Ctrl+V
    Message Nothing was pasted: there is no room for so many rows.
    Rows Grid
        06/04/2024|90.00|10.00|100.00|
        |1.00|2.00|3.00|
        |3.00|A|3.00|
    # one deleted, one offered
    Answer Yes
    Press Ctrl+Delete
    Message Delete this row?
    Answer by default No
    Count Grid: 3
    Enabled Delete row
    # as the derived grid keeps what was chosen
    Go to 0, Paid by
    Press Alt+Down Down Enter Enter
    Cell 0, Paid by: Ann's account
    # from the choices of now
    Ben pays, too
    Go to 0, Paid by
    Press Alt+Down Down Enter Enter
    Cell 0, Paid by: Ben's account
    Undo all
    Rows Grid
        ||A||
    # undoing may make a row one that can be deleted
    Go to 0, Net
    Write 5
    Press Enter
    The first row cannot be changed
    Go to 0, Paid
    Disabled Delete row
    Undo
    Enabled Delete row
    The first row cannot be changed
    Go to 0, Paid
    Disabled Delete row
    Press Ctrl+Delete
    Press Escape

== Totals are computed that follow from an edit and no others
Totals
    Cell 7, All: -108.00
    Cell 50, C: 225.00
    Cell 50, All: -150.00
    Totals computed 57
    Go to 7, D
    Write 1
    Press Enter
    # of the row, of the column, of all
    Totals computed 3
    Cell 7, All: -84.00
    Cell 50, D: -251.00
    Cell 50, All: -126.00
    # each once, however many cells
    Go to 0, A
    Clipboard 0.00\t0\n1\t2\n
    Press Ctrl+V
    Totals computed 5
    Cell 50, All: -105.00
    # an undone edit brings back the cells, not the total of then
    The program writes into 2, A: 3.00
    Undo
    Cell 0, B: -10.00
    Cell 50, All: -125.00
    # a zero total shows nothing
    The program writes into 9, A:
    The program writes into 9, B:
    The program writes into 9, C:
    The program writes into 9, D:
    The program writes into 9, E:
    The program writes into 9, F:
    Cell 9, All:
    Go to 9, All
    Press F4
    Message The sum of cells that are all blank.
    # a total that leaves something out would be believed
    The program shows an error in 7, D
    Cell 7, All: Error
    Cell 50, All: Error
    Press Escape

== Splits are typed in either unit and saved
Shares of 100.01 among three
    The program selects client 1
    Write 40
    Press Enter
    Shares 100.01, 40.00, -, -, 60.01
    # nothing is taken back any more
    Read-only yes
    Undo
    Read-only no
    Shares 100.01, 40.00, -, -, 60.01
    # above it stand pounds
    By per cent
    Go to 1, Share
    Press Ctrl+D
    Go to 2, Share
    Shares 100.01, 39.99600040, -, -, 60.00399960
    Write 25
    Press Enter
    Write x
    Press Enter
    Message Please enter a percentage, as 33.33.
    Press Escape
    By amount
    Nothing to undo
    Shares 100.01, 40.00, 25.00, -, 35.01
    The amount becomes 0
    Shares 0.00, 40.00, 25.00, -, Error
    By per cent
    Shares 0.00, Error, Error, -, 100.00000000
    # an error is not copied
    Go to 2, Share
    Press Ctrl+D
    Shares 0.00, Error, Error, -, 100.00000000
    # one that cannot be held counts
    Go to 3, Share
    Write 100000000000
    Press Enter
    Shares 0.00, Error, Error, 100000000000.00000000, -92233720268.54776001
    Undo
    # nor is anything left of what was typed and deleted
    Write 50
    Press Enter
    Go to 3, Share
    Press Delete
    # an undone slip leaves the amount that cannot be shown
    Go to 1, Share
    Write 50
    Press Enter
    Undo
    Shares 0.00, Error, Error, -, 100.00000000
    The first share is 40.00
    The amount becomes 10000
    Shares 100.00, 40.00000000, 25.00000000, -, 35.00000000
    # what is shown stays
    The amount becomes 20000
    The first share is 80.00
    The amount becomes 10000
    # its rows are its entities'
    Press Ctrl+Delete
    By amount
    Press Escape
Stored BRIXBTaxNoTaxInvestmentIncomeSplit: lClientID, amtShare
    1|40.00
    2|25.00

== Default split page asks about a split that does not add up
A third each
    Rows Left to allocate
        ...|0.00000000
    Press Right
    # what is pasted counts as it is shown
    Clipboard 33.333333326\n33.333333326
    Press Ctrl+V
    Rows Left to allocate
        ...|0.00000000
    Write 33.33
    Press Enter
    Rows Left to allocate
        ...|0.00333333
    # nor rows of a page that makes them itself
    Press Ctrl+Delete
    Answer Cancel
    Click OK
    Message The split does not add up to 100%. Continue?
    Answer OK
    Click OK
    Message The split does not add up to 100%. Continue?
