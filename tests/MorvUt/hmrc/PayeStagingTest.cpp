// What a later answer does to the staging rows and to the matching of schedules.

#include "MorvUt/hmrc/Differences.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "support/Case.h"

using HmrcApi::StagedCounts;

namespace
{

class PayeStaging : public HmrcTest
{
protected:
    std::string KeysAndMarks() const
    {
        return Query("SELECT CASE WHEN bWithdrawn = 1 THEN '! ' ELSE '' END || strKey || '=' || "
                     "COALESCE(strWorksNumber, '') FROM BRIXMTD_Employments ORDER BY lID");
    }
};

int CountOf(const HmrcApi::CreatedSchedules& created) { return created.employments + created.pensionsAndBenefits; }

} // namespace

TEST_F(PayeStaging, FollowsEachKindOfChange)
{
    const std::string car = Benefit("CarBenefit", "44");
    const std::string start = Answer(Employment("1/A", "W1", "100", car), Pension("3/C", "P1", "50"),
                                     StateBenefit("JobseekersAllowance", "2017-05-01", "10"),
                                     R"(, "taxFreeAllowances": [{"allowanceType": "FlatRateJobExpenses", "amount": 7}],
                                        "statePension": {"grossAmount": 20})");
    const struct
    {
        const char *from, *to; // in the text of the answer
        StagedCounts counts;
        const char* why;
    } rows[] = {
        {"100", "100.01", {0, 1, 0}, "pay"},
        {"\"W1\"", "\"W2\"", {0, 1, 0}, "works number of the only employment"},
        {"\"Firm\"", "\"Firm Ltd\"", {0, 1, 0}, "name"},
        {"\"1/A\"", "\"1/B\"", {2, 0, 2}, "another employer, with its benefit"},
        {"44", "45", {0, 1, 0}, "benefit"},
        {"CarBenefit", "VanBenefit", {1, 0, 1}, "another benefit"},
        {", \"amount\": 44", "", {0, 1, 0}, "benefit without an amount"},
        {"50", "50.5", {0, 1, 0}, "pension"},
        {"\"3/C\"", "\"3/D\"", {1, 0, 1}, "another pension"},
        {"2017-05-01", "2017-05-02", {1, 0, 1}, "a benefit of another date is another benefit"},
        {"JobseekersAllowance", "IncapacityBenefit", {1, 0, 1}, "another benefit of that date"},
        {"JobseekersAllowance", "WinterFuel", {0, 0, 1}, "of a kind that is not known: not staged"},
        {": 7", ": 8", {0, 1, 0}, "allowance"},
        {": 20", ": 21", {0, 1, 0}, "state pension"},
        {"\"grossAmount\": 20", "\"typeDescription\": \"Graduated Pension\"", {1, 0, 1}, "another state pension"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Fetch(start);
        const std::string before = Staged();
        std::string changed = start;
        ASSERT_NE(changed.find(row.from), std::string::npos);
        changed.replace(changed.find(row.from), std::string(row.from).size(), row.to);
        EXPECT_EQ(Fetch(changed), row.counts);
        EXPECT_EQ(Errors(), "");
        EXPECT_EQ(Fetch(changed), StagedCounts{}) << "the same again";
        Fetch(start);
        EXPECT_EQ(Fetch(start), StagedCounts{});
        Sql("DELETE FROM BRIXMTD_Employments WHERE bWithdrawn = 1");
        Sql("DELETE FROM BRIXMTD_EmploymentsCompanyBenefits WHERE bWithdrawn = 1");
        Sql("DELETE FROM BRIXMTD_PensionStateBenefits WHERE bWithdrawn = 1");
        EXPECT_EQ(Staged(), before) << "back to what it was";
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
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(Staged(), "! 1/A|Firm|1/A|W1|-|-|100.00|-|-\n! + 31 CarBenefit 44.00\n! 1 3/C|Fund|-|50.00|-\n"
                        "! 3 ||-|10.00|-\n");
    EXPECT_EQ(CountOf(Create()), 0) << "no schedule of what HMRC withdrew";
    EXPECT_EQ(Fetch(all), (StagedCounts{0, 4, 0}));
    EXPECT_EQ(Staged(), before);
}

TEST_F(PayeStaging, KeepsAnEmploymentWhenItsKeyIsSplitAndJoined)
{
    const std::string one = Employment("1/A", "W1", "100"), two = Employment("1/A", "W2", "200");
    const std::string none = Employment("1/A", "", "300"), noneToo = Employment("1/A", "", "400");
    const std::string other = Employment("1/A", "W9", "900");
    const struct
    {
        std::vector<std::string> answers;
        const char* keys; // in the order in which the rows were made
        int schedules;    // after each answer's new schedules were made
        const char* why;
    } rows[] = {
        {{one, one + "," + two}, "1/A W1=W1, 1/A W2=W2", 2, "split"},
        {{one, two + "," + one}, "1/A W1=W1, 1/A W2=W2", 2, "split, the other way round"},
        {{one, one + "," + two, one}, "1/A=W1, ! 1/A W2=W2", 2, "and back to the first"},
        {{one, one + "," + two, two}, "! 1/A W1=W1, 1/A=W2", 2, "and back to the second"},
        {{one, one + "," + two, two, one + "," + two}, "1/A W1=W1, 1/A W2=W2", 2, "and split again"},
        {{one + "," + two, other}, "! 1/A W1=W1, ! 1/A W2=W2, 1/A=W9", 3, "two periods end, a third begins"},
        {{one, two + "," + other}, "! 1/A=W1, 1/A W2=W2, 1/A W9=W9", 3, "the old one is neither"},
        {{one, two + "," + other, one}, "1/A=W1, ! 1/A W2=W2, ! 1/A W9=W9", 3, "and back"},
        {{one, two + "," + other, two}, "! 1/A W1=W1, 1/A=W2, ! 1/A W9=W9", 3, "its bare key goes to another"},
        {{none, none + "," + noneToo}, "1/A #2=, 1/A #3=", 2, "without works numbers"},
        {{none, none + "," + noneToo, none}, "1/A=, ! 1/A #3=", 2, "without, and back"},
        {{none, two + "," + none}, "1/A #2=, 1/A W2=W2", 2, "one of them has a works number"},
        {{one + "," + one}, "1/A W1=W1, 1/A W1 #2=W1", 2, "one works number twice"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        for (const auto& answer : row.answers) {
            Fetch(Answer(answer));
            Create();
            EXPECT_TRUE(HmrcApi::FindDifferences(m_client, TaxYear(kYear)).empty());
            EXPECT_EQ(Fetch(Answer(answer)), StagedCounts{}) << "the same again";
            EXPECT_EQ(CountOf(Create()), 0) << "none the second time";
        }
        EXPECT_EQ(Errors(), "");
        EXPECT_EQ(KeysAndMarks(), row.keys);
        EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXNewEmploy"), std::to_string(row.schedules));
        Sql("DELETE FROM BRIXMTD_Employments");
        Sql("DELETE FROM BRIXNewEmploy");
    }
}

TEST_F(PayeStaging, KeepsAPensionWhenItsReferenceIsSplitAndJoined)
{
    const std::string one = Pension("1/A", "W1", "100"), two = Pension("1/A", "W2", "200");
    const ::Test::Case<std::vector<std::string>, const char*> rows[] = {
        {{one + "," + two}, "1/A W1, 1/A W2", "two at once"},
        {{one, one + "," + two}, "1/A, 1/A W2", "split: the schedule of the first is found by the bare reference"},
        {{one, one + "," + two, two}, "! 1/A, 1/A W2", "back to the second"},
        {{one + "," + two, one}, "1/A W1, ! 1/A W2", "joined"},
        {{one + "," + two, two + "," + one}, "1/A W1, 1/A W2", "another order"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        for (const auto& answer : row.in) {
            Fetch(Answer({}, answer));
            Create();
            EXPECT_EQ(Fetch(Answer({}, answer)), StagedCounts{});
            EXPECT_EQ(CountOf(Create()), 0);
        }
        EXPECT_EQ(Query("SELECT CASE WHEN bWithdrawn = 1 THEN '! ' ELSE '' END || strReference "
                        "FROM BRIXMTD_PensionStateBenefits ORDER BY lID"),
                  row.out);
        EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXPensionStateBenefits"), "2");
        EXPECT_TRUE(HmrcApi::FindDifferences(m_client, TaxYear(kYear)).empty());
        Sql("DELETE FROM BRIXMTD_PensionStateBenefits");
        Sql("DELETE FROM BRIXPensionStateBenefits");
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
    EXPECT_EQ(Staged(), "1/A|Firm|1/A||-|-|1.00|-|-\n! + 31 CarBenefit 44.00\n+ 31 CarBenefit 99.00\n"
                        "! 2 ||-|10.00|-\n2 ||-|20.00|-\n");
}

TEST_F(PayeStaging, TakesAnotherOrderOfWhatOnlyTheOrderTellsApartForTheSame)
{
    const struct
    {
        const char* works;
        const char* why;
    } rows[] = {{"", "without works numbers"}, {"W1", "one works number"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const auto answer = [&](const std::vector<std::string>& pays) {
            std::string employments, pensions;
            for (const auto& pay : pays) {
                const char* comma = employments.empty() ? "" : ",";
                employments += comma + Employment("1/A", row.works, pay, Benefit("CarBenefit", pay));
                pensions += comma + Pension("3/C", row.works, pay);
            }
            return Answer(employments, pensions);
        };
        EXPECT_EQ(Fetch(answer({"1", "2", "3"})), (StagedCounts{9, 0, 0}));
        Create();
        EXPECT_EQ(Fetch(answer({"3", "1", "2"})), StagedCounts{});
        EXPECT_TRUE(HmrcApi::FindDifferences(m_client, TaxYear(kYear)).empty());
        EXPECT_EQ(Fetch(answer({"3", "4", "1"})), (StagedCounts{0, 3, 0})) << "the second of them is now 4";
        EXPECT_EQ(HmrcApi::FindDifferences(m_client, TaxYear(kYear)).size(), 2u);
        Sql("DELETE FROM BRIXMTD_Employments");
        Sql("DELETE FROM BRIXMTD_PensionStateBenefits");
        Sql("DELETE FROM BRIXNewEmploy");
        Sql("DELETE FROM BRIXPensionStateBenefits");
    }
}

TEST_F(PayeStaging, TakesRowsOfOtherProgramsAsTheyAre)
{
    Sql("INSERT INTO BRIXMTD_TaxYear (lID, lClientID, nYear) SELECT 5, lID, 2018 FROM BRIXClient");
    Sql("INSERT INTO BRIXMTD_TaxYear (lID, lClientID, nYear) SELECT 6, lID, 2018 FROM BRIXClient");
    Sql("INSERT INTO BRIXMTD_Employments (lID, lMTD_TaxYearID, strKey, strEmployerName, strPAYEReference, amtPay, "
        "bWithdrawn, nVersion) VALUES (3, 6, '1/A', 'Firm', '1/A', 1000000, NULL, NULL)");
    EXPECT_EQ(Fetch(Answer(Employment("1/A", "", "100"))), StagedCounts{}) << "under the second of two year rows";
    EXPECT_EQ(Fetch(Answer(Employment("1/A", "", "101") + "," + Employment("2/B", "", "1"))), (StagedCounts{1, 1, 0}));
    EXPECT_EQ(Staged(), "2/B|Firm|2/B||-|-|1.00|-|-\n1/A|Firm|1/A||-|-|101.00|-|-\n");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXMTD_TaxYear"), "2");
    EXPECT_EQ(CountOf(Create()), 2);
}

TEST_F(PayeStaging, LeavesEverythingAsItWasWhenItFails)
{
    const std::string before = Answer(Employment("1/A", "W1", "100") + "," + Employment("2/B", "", "5"));
    const std::string after =
        Answer(Employment("1/A", "W1", "101") + "," + Employment("2/B", "", "6"), Pension("3/C", "", "1"));
    ASSERT_EQ(Fetch(before), (StagedCounts{2, 0, 0}));
    const std::string staged = Staged();

    PayeOf malformed(m_client, after.substr(0, after.size() / 2));
    EXPECT_EQ(Fetch(malformed), StagedCounts{});
    EXPECT_EQ(Errors(), "ANSWER_MALFORMED");
    EXPECT_FALSE(malformed.HasNewData() || malformed.HasDifferences());
    EXPECT_EQ(Staged(), staged);

    // Another workstation changes the second employment while the first is being written.
    const int table = Brix::CMTD_Employments::Declaration().number;
    const auto meanwhile = [](const Quarry::DataChange& change) {
        if (change.newRow->GetText(Brix::CMTD_Employments::kKey) == "1/A")
            Sql("UPDATE BRIXMTD_Employments SET nVersion = nVersion + 1 WHERE strKey = '2/B'");
    };
    Quarry::AddDataChangedListenerForUpdate(table, "BRIX", meanwhile);
    PayeOf prepop(m_client, after);
    EXPECT_EQ(Fetch(prepop), StagedCounts{});
    EXPECT_EQ(Errors(), "CHANGED_BY_ANOTHER_USER");
    EXPECT_EQ(Staged(), staged) << "the pension that was staged before is gone again";
    Quarry::RemoveDataChangedListenerForUpdate(table, "BRIX", meanwhile);

    // What is nobody's mistake goes on to the caller.
    const auto fail = [](const Quarry::DataChange&) { throw std::runtime_error("disk full"); };
    Quarry::AddDataChangedListenerForUpdate(table, "BRIX", fail);
    EXPECT_THROW(Fetch(after), std::runtime_error);
    EXPECT_EQ(Staged(), staged);
    EXPECT_EQ(Quarry::GetTransactionLevel(), 0);
}

TEST_F(PayeStaging, StampsTheYearEachTime)
{
    const std::string answer = Answer(Employment("1/A", "W1", "100"));
    ::Test::SetNow(2018, 9, 1);
    Fetch(answer);
    ::Test::SetNow(2018, 9, 2);
    Fetch(answer);
    EXPECT_EQ(Query("SELECT dtFetched FROM BRIXMTD_TaxYear"), "2018-09-02 12:00:00.000");
}
