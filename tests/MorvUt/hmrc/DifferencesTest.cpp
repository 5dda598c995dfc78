#include "MorvUt/hmrc/HmrcTest.h"

using FindDifferences = HmrcTest;

TEST_F(FindDifferences, StandInTheReturnsOrder)
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

TEST_F(FindDifferences, NameWhatTheReturnLeavesUnnamed)
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
