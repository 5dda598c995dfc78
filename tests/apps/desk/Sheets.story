# The sheets of the schedules: opened, typed into, saved, and the rows read back.

== Employment keeps its figures and all four kinds of notes
In C0002
    Choose Kind: Employment
    Next
        Click OK
        Message Please fill in: Employer
        Focus Employer
        Type Employer: Harbour Ropes Ltd
        Type Started: 15/6
        Type Pay: 12,000+345.50
        Shows = 12,345.50
        Type Tax taken off: 69
        Text Pay: 12,345.50
        Text Started: 15/06/2017
        Click Completed
        Next
            Type Any information...: of audit
            Press Ctrl+Tab
            Type Any information...: of the return
            Press Ctrl+Tab
            Type Any information...: of estimates
            Press Ctrl+Tab
            Type Scheme reference number: 12345678
            Type Notes: of avoidance
            Click OK
        Click Notes...
        Shows Audit, Return, Est., Avoidance
        Click OK
    Click New...
    Rows Schedules
        Employment | Harbour Ropes Ltd |  | 12345.50 | 69.00
Stored BRIXNewEmploy: strEmployerName, dtStart, amtPay, amtTax, bCompleted, nOrdering, nYear
    Harbour Ropes Ltd|2017-06-15|12345.50|69.00|1|1|2018
Stored BRIXNewEmploy: strNotesAudit, strNotesReturn, strNotesEstimate, strNotesAvoidance, strSchemeReference
    of audit|of the return|of estimates|of avoidance|12345678
# Cancel
In C0002
    Choose Schedules: Employment
    Next
        Type Tax taken off: 70
        Press Escape
    Press Enter
Stored BRIXNewEmploy: amtTax
    69.00

== Interest is shared with a spouse and has payments
In C0002
    Choose Kind: Interest
    Next
        Type Source: Saltmarsh Savings
        Type Income: 100
        Click Joint with spouse
        Type Client's share (%): 160
        Click OK
        Message Please enter a valid client share percentage.
        Type Client's share (%): 60
        Choose View: Client's share
        Press Ctrl+Tab
        Click Payments
        Press Ctrl+Home
        Enter 30/6/2017 | 40 | 10 | 5/4 | 60+4
        Press Enter
        Click OK
    Click New...
    Rows Schedules
        Interest | Saltmarsh Savings |  | 100.00 |
Stored BRIXNewInterest: strName, amtIncome, bJoint, dblClientShare, nJointView, nOrdering
    Saltmarsh Savings|100.00|1|60|1|1
Stored BRIXNewInterestPayment: nOrdering, dtPaid, amtNet, amtTax
    1|2017-06-30|40.00|10.00
    2|2018-04-05|64.00|-
In C0002
    Choose Schedules: Interest
    # what cannot be taken keeps nobody there who gives it all up
    Next
        Press Ctrl+Tab
        Click Payments
        Press Ctrl+Home Right
        # a sum that no amount can hold is not passed over
        Enter 922,337,203,685,477 | 922,337,203,685,477
        Rows Totals
            Total|Error|922,337,203,685,477.00|Error
        Press Ctrl+Home
        Write x
        Click Cancel
    Press Enter
    Next
        Press Ctrl+Tab
        Click Totals
        Press Ctrl+End F4
        Message The sum of:\n30/06/2017: 50.00\n05/04/2018: 64.00
        Click Payments
        Press Ctrl+Home F2 F1
        Help /help/screens.md#20351
        Press Escape
        Answer Yes
        Press Ctrl+Delete
        Message ...
        Click OK
    Press Enter
Stored BRIXNewInterestPayment: nOrdering, dtPaid, amtNet
    1|2018-04-05|64.00

== Go to the next field that is empty by Ctrl and a full stop
In C0002
    Choose Kind: Interest
    Next
        Type Source: Saltmarsh Savings
        Type Income: 100
        Type Addition: 5
        Click Source
        Press Ctrl+.
        Focus Accrued, brought forward
        Press Ctrl+.
        Focus Deduction
        Press Ctrl+.
        Focus Accrued, brought forward
        # a full stop alone is one
        Write 1.5
        Text Accrued, brought forward: 1.5
        Click Cancel
    Click New...

== Foreign dividend shows the rate that limits the credit
In C0002
    Choose Kind: Foreign dividend
    Next
        Type Company: Brantwick Mining Inc
        # past what is only shown
        Click Foreign tax
        Press Ctrl+.
        Focus Paid on
        Choose Country: France
        Type Paid on: 15/1/2018
        Type Net dividend: 75
        Type Foreign tax: 25
        Text Rate that limits the credit (%): 15
        Text Credit: 15.00
        Click OK
    Click New...
    Rows Schedules
        Foreign dividend | Brantwick Mining Inc | FRA | 75.00 | 25.00
Stored BRIXForeignDividend: strCompany, strCountryAbbr, dtPaid, amtNet, amtForeignTax, nOrdering
    Brantwick Mining Inc|FRA|2018-01-15|75.00|25.00|1
# A country that is in no list stays what it is.
Sql UPDATE BRIXForeignDividend SET strCountryAbbr = 'XYZ', nVersion = nVersion + 1
In C0002
    Choose Schedules: Foreign dividend
    Next
        Type Net dividend: 76
        Click OK
    Press Enter
Stored BRIXForeignDividend: strCountryAbbr, amtNet
    XYZ|76.00

== Change of basis is asked about and kept
In C0002
    Choose Kind: Change of basis
    Next
        Click Amounts
        Press Ctrl+Home Right
        Write 100
        Press Enter
        Write -20
        Press Enter
        Write 80
        Press Enter
        Write -80
        Press Enter
        # a negative result is refused
        Click OK
        Press Alt+M
        Write 80
        Press Enter
        Text Before, in all: 100.00
        Text Result, in all: 80.00
        # its rows are for good
        Press Ctrl+Delete
        Count Amounts: 4
        Answer No
        Click OK
        Message The amounts of the change of basis are others than before.\n\nDo you want to keep them?
        Answer Yes
        Click Apply
        Message The amounts of the change of basis are others than before.\n\nDo you want to keep them?
        # which is not asked again
        Click OK
    Click New...
    Rows Schedules
        Change of basis | Change of basis |  | 80.00 |
Stored BRIXChangeOfBasis: nColumn, amtRow0, amtRow1, amtRow2, amtRow3, nYear
    1|100.00|-20.00|80.00|80.00|2018

== Investment income is split by amount and by per cent
Clients
# A partnership has 100.00 of income, split between two clients; amounts stand in ten-thousandths.
Sql INSERT INTO BRIXPartnershipClients (lID, lClientID, lpClientID) VALUES (9001, 1, 1), (9002, 2, 1)
Sql INSERT INTO BRIXBTaxProprietor (lID, lpClientID) VALUES (9001, 1)
Sql INSERT INTO BRIXBTaxAccountingPeriod (lID, lBTaxProprietorID, dtStart, dtEnd) VALUES (9001, 9001, '2016-10-01', '2017-09-30')
Sql INSERT INTO BRIXBTaxNoTaxInvestmentIncome (lID, lBTaxAccountingPeriodID, amtAmount) VALUES (9001, 9001, 1000000)
Sql INSERT INTO BRIXBTaxNoTaxInvestmentIncomeSplit (lID, lBTaxNoTaxInvestmentIncomeID, lClientID, amtShare, amtShareOverride, bOverride) VALUES (9001, 9001, 1, 500000, NULL, 0), (9002, 9001, 2, 500000, 400000, 1)
In P0001
    Choose Schedules: Investment income
    Next
        Click Shares
        Press Ctrl+End F4
        Message ...
        Click By per cent
        Click Shares
        Press Ctrl+Home Down Right
        Write 62.5
        Press Enter
        Enabled Apply
        Click OK
    Press Enter
# an override that was there stays
Stored BRIXBTaxNoTaxInvestmentIncomeSplit: lClientID, amtShare, amtShareOverride, bOverride
    1|50.00|62.50|1
    2|50.00|40.00|1
In P0001
    Choose Schedules: Investment income
    Next
        Type Amount to split: 200
        Click Shares
        Press Ctrl+Home Down Right
        Write 50
        Press Enter
        Click OK
    Press Enter
Stored BRIXBTaxNoTaxInvestmentIncome: amtAmount
    200.00
Stored BRIXBTaxNoTaxInvestmentIncomeSplit: lClientID, amtShare, amtShareOverride, bOverride
    1|50.00|50.00|0
    2|50.00|40.00|1

== Are not saved without the right nor when the return is finalised
In C0002
    Sql UPDATE BRIXTaxForm SET dtFinalised = '2018-12-01' WHERE lClientID = 2
    Choose Kind: Interest
    Next
        Type Source: Saltmarsh Savings
        Click OK
        Message Operation cannot be performed. Client is read only.
        Text Source: Saltmarsh Savings
        Click Cancel
    Click New...
    Rows Schedules

== Tell when somebody else has changed the row
In C0002
    Choose Kind: Interest
    Next
        Type Source: Old
        Click OK
    Click New...
    Next
        Somebody else: UPDATE BRIXNewInterest SET strName = 'Theirs', nVersion = nVersion + 1
        Type Source: Mine
        Click OK
        Message Another user has changed this schedule. Please close it and open it again.
        Click Cancel
    Click Open...
    Rows Schedules
        Interest | Theirs |  |  |
    # nor is saved what adds up to another sum than the one that was seen
    Next
        Press Ctrl+Tab
        Click Payments
        Press Ctrl+Home
        Enter 30/6/2017 | 40
        Somebody else: INSERT INTO BRIXNewInterestPayment (lNewInterestID, nOrdering, amtNet) SELECT lID, 1, 70000 FROM BRIXNewInterest
        Click OK
        Message Another user has changed this schedule. Please close it and open it again.
        Click Cancel
    Press Enter
    Choose Kind: Change of basis
    Next
        Click Amounts
        Press Ctrl+Home Right
        Write 100
        Press Enter
        Somebody else: INSERT INTO BRIXChangeOfBasis (lTaxFormID, lClientID, nYear, nColumn, amtRow3) SELECT lID, 2, 2018, 1, 50000 FROM BRIXTaxForm WHERE lClientID = 2 AND nYear = 2018
        Answer Yes
        Click OK
        Message ...
        Message Another user has changed this schedule. Please close it and open it again.
        Click Cancel
    Click New...
Stored BRIXNewInterestPayment: amtNet
    7.00
Stored BRIXChangeOfBasis: nColumn, amtRow0, amtRow3
    1|-|5.00
