# What must bring no program down, whatever the user, the application or the desktop does meanwhile.

== A button ends in its own handler
Sheet
    A button that ends is put there
    Click #105
    Gone #105

== A field ends while it is typed into
Sheet
    A field that ends is put there
    Click Ends
    Write 12
    Gone Ends

== A message is shown during a message
Sheet
    While asked: another box is shown
    Click Ask
    Message Is this so?
    Message Another one.
    The sheet is open
    Type Text: still there
    Text Text: still there

== The application closes the sheet during a message of its page
Sheet
    While asked: the sheet is closed
    Click Ask
    Message Is this so?
    The sheet is closed

== The application destroys the sheet during a message of its page
Sheet
    While asked: the sheet is destroyed
    Click Ask
    Message Is this so?
    The sheet is closed

== A list is filled anew while it drops
Sheet
    Press Alt+K F4 Down Down Enter
    Text Kind: second
    Press Alt+K F4 Down Down Enter
    Text Kind: second
    Press F4
    The list of kinds is emptied
    Press Down Escape
    The list of kinds is closed

== An amount is a megabyte long and typed as no amount is
Sheet
    Click Amount
    At once Amount: "7"*1048576
    Message The text is too long: this field takes 200 characters. Nothing was pasted.
    Text Amount:
    # not the first 200 of its figures
    Clipboard "1"*201
    Press Ctrl+V
    Message The text is too long: this field takes 200 characters. Nothing was pasted.
    Text Amount:
    At once Amount: "7"*200
    No amount
    Type Amount:
    # a Hebrew letter, an e with an accent of its own, and one beyond two bytes
    At once Amount: אé😀
    No amount
    Type Amount: 12.5
    Press Tab
    Text Amount: 12.50
    Click Amount
    All selected

== Letters run from right to left and combine
Sheet
    Click Text
    At once Text: "7"*1048576
    Message The text is too long: this field takes 32767 characters. Nothing was pasted.
    Text Text:
    Write אé😀
    Text Text: אé😀
    Press End
    Write \b\b
    Text Text: אe

== A line takes as much as there is room for or nothing
Sheet
    Click Text
    Write ten letters
    Clipboard "x"*32757
    Press Ctrl+V
    Message The text is too long: this field takes 32767 characters. Nothing was pasted.
    Text Text: ten letters
    Clipboard "x"*32756
    Press Ctrl+V
    Text Text: ten lettersx...x
    Write y
    Text Text: ten lettersx...x
    Type Text:

== A date that is refused says why and stays to be mended
Sheet
    Type Date: 31/4/2024
    Click OK
    Message 31 April does not exist; April has 30 days
    Focus Date
    All selected
    # it must be given
    Type Date:
    Click OK
    Message No date was given
    # in its own rule's year, also when Enter saves
    Type Date: 29/2
    Press Enter
    Message 29 February 2021 does not exist; February 2021 has 28 days
    Press Tab
    Click OK
    Message 29 February 2021 does not exist; February 2021 has 28 days
    Text Date: 29/2
    # another text is another date
    Type Date: 29/02/2024
    Click OK
    The sheet is closed
