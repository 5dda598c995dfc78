// The sheets of the schedules: opened, typed into, saved, and the rows read back.

#include "apps/desk/DeskTest.h"
#include "layouts/Sheets.h"
#include "MorvUt/res/layouts/JointSpouse.h"
#include "MorvUt/res/layouts/Notes.h"

namespace
{

class ScheduleSheets : public DeskTest
{
protected:
    /// Makes a new schedule of this kind by `script`; the list shows it last, as `shown`.
    void RunNew(const char* kind, Script script, const char* shown)
    {
        RunIn("C0002", [=](Hands& hands) {
            hands.Pick(IDC_RETURN_KIND, kind);
            InNext(script);
            hands.Click(IDC_RETURN_NEW);
            const auto rows = Rows(hands, IDC_RETURN_SCHEDULES);
            ASSERT_FALSE(rows.empty());
            EXPECT_EQ(rows.back(), shown);
        });
    }
    /// Opens the schedule that the list shows last.
    void RunLast(const char* code, Script script)
    {
        RunIn(code, [=](Hands& hands) {
            hands.Choose(IDC_RETURN_SCHEDULES, static_cast<int>(Rows(hands, IDC_RETURN_SCHEDULES).size()) - 1);
            InNext(script);
            hands.Press(VK_RETURN);
        });
    }
    static void Enter(Hands& hands, std::initializer_list<const char*> cells)
    {
        for (const char* const cell : cells) {
            hands.Write(cell);
            hands.Press(VK_TAB);
        }
    }
};

} // namespace

TEST_F(ScheduleSheets, EmploymentKeepsItsFiguresAndAllFourKindsOfNotes)
{
    RunNew(
        "Employment",
        [](Hands& hands) {
            hands.Click(IDOK);
            hands.ExpectMessage("Please fill in: Employer");
            hands.ExpectFocus(IDC_EMPLOYMENT_EMPLOYER);
            hands.Type(IDC_EMPLOYMENT_EMPLOYER, "Harbour Ropes Ltd");
            hands.Type(IDC_EMPLOYMENT_START, "15/6");
            hands.Type(IDC_EMPLOYMENT_PAY, "12,000+345.50");
            hands.ExpectText(IDC_SHEET_SUM, "= 12,345.50");
            hands.Type(IDC_EMPLOYMENT_TAX, "69");
            hands.ExpectText(IDC_EMPLOYMENT_PAY, "12,345.50");
            hands.ExpectText(IDC_EMPLOYMENT_START, "15/06/2017");
            hands.Click(IDC_STATUS_COMPLETED);
            InNext([](Hands& notes) {
                for (const char* const text : {"of audit", "of the return", "of estimates"}) {
                    notes.Type(IDC_NOTES_TEXT, text);
                    NextPage(notes);
                }
                notes.Type(IDC_AVOIDANCE_REFERENCE, "12345678");
                notes.Type(IDC_AVOIDANCE_NOTES, "of avoidance");
                notes.Click(IDOK);
            });
            hands.Click(IDC_STATUS_NOTES);
            hands.ExpectText(IDC_STATUS_NOTES_LABEL, "Audit, Return, Est., Avoidance");
            hands.Click(IDOK);
        },
        "Employment | Harbour Ropes Ltd |  | 12345.50 | 69.00");
    EXPECT_EQ(
        Query("SELECT strEmployerName, dtStart, amtPay, amtTax, bCompleted, strNotesAudit, strNotesReturn, "
              "strNotesEstimate, strNotesAvoidance, strSchemeReference, nOrdering, nYear FROM BRIXNewEmploy"),
        "Harbour Ropes Ltd|2017-06-15|12345.50|69.00|1|of audit|of the return|of estimates|of avoidance|12345678|1|"
        "2018");
    RunLast("C0002", [](Hands& hands) {
        hands.Type(IDC_EMPLOYMENT_TAX, "70");
        hands.Press(VK_ESCAPE);
    });
    EXPECT_EQ(Query("SELECT amtTax FROM BRIXNewEmploy"), "69.00") << "Cancel";
}

TEST_F(ScheduleSheets, InterestIsSharedWithASpouseAndHasPayments)
{
    RunNew(
        "Interest",
        [](Hands& hands) {
            hands.Type(IDC_INTEREST_NAME, "Saltmarsh Savings");
            hands.Type(IDC_INTEREST_INCOME, "100");
            hands.Click(IDC_JOINT_BOX);
            hands.Type(IDC_JOINT_SHARE, "160");
            hands.Click(IDOK);
            hands.ExpectMessage("Please enter a valid client share percentage.");
            hands.Type(IDC_JOINT_SHARE, "60");
            hands.Choose(IDC_JOINT_VIEW, 1);
            NextPage(hands);
            hands.Click(IDC_PAYMENTS_GRID);
            hands.Press(VK_HOME, Afx::kControl);
            Enter(hands, {"30/6/2017", "40", "10", "31/12/2017", "60+4"});
            hands.Press(VK_RETURN);
            hands.Click(IDOK);
        },
        "Interest | Saltmarsh Savings |  | 100.00 | ");
    EXPECT_EQ(Query("SELECT strName, amtIncome, bJoint, dblClientShare, nJointView, nOrdering FROM BRIXNewInterest"),
              "Saltmarsh Savings|100.00|1|60|1|1");
    EXPECT_EQ(Query("SELECT nOrdering, dtPaid, amtNet, amtTax FROM BRIXNewInterestPayment ORDER BY nOrdering"),
              "1|2017-06-30|40.00|10.00, 2|2017-12-31|64.00|-");
    RunLast("C0002", [](Hands& hands) {
        NextPage(hands);
        hands.Click(IDC_PAYMENTS_TOTALS);
        hands.Press(VK_END, Afx::kControl);
        hands.Press(VK_F4);
        hands.ExpectMessage("The sum of:\n30/06/2017: 50.00\n31/12/2017: 64.00");
        hands.Click(IDC_PAYMENTS_GRID);
        hands.Press(VK_HOME, Afx::kControl);
        hands.Answer(IDYES);
        hands.Press(VK_DELETE, Afx::kControl);
        hands.Click(IDOK);
        if (!::Test::Windows().Messages().empty())
            hands.ExpectMessage(::Test::Windows().Messages().back().text);
    });
    EXPECT_EQ(Query("SELECT nOrdering, dtPaid, amtNet FROM BRIXNewInterestPayment"), "1|2017-12-31|64.00");
}

TEST_F(ScheduleSheets, GoToTheNextFieldThatIsEmptyByCtrlAndAFullStop)
{
    RunIn("C0002", [](Hands& hands) {
        hands.Pick(IDC_RETURN_KIND, "Interest");
        InNext([](Hands& sheet) {
            sheet.Type(IDC_INTEREST_NAME, "Saltmarsh Savings");
            sheet.Type(IDC_INTEREST_INCOME, "100");
            sheet.Type(IDC_INTEREST_ADDITION, "5");
            sheet.Click(IDC_INTEREST_NAME);
            for (const unsigned empty : {IDC_INTEREST_BFWD, IDC_INTEREST_DEDUCTION, IDC_INTEREST_BFWD}) {
                sheet.Press(VK_OEM_PERIOD, Afx::kControl);
                sheet.ExpectFocus(empty);
            }
            sheet.Write("1.5"); // a full stop alone is one
            sheet.ExpectText(IDC_INTEREST_BFWD, "1.5");
            sheet.Click(IDCANCEL);
        });
        hands.Click(IDC_RETURN_NEW);
    });
}

TEST_F(ScheduleSheets, ForeignDividendShowsTheRateThatLimitsTheCredit)
{
    RunNew(
        "Foreign dividend",
        [](Hands& hands) {
            hands.Type(IDC_DIVIDEND_COMPANY, "Brantwick Mining Inc");
            hands.Pick(IDC_DIVIDEND_COUNTRY, "France");
            hands.Type(IDC_DIVIDEND_PAID, "15/1/2018");
            hands.Type(IDC_DIVIDEND_NET, "75");
            hands.Type(IDC_DIVIDEND_TAX, "25");
            hands.ExpectText(IDC_DIVIDEND_RATE, "15");
            hands.ExpectText(IDC_DIVIDEND_CREDIT, "15.00");
            hands.Click(IDOK);
        },
        "Foreign dividend | Brantwick Mining Inc | FRA | 75.00 | 25.00");
    EXPECT_EQ(Query("SELECT strCompany, strCountryAbbr, dtPaid, amtNet, amtForeignTax, nOrdering FROM "
                    "BRIXForeignDividend"),
              "Brantwick Mining Inc|FRA|2018-01-15|75.00|25.00|1");
}

TEST_F(ScheduleSheets, ChangeOfBasisIsAskedAboutAndKept)
{
    RunNew(
        "Change of basis",
        [](Hands& hands) {
            hands.Click(IDC_BASIS_GRID);
            hands.Press(VK_HOME, Afx::kControl);
            hands.Press(VK_RIGHT);
            for (const char* const amount : {"100", "-20", "80", "80"}) {
                hands.Write(amount);
                hands.Press(VK_RETURN);
            }
            hands.ExpectText(IDC_BASIS_BEFORE, "100.00");
            hands.ExpectText(IDC_BASIS_RESULT, "80.00");
            hands.Answer(IDYES);
            hands.Click(IDOK);
            hands.ExpectMessage(
                "The amounts of the change of basis are others than before.\n\nDo you want to keep them?");
        },
        "Change of basis | Change of basis |  | 80.00 | ");
    EXPECT_EQ(Query("SELECT nColumn, amtRow0, amtRow1, amtRow2, amtRow3, nYear FROM BRIXChangeOfBasis"),
              "1|100.00|-20.00|80.00|80.00|2018");
}

TEST_F(ScheduleSheets, InvestmentIncomeIsSplitByAmountAndByPerCent)
{
    Run([](Hands&) {}); // opens the practice
    for (const long client : {1L, 2L})
        ::Test::Add<Brix::CPartnershipClients>([&](auto& row) { row.SetClientID(client), row.SetPClientID(1); });
    const long business = ::Test::Add<Brix::CBTaxProprietor>([](auto& row) { row.SetPClientID(1); });
    const long period = ::Test::Add<Brix::CBTaxAccountingPeriod>([&](auto& row) {
        row.SetBTaxProprietorID(business);
        row.SetStart(Kiln::CDate(2016, 10, 1));
        row.SetEnd(Kiln::CDate(2017, 9, 30));
    });
    const long income = ::Test::Add<Brix::CBTaxNoTaxInvestmentIncome>([&](auto& row) {
        row.SetBTaxAccountingPeriodID(period);
        row.SetAmount(Kiln::CAmt::FromPence(10000));
    });
    const auto split = [&](long client, int share, int counts) {
        ::Test::Add<Brix::CBTaxNoTaxInvestmentIncomeSplit>([&](auto& row) {
            row.SetBTaxNoTaxInvestmentIncomeID(income);
            row.SetClientID(client);
            row.SetShare(Kiln::CAmt::FromPence(share));
            row.SetOverride(share != counts);
            if (share != counts)
                row.SetShareOverride(Kiln::CAmt::FromPence(counts));
        });
    };
    split(1, 5000, 5000);
    split(2, 5000, 4000);
    static constexpr char kSplits[] = "SELECT lClientID, amtShare, amtShareOverride, bOverride FROM "
                                      "BRIXBTaxNoTaxInvestmentIncomeSplit ORDER BY lClientID";
    RunLast("P0001", [](Hands& hands) {
        hands.Click(IDC_INVESTMENT_GRID);
        hands.Press(VK_END, Afx::kControl);
        hands.Press(VK_F4);
        ASSERT_FALSE(::Test::Windows().Messages().empty());
        hands.ExpectMessage(::Test::Windows().Messages().back().text);
        hands.Click(IDC_INVESTMENT_PERCENT);
        hands.Click(IDC_INVESTMENT_GRID);
        hands.Press(VK_HOME, Afx::kControl);
        hands.Press(VK_DOWN);
        hands.Press(VK_RIGHT);
        hands.Write("62.5");
        hands.Press(VK_RETURN);
        hands.Click(IDOK);
    });
    EXPECT_EQ(Query(kSplits), "1|50.00|62.50|1, 2|50.00|40.00|1") << "an override that was there stays";
    RunLast("P0001", [](Hands& hands) {
        hands.Type(IDC_INVESTMENT_AMOUNT, "200");
        hands.Click(IDC_INVESTMENT_GRID);
        hands.Press(VK_HOME, Afx::kControl);
        hands.Press(VK_DOWN);
        hands.Press(VK_RIGHT);
        hands.Write("50");
        hands.Press(VK_RETURN);
        hands.Click(IDOK);
    });
    EXPECT_EQ(Query("SELECT amtAmount FROM BRIXBTaxNoTaxInvestmentIncome"), "200.00");
    EXPECT_EQ(Query(kSplits), "1|50.00|50.00|0, 2|50.00|40.00|1");
}

TEST_F(ScheduleSheets, AreNotSavedWithoutTheRightNorWhenTheReturnIsFinalised)
{
    RunIn("C0002", [](Hands& hands) {
        ::Test::Practice::Sql("UPDATE BRIXTaxForm SET dtFinalised = '2018-12-01' WHERE lClientID = 2");
        hands.Pick(IDC_RETURN_KIND, "Interest");
        InNext([](Hands& sheet) {
            sheet.Type(IDC_INTEREST_NAME, "Saltmarsh Savings");
            sheet.Click(IDOK);
            sheet.ExpectMessage("Operation cannot be performed. Client is read only.");
            sheet.ExpectText(IDC_INTEREST_NAME, "Saltmarsh Savings");
            sheet.Click(IDCANCEL);
        });
        hands.Click(IDC_RETURN_NEW);
        EXPECT_TRUE(Rows(hands, IDC_RETURN_SCHEDULES).empty());
    });
}

TEST_F(ScheduleSheets, TellWhenSomebodyElseHasChangedTheRow)
{
    Run([](Hands&) {}); // opens the practice
    const long form = std::stol(Query("SELECT lID FROM BRIXTaxForm WHERE lClientID = 2 AND nYear = 2018"));
    ::Test::Add<Brix::CNewInterest>(
        [&](auto& row) { row.SetTaxFormID(form), row.SetClientID(2), row.SetYear(2018), row.SetName("Old"); });
    RunIn("C0002", [](Hands& hands) {
        InNext([](Hands& sheet) {
            const auto other = ::Test::Practice::Open();
            other->ExecuteDirectf("UPDATE BRIXNewInterest SET strName = 'Theirs', nVersion = nVersion + 1");
            sheet.Type(IDC_INTEREST_NAME, "Mine");
            sheet.Click(IDOK);
            sheet.ExpectMessage("Another user has changed this schedule. Please close it and open it again.");
            sheet.Click(IDCANCEL);
        });
        hands.Click(IDC_RETURN_OPEN);
        EXPECT_EQ(Rows(hands, IDC_RETURN_SCHEDULES), std::vector<std::string>{"Interest | Theirs |  |  | "});
    });
}
