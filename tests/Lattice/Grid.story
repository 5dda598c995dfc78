== Is typed into by keyboard
Dialog
    Focus Grid
    Enter Ann | 10+2.50
    Write x
    Press Tab
    Message Please enter a percentage, as 33.33.
    Editing
    # over it, since it is selected
    Enter 33.333333336 | 5/4/24
    Write "n "
    Press Tab
    # the first Enter closes the list
    Press Alt+Down Down Down Enter Enter
    Row is 1
    Go to 1, Amount
    Press Down Up Ctrl+D
    Rows Grid
        Ann|12.50|33.33333334|05/04/2024|yes|green
        |12.50||||
        |25.00||||
    The month comes first
    Go to 0, Date
    Press F2 Enter
    Cell 0, Date: 04/05/2024
    # as it was
    Go to 1, Amount
    Press F2
    Write 9
    Press Escape
    Cell 1, Amount: 12.50
    Press F2
    Write 9
    Press Ctrl+Z
    Not editing
    Cell 1, Amount: 12.50
    Cell 2, Amount: 25.00
    # leaving takes over
    Press Enter
    Write -1
    The program goes to After
    Cell 2, Amount: 11.50
    # a total
    The program goes to Grid
    Press Ctrl+End
    Write 7
    Not editing
    Press F4
    Message First and Second
    Press Tab
    Focus After
    # no field is empty
    Write full
    Go to 1, Kind
    The program goes to Grid
    Press F2 Ctrl+.
    Editing
    Press Tab
    Focus After
    # automatic is not blank
    The program goes to Grid
    Go to 1, Amount
    Write auto
    Press Enter
    Cell 1, Amount: A
    Go to 1, Amount
    Press Delete
    Cell 1, Amount:
    Undo all
    Rows Grid
        |||||
        |||||
        |||||
    Press Escape

== Takes back the last hundred changes
Dialog
    Go to 0, Ticked
    Write " "*101
    Undo
    Cell 0, Ticked: no
    # the first one is forgotten
    Undo all
    Cell 0, Ticked: yes
    Press Escape

== Stands whatever the program does meanwhile
Dialog
    # its row is gone, the keyboard leads on
    While asked: row 1 is deleted
    Go to 1, Share
    Write x
    Press Enter
    Message Please enter a percentage, as 33.33.
    Not editing
    Focus within the grid
    Go to 0, Amount
    Write 5
    The program deletes row 0
    Focus Grid
    # the first row is another now
    The program inserts row 0
    Go to 0, Amount
    Write 6
    Press Enter
    The program inserts row 0
    Nothing to undo
    # the row with the focus moves up, and what was typed stands elsewhere
    Go to 1, Amount
    Write 7
    Press Enter
    Go to 1, Amount
    The program deletes row 0
    Row is 0
    Nothing to undo
    Press Escape

== Pastes all of a block or nothing
Dialog
    Clipboard a\t1\nb\t2
    Go to 0, Name
    Press Ctrl+V
    Rows Grid
        a|1.00||||
        b|2.00||||
        |3.00||||
    Go to 1, Amount
    Press Ctrl+A Ctrl+C
    Copied a\t1.00...b\t2.00...\t3.00...
    # one undo
    Undo
    Rows Grid
        |||||
        |||||
        |||||
    # a line that is shorter leaves the rest as it is
    Clipboard a\t1\nb
    Go to 0, Name
    Press Ctrl+V
    Rows Grid
        a|1.00||||
        b|||||
        |1.00||||
    Undo
    Clipboard yes\tgreen
    Go to 1, Ticked
    Press Ctrl+V
    Cell 1, Ticked: yes
    Cell 1, Kind: green
    Undo
    Clipboard a\t1\nb\tx
    Go to 0, Name
    Press Ctrl+V
    Message Nothing was pasted. Row 2, Amount: "x" does not belong in an amount; write it as in 1,234.56
    Clipboard 1\n2\n3\n4
    Go to 0, Amount
    Press Ctrl+V
    Message Nothing was pasted. Row 3, Amount: this cell cannot be changed.
    Clipboard red\t1
    Go to 0, Kind
    Press Ctrl+V
    Message Nothing was pasted. Row 1, last column: this cell cannot be changed.
    Clipboard "x"*32768
    Go to 0, Name
    Press Ctrl+V
    Message Nothing was pasted. Row 1, Name: The text is too long: a cell takes 32767 characters.
    Nothing to undo
    Rows Grid
        |||||
        |||||
        |||||
    Press Escape

== Reads no more of a long list than is seen
List of 1000
    Press PageDown
    Row is 20
    Write 5
    Press Delete
    Not editing
    Press Escape
Cells read 1
List of 1000000
    Press PageDown
    Row is 20
    Write 5
    Press Delete
    Not editing
    Press Escape
Cells read 1
