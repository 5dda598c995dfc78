# Date fields and combo boxes of countries.

== Dates without a year take their place beside each other
Dates
    Type From: 1/6
    Type To: 1/5
    Text From: 01/06/2023
    Type Underwriting: 1/5
    Text To: 01/05/2024
    Type From: 2/5
    Text Underwriting: 01/05/2023
    Type Plain: 6/4
    Text From: 02/05/2023
    Another return than of underwriting
    Type Underwriting: 1/1
    Text Plain: 06/04/2023
    Press Tab
    Text Underwriting: 01/01/2024
    Press Escape

== Countries are chosen by their names
Sql INSERT INTO BRIXCountry (lID, strName, strAbbr, strCurrency, strCurrencyAbbr, bEU) VALUES (1, 'Jersey', 'JEY', 'Pound', 'GBP', 0), (2, 'France', 'FRA', 'Euro', 'EUR', 1)
Countries
    Rows Plain
        Unassigned
        France
        Jersey
    Choose Plain: Jersey
    Chosen in Plain
        Jersey JEY Pound GBP
    # nothing has changed then, and it can be tried again
    Sql ALTER TABLE BRIXCountry RENAME TO Elsewhere
    In 2023
    Plain cannot be of the EU alone
    Sql ALTER TABLE Elsewhere RENAME TO BRIXCountry
    Chosen in Plain
        Jersey JEY Pound GBP
    Plain is of the EU alone yes
    Rows Plain
        France
    Chosen in Plain
        ...
    Text Plain:
    Plain is of the EU alone no
    Choose Plain: Unassigned
    Chosen in Plain
        Unassigned...
    # what is being typed stays
    Press Tab
    Write fr
    Cool drops while it is built anew
    Text Cool: fr
    Press Tab
    Cool is closed
    # completed
    Chosen in Cool
        France FRA Euro EUR
    Press Escape

== Lists of files and records keep what was typed
List BBSList.txt: Abbey\nZeta\n
List CharList.txt: Oxfam
List FBBSList.txt: Banque
Sql INSERT INTO BRIXBank (lID, strName) VALUES (1, 'Own bank')
Lists
    Type Bank: zeta
    Societies
    Rows Bank
        Abbey
        Zeta
    Chosen bank 1
    Text Bank: zeta
    # as it was typed, when a choice is taken back
    Press Alt+Down Up
    Text Bank: Abbey
    Press Escape
    Text Bank: zeta
    # nothing is read for the type that it has
    The program empties Bank
    Societies
    Rows Bank
    Foreign societies
    Rows Bank
        Banque
    # nothing has changed then, and it can be tried again
    Sql ALTER TABLE BRIXBank RENAME TO Elsewhere
    Records cannot be read
    Rows Bank
        Banque
    Sql ALTER TABLE Elsewhere RENAME TO BRIXBank
    Records
    Rows Bank
        Own bank
    Rows Charity
        Oxfam
    Press Escape

== Link is followed by mouse and keyboard
A link 3
    Click More
    Press Enter Alt+M
    Press Escape
