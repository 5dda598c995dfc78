# A dialog and a sheet of their own.

== Dialog is worked by keyboard alone
Person
    Focus Name
    Write Bob
    Press Tab
    Write x
    Press Enter
    Message Please enter a whole number.
    Focus Age
    All selected
    Write 41
    # over what is hidden
    Press Tab
    Write " "
    Press Tab Down Down
    # the next that begins so, from the start again
    Write r
    Press Tab
    Write one
    Press Enter
    Write two
    Text #105: one\ntwo
    Press Alt+N
    Focus Name
    Press Shift+Tab
    Focus Cancel
    Press Alt+G
    Focus Age
    Press Enter
The person is
    Bob, 41, tick 1, kind 0
# the controls are made anew
Person
    Text Name: Bob
    Text Age: 41
    Press Alt+T
    Press Enter
The person is
    Bob, 41, tick 0, kind 0

== Dialog keeps others waiting
Person
    Another person
        # past one that is disabled
        The program disables Age
        Press Tab
        Focus Tick
        The first person's dialog takes nothing
        Cannot be opened again
        # nor is it ended by the key of a button that is disabled
        The program disables OK
        Press Enter
        Press Escape
    Focus Name
    The program hides Name
    Focus Age
    Press Enter

== Box keeps its choice while its list grows
Person
    The list of kinds grows while it drops
    Press Down Escape
    Text #104: green
    The list of kinds grows while it drops
    Press Down Enter
    Text #104: blue
    No kind is chosen
    The list of kinds grows while it drops
    Press Down Escape
    Text #104:
    Press Enter
The person is
    Ann, 7, tick 0, kind -1

== Text is cut and replaced by whole characters
Person
    Write é1
    Press Home Delete
    Text Name: 1
    Press Ctrl+A Ctrl+X
    Copied 1
    Text Name:
    # there is room for as much as is replaced
    Clipboard "x"*32767
    Press Ctrl+V Ctrl+A Ctrl+V
    Type Name: Bob
    # a page of choices goes as far as there are any
    Press Tab Tab Tab PageDown
    Text #104: blue
    Press Enter
The person is
    Bob, 7, tick 0, kind 2

== Sheet is accepted by all pages or stays open
Sheet 1
    Type Name: bad
    The program goes to page 1
    On page 0
    Click OK
    Not accepted
    Type Name: late
    Press Ctrl+Tab
    On page 1
    The page has changed
    # back to the one that refused
    Click Apply
    Not accepted
    On page 0
    Type Name: good
    Click Apply
    Accepted
    Disabled Apply
    Press Enter
Pages applied
    2 and 2
# the program's word
The first page closes its sheet when it is applied
Sheet 2
    Click OK
Pages applied
    3 and 2
# begun anew
Sheet 2
    The page has changed
    Click Cancel
Sheet 2
    Press Ctrl+Tab
    The page has not changed
    Disabled Apply
    # a page without a field
    The program hides Name
    Press Ctrl+Tab
    Type Name: x
    Press Ctrl+Tab
    Focus #12320
    Press Ctrl+Tab
    Type Name: y
    The program removes the first page
    Focus #12320
    Click Cancel
