// What interferes while items are staged and schedules are made.

#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/hmrc/schedules/CreateFromHmrc.h"

using Interference = HmrcTest;
ON_BOTH_DATABASES(Interference);

TEST_P(Interference, LeavesAllNewSchedulesOrNone)
{
    Fetch(HmrcApi::IEndpointOverride::Everything);
    const auto fail = [](const Quarry::DataChange& change) {
        if (change.newRow->GetText(Brix::CPensionStateBenefits::kDescription) == "State Pension lump sum")
            throw std::runtime_error("disk full");
    };
    Quarry::AddDataChangedListenerForInsert(Brix::CPensionStateBenefits::Declaration().number, "BRIX", fail);
    EXPECT_THROW(Create(), std::runtime_error);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXTaxForm") + Schedules(), "0");
}

TEST_P(Interference, StopsNewSchedulesWhereAPersonWouldHaveToBeAsked)
{
    const char kReadOnly[] = "Operation cannot be performed. Client is read only.";
    const auto refusal = [&] {
        ::Test::Windows().Answer(1);
        const HmrcApi::CreateResult result = HmrcApi::CreateFromHmrc(m_client, TaxYear(kYear));
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(::Test::Windows().Messages().back().text, result.message.Str());
        return result.message;
    };
    Fetch(Answer(Employment("1/A", "", "1")));
    CUserData::ClearPermissions();
    EXPECT_EQ(refusal(),
              "You do not have permission to do this.\n\nPlease contact your administrator for more details.");
    CUserData::SetUser("ANNA");
    CUserData::SetReadOnly(1);
    EXPECT_EQ(refusal(), kReadOnly);
    CUserData::SetReadOnly(0);
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear, dtFinalised) SELECT 9, lID, 2018, '2018-12-01' FROM "
        "BRIXClient");
    EXPECT_EQ(refusal(), kReadOnly) << "finalised";
    EXPECT_EQ(Schedules(), "");
    Sql("UPDATE BRIXTaxForm SET dtFinalised = NULL");
    EXPECT_TRUE(HmrcApi::CreateFromHmrc(m_client, TaxYear(kYear)).ok);
}

TEST_P(Interference, IsNoneBySingleEmploymentsOfAnotherClient)
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
