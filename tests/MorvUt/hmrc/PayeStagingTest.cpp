// What a later answer does to the staging rows, to the matching of schedules and to the differences.

#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/hmrc/schedules/Differences.h"

using HmrcApi::StagedCounts;

namespace
{

using PayeStaging = HmrcTest;
using PayeDifferences = HmrcTest;

int CountOf(const HmrcApi::CreatedSchedules& created) { return created.employments + created.pensionsAndBenefits; }

/// Items of one reference, one for each letter: employments, each with a car, for small letters and pensions for
/// capitals, with works numbers W1 to W9 up to i, with W0 up to m, and without from n on; pay goes with the letter.
std::string Items(const std::string& letters)
{
    std::string employments, pensions;
    for (const char letter : letters) {
        const int place = letter & 31; // from 1
        const std::string works = place > 13 ? "" : "W" + std::to_string(place > 9 ? 0 : place);
        const std::string pay = std::to_string(place * 100);
        const bool isEmployment = letter >= 'a';
        std::string& list = isEmployment ? employments : pensions;
        list += list.empty() ? "" : ",";
        list += isEmployment ? Employment("1/A", works, pay, Benefit("CarBenefit", pay)) : Pension("1/A", works, pay);
    }
    return Answer(employments, pensions);
}

} // namespace

TEST_F(PayeStaging, FollowsEachChangeAndShowsEachFigureThatDiffers)
{
    const std::string start = Answer(R"({"employerPayeReference": "1/A", "employerName": "Firm", "worksNumber": "W1",
                   "startDate": "2017-05-01", "taxablePayTotal": 100, "taxTotal": 12, "studentLoan": 3,
                   "companyBenefits": [)" +
                                         Benefit("CarBenefit", "44") + "]}",
                                     Pension("3/C", "P1", "50"), StateBenefit("IncapacityBenefit", "2017-06-01", "60"),
                                     R"(, "taxFreeAllowances": [{"allowanceType": "FlatRateJobExpenses", "amount": 70}],
                  "statePension": {"grossAmount": 80, "lumpSum": {"taxablePayTotal": 90}})");
    const struct
    {
        const char *from, *to; // in the text of the answer
        StagedCounts counts;
        const char* differences; // to the schedules that were made from the start
        const char* why;
    } rows[] = {
        {": 100", ": 100.01", {0, 1, 0}, "1 Firm (1/A): Pay 100.00/100.01\n", "a penny of pay"},
        {": 12", ": 0", {0, 1, 0}, "1 Firm (1/A): Tax 12.00/0.00\n", "tax taken back"},
        {": 3", ": 4", {0, 1, 0}, "1 Firm (1/A): Student loan 3.00/4.00\n", "student loan"},
        {"05-01", "05-02", {0, 1, 0}, "1 Firm (1/A): Start date 01/05/2017/02/05/2017\n", "start"},
        {"start", "end", {0, 1, 0}, "", "a date that only one side has"},
        {"\"taxablePayTotal\": 100, ", "", {0, 1, 0}, "", "a figure that HMRC no longer sends"},
        {"W1", "W2", {0, 1, 0}, "", "works number of the only employment"},
        {"Firm", "Firm Ltd", {0, 1, 0}, "", "name"},
        {"1/A", "1/B", {2, 0, 2}, "", "another employer, with its benefit, without a schedule yet"},
        {": 44", ": 45", {0, 1, 0}, "1 Firm (1/A): Car Benefit 44.00/45.00\n", "benefit"},
        {": 44", ": 44, \"isForecastBenefit\": true", {0, 1, 0}, "", "the same figure, now a forecast"},
        {", \"amount\": 44", "", {0, 1, 0}, "", "a benefit whose amount HMRC no longer sends"},
        {"CarB", "VanB", {1, 0, 1}, "1 Firm (1/A): Company Vans /44.00\n", "a benefit that the return lacks"},
        {": 50", ": 50.5", {0, 1, 0}, "1 Fund (3/C): Amount 50.00/50.50\n", "pension"},
        {"3/C", "3/D", {1, 0, 1}, "", "another pension"},
        {": 60", ": 61", {0, 1, 0}, "1 Taxable Incapacity Benefit: Amount 60.00/61.00\n", "benefit of the state"},
        {"06-01", "06-02", {1, 0, 1}, "", "a benefit of another date is another benefit"},
        {"Incapacity", "EmploymentAndSupport", {1, 0, 1}, "", "of a kind that is not known: kept, no schedule"},
        {"IncapacityBenefit", "JobseekersAllowance", {1, 0, 1}, "", "another benefit of that date"},
        {": 70", ": 71", {0, 1, 0}, "", "allowances have no schedule"},
        {": 80", ": 81", {0, 1, 0}, "1 State Pension: Amount 80.00/81.00\n", "state pension"},
        {"\"grossAmount\": 80", "\"typeDescription\": \"Graduated\"", {1, 0, 1}, "", "another state pension"},
        {"\"grossAmount\": 80, ", "", {0, 0, 1}, "", "a lump sum alone"},
        {": 90", ": 91", {0, 1, 0}, "1 State Pension lump sum: Amount 90.00/91.00\n", "lump sum"},
    };
    Fetch(start);
    Create();
    const std::string before = Staged();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const std::string changed = Replaced(start, row.from, row.to);
        PayeOf prepop(m_client, changed);
        EXPECT_EQ(Fetch(prepop), row.counts);
        EXPECT_TRUE(prepop.HasNewData());
        EXPECT_EQ(prepop.HasDifferences(), *row.differences != '\0');
        EXPECT_EQ(Errors(), "");
        EXPECT_EQ(Differences(), row.differences);
        EXPECT_EQ(Fetch(changed), StagedCounts{}) << "the same again";
        Fetch(start);
        EXPECT_EQ(Fetch(start), StagedCounts{});
        Quarry::GetConnection().Script("DELETE FROM BRIXMTD_Employments WHERE bWithdrawn = 1;"
                                       "DELETE FROM BRIXMTD_EmploymentsCompanyBenefits WHERE bWithdrawn = 1;"
                                       "DELETE FROM BRIXMTD_PensionStateBenefits WHERE bWithdrawn = 1");
        EXPECT_EQ(Staged(), before) << "back to what it was";
        EXPECT_EQ(Differences(), "");
    }
}

TEST_F(PayeStaging, KeepsWhatHmrcWithdrawsAndTakesItBack)
{
    const std::string all = Answer(Employment("1/A", "W1", "100", Benefit("CarBenefit", "44")),
                                   Pension("3/C", "", "50"), StateBenefit("IncapacityBenefit", "", "10"));
    EXPECT_EQ(Fetch(all), (StagedCounts{4, 0, 0}));
    const std::string before = Staged();
    EXPECT_EQ(Fetch(std::string()), StagedCounts{}) << "nothing yet: what was sent earlier stands";
    EXPECT_EQ(Errors() + Staged(), before);
    EXPECT_EQ(Fetch(Answer("")), (StagedCounts{0, 0, 4})) << "HMRC sends none of it any more";
    EXPECT_EQ(Staged(), "! 1/A|Firm|1/A|W1|-|-|100.00|-|-\n! 1/A|31|CarBenefit|44.00|0\n! 1|3/C|Fund|-|50.00|-\n"
                        "! 3|-|-|-|10.00|-\n");
    EXPECT_EQ(CountOf(Create()), 0) << "no schedule of what HMRC withdrew";
    EXPECT_EQ(Fetch(all), (StagedCounts{0, 4, 0}));
    EXPECT_EQ(Staged(), before);
}

TEST_F(PayeStaging, KeepsAnItemWhenItsKeyIsSplitAndJoined)
{
    const struct
    {
        std::vector<const char*> answers;
        const char* keys; // with works numbers, in the order in which the rows were made
        int schedules;    // after each answer's new schedules were made
        const char* why;
    } rows[] = {
        {{"a", "ab"}, "1/A W1=W1, 1/A W2=W2", 2, "split"},
        {{"a", "ba"}, "1/A W1=W1, 1/A W2=W2", 2, "split, the other way round"},
        {{"a", "ab", "a"}, "1/A=W1, ! 1/A W2=W2", 2, "and back to the first"},
        {{"a", "ab", "b"}, "! 1/A W1=W1, 1/A=W2", 2, "and back to the second"},
        {{"a", "ab", "b", "ab"}, "1/A W1=W1, 1/A W2=W2", 2, "and split again"},
        {{"ab", "i"}, "! 1/A W1=W1, ! 1/A W2=W2, 1/A=W9", 3, "two periods end, a third begins"},
        {{"a", "bi"}, "! 1/A=W1, 1/A W2=W2, 1/A W9=W9", 3, "the old one is neither"},
        {{"a", "bi", "a"}, "1/A=W1, ! 1/A W2=W2, ! 1/A W9=W9", 3, "and back"},
        {{"a", "bi", "b"}, "! 1/A W1=W1, 1/A=W2, ! 1/A W9=W9", 3, "its bare key goes to another"},
        {{"n", "no"}, "1/A #2=, 1/A #3=", 2, "without works numbers"},
        {{"n", "no", "n"}, "1/A=, ! 1/A #3=", 2, "without, and back"},
        {{"n", "bn"}, "1/A #2=, 1/A W2=W2", 2, "one of them has a works number"},
        {{"aa"}, "1/A W1=W1, 1/A W1 #2=W1", 2, "one works number twice"},
        {{"AB"}, "W1, W2", 2, "two pensions at once"},
        {{"A", "AB"}, "W1, W2", 2, "a second pension"},
        {{"A", "BA"}, "W1, W2", 2, "in front of the first"},
        {{"A", "AB", "B"}, "! W1, W2", 2, "back to the second pension"},
        {{"AB", "A"}, "W1, ! W2", 2, "pensions joined"},
        {{"AB", "BA"}, "W1, W2", 2, "pensions in another order"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        for (const char* letters : row.answers) {
            Fetch(Items(letters));
            EXPECT_EQ(Errors(), "");
            Create();
            EXPECT_EQ(Differences(), "");
            EXPECT_EQ(Fetch(Items(letters)), StagedCounts{}) << "the same again";
            EXPECT_EQ(CountOf(Create()), 0) << "none the second time";
        }
        EXPECT_EQ(Query("SELECT bWithdrawn, strKey || '=' || COALESCE(strWorksNumber, '') FROM BRIXMTD_Employments "
                        "ORDER BY lID") +
                      Query("SELECT bWithdrawn, strWorksNumber FROM BRIXMTD_PensionStateBenefits ORDER BY lID"),
                  row.keys);
        EXPECT_EQ(Query("SELECT (SELECT COUNT(*) FROM BRIXNewEmploy) + COUNT(*) FROM BRIXPensionStateBenefits"),
                  std::to_string(row.schedules));
        Forget();
    }
}

TEST_F(PayeStaging, PairsSeveralOfOneKindByTheirFigures)
{
    const std::string a = Benefit("CarBenefit", "44"), b = Benefit("CarBenefit", "99");
    const std::string x = StateBenefit("JobseekersAllowance", "", "10"),
                      y = StateBenefit("JobseekersAllowance", "", "20");
    EXPECT_EQ(Fetch(Answer(Employment("1/A", "", "1", a + "," + b), {}, x + "," + y)), (StagedCounts{5, 0, 0}));
    EXPECT_EQ(Fetch(Answer(Employment("1/A", "", "1", b + "," + a), {}, y + "," + x)), StagedCounts{})
        << "an answer's order means nothing";
    EXPECT_EQ(Fetch(Answer(Employment("1/A", "", "1", b), {}, y)), (StagedCounts{0, 0, 2}));
    EXPECT_EQ(Staged(), "1/A|Firm|1/A|-|-|-|1.00|-|-\n! 1/A|31|CarBenefit|44.00|0\n1/A|31|CarBenefit|99.00|0\n"
                        "! 2|-|-|-|10.00|-\n2|-|-|-|20.00|-\n");
}

TEST_F(PayeStaging, TakesAnotherOrderOfWhatOnlyTheOrderTellsApartForTheSame)
{
    const struct
    {
        const char *first, *reordered, *changed;
        const char* why;
    } rows[] = {{"nopNOP", "pnoPNO", "pqnPQN", "without works numbers"}, {"jklJKL", "ljkLJK", "lmjLMJ", "one number"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Fetch(Items(row.first)), (StagedCounts{9, 0, 0}));
        Create();
        EXPECT_EQ(Fetch(Items(row.reordered)), StagedCounts{});
        EXPECT_EQ(Differences(), "");
        EXPECT_EQ(Fetch(Items(row.changed)), (StagedCounts{0, 3, 0})) << "the second of them has other figures";
        EXPECT_EQ(HmrcApi::FindDifferences(m_client, TaxYear(kYear)).size(), 2u);
        Forget();
    }
}

TEST_F(PayeStaging, TakesRowsOfOtherProgramsAsTheyAre)
{
    Sql("INSERT INTO BRIXMTD_TaxYear (lID, lClientID, nYear, dtFetched) SELECT 5, lID, 2018, '2018-08-31' FROM "
        "BRIXClient");
    Sql("INSERT INTO BRIXMTD_TaxYear (lID, lClientID, nYear) SELECT 6, lID, 2018 FROM BRIXClient");
    Sql("INSERT INTO BRIXMTD_Employments (lID, lMTD_TaxYearID, strKey, strEmployerName, strPAYEReference, amtPay, "
        "bWithdrawn, nVersion) VALUES (3, 6, '1/A', 'Firm', '1/A', 1000000, NULL, NULL)");
    ::Test::SetNow(2018, 9, 1);
    EXPECT_EQ(Fetch(Answer(Employment("1/A", "", "100"))), StagedCounts{}) << "under the second of two year rows";
    EXPECT_EQ(Query("SELECT lID, dtFetched FROM BRIXMTD_TaxYear"), "5|2018-09-01 12:00:00.000, 6|-");
    EXPECT_EQ(Fetch(Answer(Employment("1/A", "", "101") + "," + Employment("2/B", "", "1"))), (StagedCounts{1, 1, 0}));
    EXPECT_EQ(Query("SELECT lMTD_TaxYearID, strKey, amtPay FROM BRIXMTD_Employments ORDER BY strKey"),
              "6|1/A|101.00, 5|2/B|1.00");
    EXPECT_EQ(CountOf(Create()), 2);
}

TEST_F(PayeStaging, TakesRowsThatLackWhatWeAlwaysWrite)
{
    Sql("INSERT INTO BRIXMTD_TaxYear (lID, lClientID, nYear) VALUES (5, 1, 2018)");
    Sql("INSERT INTO BRIXMTD_Employments (lID, lMTD_TaxYearID, strKey, strPAYEReference, amtPay) VALUES "
        "(1, 5, '1/A', NULL, 1000000), (2, 5, NULL, '2/B', 10000), (3, 5, NULL, '3/C', 10000)");
    Sql("INSERT INTO BRIXMTD_EmploymentsCompanyBenefits (lID, lMTD_EmploymentsID, strBenefitType, amtAmount, "
        "bForecast) "
        "VALUES (1, 1, 'CarBenefit', 400000, 1), (2, 1, 'CarBenefit', 420000, 0), (3, 1, 'TotalBenefitInKind', 420000, "
        "0)");
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (9, 1, 2018)");
    Sql("INSERT INTO BRIXNewEmploy (lID, lTaxFormID, nOrdering, strEmployerName, amtPay) VALUES (4, 9, 1, 'My pub', "
        "5)");
    EXPECT_EQ(Create().employments, 3) << "a schedule without a reference is nobody's";
    EXPECT_EQ(Query("SELECT nType, amtBenefit FROM BRIXNewEmployBenefits"), "70|42.00");
    EXPECT_EQ(Differences(), "");
    EXPECT_EQ(Fetch(Answer(Employment("1/A", "", "100",
                                      Benefit("CarBenefit", "40", true) + "," + Benefit("CarBenefit", "42") + "," +
                                          Benefit("TotalBenefitInKind", "42")) +
                           "," + Employment("2/B", "", "1") + "," + Employment("3/C", "", "1"))),
              (StagedCounts{0, 6, 0}))
        << "the same rows, whole now";
    EXPECT_EQ(CountOf(Create()), 0);
}

TEST_F(PayeStaging, WritesSingleEmploymentsOfTheirOwnClientOnly)
{
    const auto record = [](const char* works, const char* pay) {
        HmrcApi::Employment_t employment;
        employment.employerPayeReference = "1/A";
        employment.worksNumber = works;
        employment.taxablePayTotal.Parse(pay);
        return std::make_shared<const HmrcApi::Employment_t>(employment);
    };
    Fetch(Answer({}, Pension("3/C", "", "50")));
    Sql("INSERT INTO BRIXClient (lID) VALUES (2)");
    HmrcApi::CPAYEPrepop prepop(m_client, TaxYear(kYear), {}, HmrcApi::IEndpointOverride::Live);
    prepop.AddEmploymentDataToMap(ClientId(2), TaxYear(kYear), "1/A", record("", "7"));
    prepop.AddEmploymentDataToMap(m_client, TaxYear(kYear), "1/A W1", record("W1", "1"));
    prepop.AddEmploymentDataToMap(m_client, TaxYear(kYear), "1/A W1", record("W1", "2"));
    prepop.AddEmploymentDataToMap(m_client, TaxYear(kYear), "1/A W2", nullptr);
    for (int run = 0; run < 2; ++run) {
        prepop.UpdateMTDPensionStateBenefits();
        prepop.UpdateMTDPensionsAndOther();
        prepop.UpdateMTDEmployments();
        prepop.UpdateMTDTaxFreeAllowances();
        EXPECT_EQ(Staged(), "1/A|-|1/A|W1|-|-|2.00|-|-\n1|3/C|Fund|-|50.00|-\n");
    }
}

TEST_F(PayeStaging, LeavesEverythingAsItWasWhenAnotherUserWasQuicker)
{
    const std::string before = Answer(Employment("1/A", "W1", "100") + "," + Employment("2/B", "", "5"));
    const std::string after =
        Answer(Employment("1/A", "W1", "101") + "," + Employment("2/B", "", "6"), Pension("3/C", "", "1"));
    ASSERT_EQ(Fetch(before), (StagedCounts{2, 0, 0}));
    const std::string staged = Staged();

    // Another workstation changes the second employment while the first is being written.
    const auto meanwhile = [](const Quarry::DataChange& change) {
        if (change.newRow->GetText(Brix::CMTD_Employments::kKey) == "1/A")
            Sql("UPDATE BRIXMTD_Employments SET nVersion = nVersion + 1 WHERE strKey = '2/B'");
    };
    Quarry::AddDataChangedListenerForUpdate(Brix::CMTD_Employments::Declaration().number, "BRIX", meanwhile);
    EXPECT_EQ(Fetch(after), StagedCounts{});
    EXPECT_EQ(Errors(), "CHANGED_BY_ANOTHER_USER");
    EXPECT_EQ(Staged(), staged) << "the pension that was staged before is gone again";
}

TEST_F(PayeDifferences, StandInTheReturnsOrder)
{
    Fetch(Answer(Employment("1/A", "", "1", Benefit("CarBenefit", "4", true)) + "," + Employment("2/B", "", "2"),
                 Pension("3/C", "", "3")));
    Create();
    Sql("UPDATE BRIXNewEmploy SET amtPay = NULL, strEmployerName = 'Mine' WHERE strPAYEReference = '2/B'");
    Sql("UPDATE BRIXNewEmployBenefits SET amtBenefit = 50000");
    Sql("UPDATE BRIXPensionStateBenefits SET amtAmount = 0");
    Sql("UPDATE BRIXNewEmploy SET nOrdering = 9 WHERE strPAYEReference = '1/A'");
    // Another works number of the employer's: not the schedule that HMRC's figures are held against.
    Sql("INSERT INTO BRIXNewEmploy (lID, lTaxFormID, nOrdering, strPAYEReference, strWorksNumber) "
        "SELECT 99, lTaxFormID, 0, '2/B', 'W7' FROM BRIXNewEmploy WHERE strPAYEReference = '2/B'");
    EXPECT_EQ(Differences(), "1 Mine (2/B): Pay /2.00\n2 Firm (1/A): Car Benefit 5.00/4.00 estimate\n"
                             "3 Fund (3/C): Amount 0.00/3.00\n");
}

TEST_F(PayeDifferences, NameWhatTheReturnLeavesUnnamed)
{
    Fetch(Answer(Employment("1/A", "", "0"),
                 Pension("3/C", "", "1") + R"(,{"employerPayeReference": "4/D", "taxablePayTotal": 2})",
                 StateBenefit("JobseekersAllowance", "2017-05-01", "3") + "," +
                     StateBenefit("EmploymentAndSupportAllowance", "2017-05-01", "4")));
    Create();
    Sql("UPDATE BRIXNewEmploy SET amtPay = NULL"); // nothing in the return is no other figure than HMRC's 0
    Sql("UPDATE BRIXPensionStateBenefits SET strDescription = NULL, amtAmount = NULL");
    EXPECT_EQ(Differences(), "1 Fund (3/C): Amount /1.00\n2 Private pension (4/D): Amount /2.00\n"
                             "3 Jobseeker's Allowance: Amount /3.00\n"
                             "4 Employment and Support Allowance: Amount /4.00\n");
}
