// What interferes while items are staged and schedules are made.

#include "MorvUt/hmrc/HmrcTest.h"

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

TEST_P(Interference, IsNoneBySingleEmploymentsOfAnotherClient)
{
    const auto record = [](const char* works, const char* pay) {
        HmrcApi::Employment_t employment;
        employment.employerPayeReference = "1/A";
        employment.worksNumber = works;
        employment.taxablePayTotal.Parse(pay);
        return std::make_shared<const HmrcApi::Employment_t>(employment);
    };
    Fetch("pension 3/C - 50");
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
