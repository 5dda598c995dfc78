#include "MorvUt/hmrc/Differences.h"

#include "MorvUt/hmrc/HmrcTest.h"

namespace
{

class Differences : public HmrcTest
{
protected:
    /// "number item: caption return/hmrc, ...", one a line.
    std::string Found() const
    {
        std::string text;
        for (const auto& difference : HmrcApi::FindDifferences(m_client, TaxYear(kYear))) {
            text += std::to_string(difference.number) + ' ' + difference.item.Str() + ':';
            for (const auto& row : difference.rows)
                text += ' ' + row.caption.Str() + ' ' + row.ReturnText().Str() + '/' + row.HmrcText().Str() +
                        (row.estimate ? " estimate" : "");
            text += '\n';
        }
        return text;
    }
};

} // namespace

TEST_F(Differences, ShowEachFigureThatHmrcChanges)
{
    const std::string start =
        Answer(R"({"employerPayeReference": "1/A", "employerName": "Firm", "startDate": "2017-05-01",
                   "taxablePayTotal": 100, "taxTotal": 12, "studentLoan": 3, "companyBenefits": [)" +
                   Benefit("CarBenefit", "44") + "]}",
               Pension("3/C", "", "50"), StateBenefit("IncapacityBenefit", "2017-06-01", "60"),
               R"(, "taxFreeAllowances": [{"allowanceType": "FlatRateJobExpenses", "amount": 70}],
                  "statePension": {"grossAmount": 80, "lumpSum": {"taxablePayTotal": 90}})");
    const struct
    {
        const char *from, *to;
        const char* found;
        const char* why;
    } rows[] = {
        {": 100", ": 100.01", "1 Firm (1/A): Pay 100.00/100.01\n", "a penny of pay"},
        {": 12", ": 0", "1 Firm (1/A): Tax 12.00/0.00\n", "tax taken back"},
        {": 3", ": 4", "1 Firm (1/A): Student loan 3.00/4.00\n", "student loan"},
        {": 44", ": 45", "1 Firm (1/A): Car Benefit 44.00/45.00\n", "benefit"},
        {"\"amount\": 44", "\"amount\": 44, \"isForecastBenefit\": true", "", "the same figure, now a forecast"},
        {"CarBenefit", "VanBenefit", "1 Firm (1/A): Company Vans /44.00\n", "a benefit that the return lacks"},
        {"2017-05-01", "2017-05-02", "1 Firm (1/A): Start date 01/05/2017/02/05/2017\n", "start"},
        {"\"startDate\": \"2017-05-01\",", "\"endDate\": \"2017-12-31\",", "", "a date that only one side has"},
        {": 50", ": 51", "1 Fund (3/C): Amount 50.00/51.00\n", "pension"},
        {": 60", ": 61", "1 Taxable Incapacity Benefit: Amount 60.00/61.00\n", "benefit of the state"},
        {": 80", ": 81", "1 State Pension: Amount 80.00/81.00\n", "state pension"},
        {": 90", ": 91", "1 State Pension lump sum: Amount 90.00/91.00\n", "lump sum"},
        {": 70", ": 71", "", "allowances have no schedule"},
        {"\"taxablePayTotal\": 100, ", "", "", "a figure that HMRC no longer sends"},
        {"\"amount\": 44", "\"x\": 44", "", "a benefit whose amount HMRC no longer sends"},
        {"\"3/C\"", "\"3/D\"", "", "one without a schedule yet, and one withdrawn"},
    };
    Fetch(start);
    Create();
    EXPECT_EQ(Found(), "") << "schedules made from the figures";
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        std::string changed = start;
        ASSERT_NE(changed.find(row.from), std::string::npos);
        changed.replace(changed.find(row.from), std::string(row.from).size(), row.to);
        PayeOf prepop(m_client, changed);
        Fetch(prepop);
        EXPECT_EQ(Errors(), "");
        EXPECT_EQ(Found(), row.found);
        EXPECT_EQ(prepop.HasDifferences(), *row.found != '\0');
        EXPECT_TRUE(prepop.HasNewData());
        Fetch(start);
        EXPECT_EQ(Found(), "");
    }
}

TEST_F(Differences, StandInTheReturnsOrder)
{
    Fetch(Answer(Employment("1/A", "", "1", Benefit("CarBenefit", "4", true)) + "," + Employment("2/B", "", "2"),
                 Pension("3/C", "", "3")));
    Create();
    Sql("UPDATE BRIXNewEmploy SET amtPay = NULL, strEmployerName = 'Mine' WHERE strPAYEReference = '2/B'");
    Sql("UPDATE BRIXNewEmployBenefits SET amtBenefit = 50000");
    Sql("UPDATE BRIXPensionStateBenefits SET amtAmount = 0");
    Sql("UPDATE BRIXNewEmploy SET nOrdering = 9 WHERE strPAYEReference = '1/A'");
    EXPECT_EQ(Found(), "1 Mine (2/B): Pay /2.00\n2 Firm (1/A): Car Benefit 5.00/4.00 estimate\n"
                       "3 Fund (3/C): Amount 0.00/3.00\n");
}

TEST_F(Differences, CompareNothingInTheReturnWithNothingOfHmrcs)
{
    Fetch(Answer(Employment("1/A", "", "0")));
    Create();
    Sql("UPDATE BRIXNewEmploy SET amtPay = NULL");
    EXPECT_EQ(Found(), "");
}

TEST_F(Differences, NameWhatTheReturnLeavesUnnamed)
{
    Fetch(Answer({}, Pension("3/C", "", "1") + R"(,{"employerPayeReference": "4/D", "taxablePayTotal": 2})",
                 StateBenefit("JobseekersAllowance", "2017-05-01", "3") + "," +
                     StateBenefit("EmploymentAndSupportAllowance", "2017-05-01", "4")));
    Create();
    Sql("UPDATE BRIXPensionStateBenefits SET strDescription = NULL, amtAmount = NULL");
    EXPECT_EQ(Found(), "1 Fund (3/C): Amount /1.00\n2 Private pension (4/D): Amount /2.00\n"
                       "3 Jobseeker's Allowance: Amount /3.00\n"
                       "4 Employment and Support Allowance: Amount /4.00\n");
}
