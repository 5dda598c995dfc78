#include <limits>

#include "MorvUt/hmrc/HmrcTest.h"

class NewSchedules : public HmrcTest
{};

TEST_F(NewSchedules, JoinTheReturnAndLeaveItsOwnAsTheyAre)
{
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) SELECT 9, lID, 2018 FROM BRIXClient");
    Sql("INSERT INTO BRIXNewEmploy (lID, lTaxFormID, nOrdering, strEmployerName, strPAYEReference, amtPay) "
        "VALUES (4, 9, 6, 'My name for it', '1/A', 10000)");
    Sql("INSERT INTO BRIXPensionStateBenefits (lID, lTaxFormID, nOrdering, nType, strDescription) "
        "VALUES (4, 9, 3, 1060, 'state pension')");
    Fetch(Answer(Employment("1/A", "W1", "100") + "," + Employment("2/B", "", "5"), {}, {},
                 R"(, "statePension": {"grossAmount": 20})"));
    const HmrcApi::CreatedSchedules created = Create();
    EXPECT_EQ(created.employments, 1);
    EXPECT_EQ(created.pensionsAndBenefits, 1) << "descriptions differ by case";
    EXPECT_EQ(Schedules(), "6 My name for it|1/A||-|-|1.00|-|-\n7 Firm|2/B||-|-|5.00|-|-\n"
                           "3 0/1060 state pension|||-|-|-\n4 200/1060 State Pension|||-|20.00|-\n");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXTaxForm"), "1");
    EXPECT_EQ(Query("SELECT lClientID || ' ' || nYear || ' ' || LENGTH(strGUID) FROM BRIXNewEmploy "
                    "WHERE bFromHMRC = 1"),
              std::to_string(m_client.Get()) + " 2018 36");
}

TEST_F(NewSchedules, NumberTheLastPlaceMoreThanOnce)
{
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) SELECT 9, lID, 2018 FROM BRIXClient");
    Sql("INSERT INTO BRIXNewEmploy (lID, lTaxFormID, nOrdering, strPAYEReference) VALUES (4, 9, 2147483646, '9/Z')");
    Fetch(Answer(Employment("1/A", "", "1") + "," + Employment("2/B", "", "1")));
    Create();
    EXPECT_EQ(Query("SELECT nOrdering FROM BRIXNewEmploy WHERE lID <> 4"), "2147483647, 2147483647");
}

TEST_F(NewSchedules, AddUpBenefitsOfOneCode)
{
    Fetch(Answer(Employment("1/A", "", "1",
                            Benefit("EmployerProvidedServices", "10") + "," + Benefit("ServiceBenefit", "5.5", true) +
                                "," + Benefit("OtherItems", "") + "," + Benefit("YachtBenefit", "7") + "," +
                                Benefit("CarBenefit", ""))));
    Create();
    EXPECT_EQ(Schedules(), "1 Firm|1/A||-|-|1.00|-|-\n+ 70 -\n+ 140 15.50 estimate\n+ 180 7.00\n");
}

TEST_F(NewSchedules, StandForBenefitsOfOneDate)
{
    const auto benefits = {StateBenefit("JobseekersAllowance", "", "10"), StateBenefit("JobseekersAllowance", "", "20"),
                           StateBenefit("IncapacityBenefit", "2017-05-01", "30"),
                           StateBenefit("EmploymentAndSupportAllowance", "2017-05-01", "40"),
                           StateBenefit("JobseekersAllowance", "2017-05-01", "50")};
    std::string list;
    for (const auto& benefit : benefits)
        list += (list.empty() ? "" : ",") + benefit;
    Fetch(Answer({}, {}, list));
    const HmrcApi::CreatedSchedules created = Create();
    EXPECT_EQ(created.pensionsAndBenefits, 3);
    EXPECT_EQ(created.notes.size(), 2u) << "one line for each item without a schedule of its own";
    EXPECT_EQ(Schedules(), "1 300/1090 |||-|10.00|-\n2 300/1140 Taxable Incapacity Benefit|||2017-05-01|30.00|-\n"
                           "3 300/1090 |||2017-05-01|50.00|-\n");
    const HmrcApi::CreatedSchedules again = Create();
    EXPECT_EQ(again.pensionsAndBenefits, 0);
    EXPECT_TRUE(again.notes.empty());
}

TEST_F(NewSchedules, AreMadeTogetherOrNotAtAll)
{
    Fetch(HmrcApi::IEndpointOverride::Everything);
    const auto fail = [](const Quarry::DataChange& change) {
        if (change.newRow->GetText(Brix::CPensionStateBenefits::kDescription) == "State Pension lump sum")
            throw std::runtime_error("disk full");
    };
    const int table = Brix::CPensionStateBenefits::Declaration().number;
    Quarry::AddDataChangedListenerForInsert(table, "BRIX", fail);
    EXPECT_THROW(Create(), std::runtime_error);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXTaxForm"), "0");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXNewEmploy"), "0");
    Quarry::RemoveDataChangedListenerForInsert(table, "BRIX", fail);
    EXPECT_EQ(Create().employments, 2);
}

TEST_F(NewSchedules, AreAskedForWhenAReturnWithoutEmploymentsHasAllowances)
{
    const auto exist = [&] {
        return HmrcApi::CPAYEPrepop(m_client, TaxYear(kYear), {}, HmrcApi::IEndpointOverride::Live)
            .DoNewEmploymentsExist();
    };
    const auto allowance = [](const char* amount) {
        return Answer({}, {}, {},
                      std::string(R"(, "taxFreeAllowances": [{"allowanceType": "FlatRateJobExpenses", "amount": )") +
                          amount + "}]");
    };
    EXPECT_FALSE(exist()) << "nothing staged";
    Fetch(allowance("0"));
    EXPECT_FALSE(exist()) << "an allowance of nothing";
    Fetch(allowance("1"));
    EXPECT_TRUE(exist());
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) SELECT 9, lID, 2018 FROM BRIXClient");
    Sql("INSERT INTO BRIXNewEmploy (lID, lTaxFormID, nOrdering, strPAYEReference) VALUES (4, 9, 1, '9/Z')");
    EXPECT_FALSE(exist()) << "an employment to set it against";
}
