// From HMRC's items to the return's schedules.

#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/hmrc/schedules/CreateFromHmrc.h"
#include "MorvUt/hmrc/schedules/Notes.h"

using HmrcApi::StagedCounts;
using Type = HmrcApi::IEndpointOverride::ResponseType;
using NewSchedules = HmrcTest;

TEST_F(NewSchedules, AreMadeOnceFromEveryPublishedExample)
{
    const struct
    {
        Type type;
        int staged, employments, pensionsAndBenefits;
        const char* why;
    } rows[] = {
        {Type::Everything, 18, 2, 7, "everything"},  {Type::EverythingMissingPayAndTax, 18, 2, 7, "no figures"},
        {Type::Employed, 4, 1, 0, "one employment"}, {Type::Employed2, 5, 2, 0, "two periods with an employer"},
        {Type::Pensioner, 3, 0, 3, "pensions only"}, {Type::Jobseeker, 2, 1, 1, "employment, then allowance"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Fetch(row.type), (StagedCounts{row.staged, 0, 0}));
        EXPECT_EQ(Errors() + Schedules(), "") << "a fetch makes no schedule";
        HmrcApi::CPAYEPrepop later(m_client, TaxYear(kYear), {}, Type::Live);
        EXPECT_EQ(later.DoNewEmploymentsExist(), row.employments > 0);
        EXPECT_EQ(later.DoNewPensionStateBenefitsExist(), row.pensionsAndBenefits > 0);
        const HmrcApi::CreatedSchedules created = Create();
        EXPECT_EQ(created.employments, row.employments);
        EXPECT_EQ(created.pensionsAndBenefits, row.pensionsAndBenefits);
        EXPECT_TRUE(created.notes.empty());
        EXPECT_FALSE(later.DoNewEmploymentsExist() || later.DoNewPensionStateBenefitsExist());
        EXPECT_EQ(Create().employments + Create().pensionsAndBenefits, 0);
        EXPECT_EQ(Fetch(row.type), StagedCounts{}) << "the same answer";
        EXPECT_EQ(Differences(), "");
        Forget();
    }
}

TEST_F(NewSchedules, TakeHmrcsFigures)
{
    Fetch(Type::Everything);
    Create();
    EXPECT_EQ(Schedules(), "1|Company XYZ|123/AB456|A123456|-|2017-08-20|22551.05|900.38|284.85\n"
                           "2|Company ABC|456/AB456|00191048716|2017-09-05|-|8650.20|224.99|-\n"
                           "1|70|44.00|0\n1|80|99.00|0\n1|120|64.00|0\n"
                           "2|40|80.00|1\n2|50|375.00|1\n2|140|125.00|1\n"
                           "1|200|1050|Pension Provider XYZ|Pension Provider XYZ|321/AB456|-|10150.62|2563.18\n"
                           "2|200|1050|Pension Provider ABC|Pension Provider ABC|654/AB456|2015-03-04|3874.42|0.00\n"
                           "3|300|1090|-|-|475/BB00987|2017-05-01|2010.10|502.02\n"
                           "4|300|1140|Taxable Incapacity Benefit|-|892/BA500|2017-08-14|800.64|200.16\n"
                           "5|300|1140|Employment and Support Allowance|-|267/ESA500|2018-03-20|456.11|118.04\n"
                           "6|200|1060|State Pension|-|-|-|3910.01|-\n"
                           "7|200|1060|State Pension lump sum|-|-|2018-03-05|10520.80|2520.60\n");
}

TEST_F(NewSchedules, JoinTheReturnAndLeaveItsOwnAsTheyAre)
{
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) SELECT 9, lID, 2018 FROM BRIXClient");
    Sql("INSERT INTO BRIXNewEmploy (lID, lTaxFormID, nOrdering, strEmployerName, strPAYEReference, amtPay) "
        "VALUES (4, 9, 6, 'My name for it', '1/A', 10000)");
    Sql("INSERT INTO BRIXPensionStateBenefits (lID, lTaxFormID, nOrdering, nType, strDescription) "
        "VALUES (4, 9, 3, 1060, 'state pension')");
    Fetch(Answer(Employment("1/A", "W1", "100") + "," + Employment("2/B", "", "5"), {}, {},
                 R"(, "statePension": {"grossAmount": 20})"));
    EXPECT_EQ(Create().employments, 1);
    EXPECT_EQ(Schedules(), "6|My name for it|1/A|-|-|-|1.00|-|-\n7|Firm|2/B|-|-|-|5.00|-|-\n"
                           "3|-|1060|state pension|-|-|-|-|-\n4|200|1060|State Pension|-|-|-|20.00|-\n")
        << "descriptions differ by case";
    EXPECT_EQ(Query("SELECT lClientID, nYear, lTaxFormID, LENGTH(strGUID) FROM BRIXNewEmploy WHERE bFromHMRC = 1"),
              "1|2018|9|36");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXTaxForm"), "1");
}

TEST_F(NewSchedules, NumberTheLastPlaceMoreThanOnce)
{
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) SELECT 9, lID, 2018 FROM BRIXClient");
    Sql("INSERT INTO BRIXNewEmploy (lID, lTaxFormID, nOrdering, strPAYEReference) VALUES (4, 9, 2147483646, '9/Z')");
    Fetch(Answer(Employment("1/A", "", "1") + "," + Employment("2/B", "", "1")));
    Create();
    EXPECT_EQ(Query("SELECT nOrdering FROM BRIXNewEmploy WHERE lID <> 4"), "2147483647, 2147483647");
}

TEST_F(NewSchedules, HaveTheReturnsCodesForBenefitsAndAddUpThoseOfOneCode)
{
    Fetch(Answer(Employment("1/A", "", "1",
                            Benefit("EmployerProvidedServices", "10") + "," + Benefit("ServiceBenefit", "5.5", true) +
                                "," + Benefit("OtherItems", "") + "," + Benefit("YachtBenefit", "7") + "," +
                                Benefit("CarBenefit", ""))));
    Create();
    EXPECT_EQ(Schedules(), "1|Firm|1/A|-|-|-|1.00|-|-\n1|70|-|0\n1|140|15.50|1\n1|180|7.00|0\n");
    Forget();
    Fetch(Answer(Employment("1/A", "", "1")));
    for (int number = 29; number <= 54; ++number) // HMRC's, and as many pounds
        Sql("INSERT INTO BRIXMTD_EmploymentsCompanyBenefits (lID, lMTD_EmploymentsID, nBenefitType, amtAmount) "
            "SELECT %d, lID, %d, %d FROM BRIXMTD_Employments",
            number, number, number * 10'000);
    Create();
    EXPECT_EQ(Query("SELECT nType, amtBenefit / 10000 AS nPounds FROM BRIXNewEmployBenefits ORDER BY nType"),
              "10|40, 20|48, 40|54, 50|38, 60|44, 70|31, 80|29, 90|35, 95|36, 100|37, 120|30, 130|50, 140|33, 150|39, "
              "160|51, 170|46, 180|47, 190|52, 200|41, 210|53, 220|42, 240|32, 250|45, 260|126");
}

TEST_F(NewSchedules, StandForBenefitsOfOneDate)
{
    Fetch(Answer({}, {},
                 StateBenefit("JobseekersAllowance", "", "10") + "," + StateBenefit("JobseekersAllowance", "", "20") +
                     "," + StateBenefit("IncapacityBenefit", "2017-05-01", "30") + "," +
                     StateBenefit("EmploymentAndSupportAllowance", "2017-05-01", "40") + "," +
                     StateBenefit("JobseekersAllowance", "2017-05-01", "50")));
    const HmrcApi::CreatedSchedules created = Create();
    EXPECT_EQ(created.pensionsAndBenefits, 3);
    EXPECT_EQ(created.notes.size(), 2u) << "one line for each item without a schedule of its own";
    EXPECT_EQ(Schedules(), "1|300|1090|-|-|-|-|10.00|-\n2|300|1140|Taxable Incapacity Benefit|-|-|2017-05-01|30.00|-\n"
                           "3|300|1090|-|-|-|2017-05-01|50.00|-\n");
    EXPECT_EQ(Create().pensionsAndBenefits, 0);
    EXPECT_EQ(Create().notes.size(), 2u) << "until the schedules hold the sums";
    EXPECT_EQ(Differences(),
              "1 Jobseeker's Allowance: Amount 10.00/30.00 of which Jobseeker's Allowance /10.00 of which "
              "Jobseeker's Allowance /20.00\n2 Taxable Incapacity Benefit: Amount 30.00/70.00 of which "
              "Incapacity Benefit /30.00 of which Employment and Support Allowance /40.00\n");
    Sql("UPDATE BRIXPensionStateBenefits SET amtAmount = CASE nOrdering WHEN 1 THEN 300000 WHEN 2 THEN 700000 ELSE "
        "amtAmount END");
    EXPECT_EQ(Differences(), "");
    EXPECT_TRUE(Create().notes.empty());
}

TEST_F(NewSchedules, AreMadeTogetherOrNotAtAll)
{
    Fetch(Type::Everything);
    const auto fail = [](const Quarry::DataChange& change) {
        if (change.newRow->GetText(Brix::CPensionStateBenefits::kDescription) == "State Pension lump sum")
            throw std::runtime_error("disk full");
    };
    Quarry::AddDataChangedListenerForInsert(Brix::CPensionStateBenefits::Declaration().number, "BRIX", fail);
    EXPECT_THROW(Create(), std::runtime_error);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXTaxForm") + Schedules(), "0");
}

TEST_F(NewSchedules, HoldAllowancesOfAReturnWithoutEmployments)
{
    const auto fetch = [&](const char* amount) {
        Fetch(
            Answer({}, {}, {},
                   std::string(R"(, "taxFreeAllowances": [{"allowanceType": "FlatRateJobExpenses")") + amount + "}]"));
        return HmrcApi::CPAYEPrepop(m_client, TaxYear(kYear), {}, Type::Live).DoNewEmploymentsExist();
    };
    EXPECT_FALSE(fetch(R"(, "amount": 0)")) << "an allowance of nothing";
    EXPECT_FALSE(fetch("")) << "without an amount";
    EXPECT_TRUE(fetch(R"(, "amount": 0.01)")) << "a penny";
    const HmrcApi::CreatedSchedules created = Create();
    EXPECT_EQ(created.employments, 1);
    EXPECT_EQ(created.notes.size(), 1u) << "it cannot be filed as it stands";
    EXPECT_EQ(Schedules(), "1|HMRC allowances|-|-|-|-|-|-|-\n");
    EXPECT_FALSE(fetch(R"(, "amount": 0.01)")) << "an employment to set it against";
    EXPECT_EQ(Create().employments, 0);
}

TEST_F(NewSchedules, AreNotMadeWhereTheReturnDoesNotSayWhichItHas)
{
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) SELECT 9, lID, 2018 FROM BRIXClient");
    Sql("INSERT INTO BRIXNewEmploy (lID, lTaxFormID, nOrdering, strPAYEReference, amtPay) VALUES (4, 9, 1, '1/A', "
        "1500000)");
    Fetch(Answer(Employment("1/A", "W1", "100") + "," + Employment("1/A", "W2", "50")));
    EXPECT_FALSE(HmrcApi::CPAYEPrepop(m_client, TaxYear(kYear), {}, Type::Live).DoNewEmploymentsExist());
    const HmrcApi::CreatedSchedules created = Create();
    EXPECT_EQ(created.employments, 0);
    EXPECT_EQ(created.notes.size(), 2u);
    EXPECT_EQ(Differences(), "1 Firm (1/A W1): Pay /100.00\n2 Firm (1/A W2): Pay /50.00\n") << "nothing is silent";
    Sql("UPDATE BRIXNewEmploy SET strWorksNumber = 'W1', amtPay = 1000000");
    EXPECT_EQ(Create().employments, 1);
    EXPECT_EQ(Differences(), "");
}

TEST_F(NewSchedules, TellOfSchedulesThatHmrcDoesNotSend)
{
    const struct
    {
        const char *typed, *first, *second; // references
        std::size_t notes;
        const char* why;
    } rows[] = {
        {nullptr, "1/A", "1/B", 1, "made from HMRC's record, which has another reference now"},
        {"1/a ", "1/A", "1/A", 1, "typed with blanks and in another case"},
        {"9/Z", "1/A", "1/A", 0, "the user's own"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Forget();
        Sql("DELETE FROM BRIXTaxForm");
        Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (9, 1, 2018)");
        if (row.typed)
            Sql("INSERT INTO BRIXNewEmploy (lID, lTaxFormID, nOrdering, strPAYEReference) VALUES (4, 9, 1, %s)",
                row.typed);
        Fetch(Answer(Employment(row.first, "", "1"), Pension(row.first, "", "1")));
        std::size_t notes = Create().notes.size();
        Fetch(Answer(Employment(row.second, "", "1"), Pension(row.first, "", "1")));
        notes += Create().notes.size();
        EXPECT_EQ(notes, row.notes);
        EXPECT_EQ(Create().notes.size(), row.typed ? 0u : 1u) << "each time, of what was made from HMRC's records";
    }
}

TEST_F(NewSchedules, TakeOneFigureOfABenefitAndNoTotalTwice)
{
    const auto benefits = [&](const std::string& sent) {
        Forget();
        Fetch(Answer(Employment("1/A", "", "1", sent)));
        const HmrcApi::CreateResult result = HmrcApi::CreateFromHmrc(m_client, TaxYear(kYear));
        EXPECT_EQ(Fetch(Answer(Employment("1/A", "", "1", sent))), StagedCounts{});
        return Query("SELECT nType, amtBenefit, bEstimate FROM BRIXNewEmployBenefits ORDER BY nType") + " notes " +
               std::to_string(result.created.notes.size() - 1); // one is about the missing tax
    };
    const std::string forecast = Benefit("CarBenefit", "4000", true), actual = Benefit("CarBenefit", "4200"),
                      van = Benefit("VanBenefit", "5"), total = Benefit("TotalBenefitInKind", "4205");
    EXPECT_EQ(benefits(forecast), "70|4000.00|1 notes 0");
    EXPECT_EQ(benefits(forecast + "," + actual), "70|4200.00|0 notes 1") << "not 8,200";
    EXPECT_EQ(benefits(forecast + "," + forecast), "70|8000.00|1 notes 0");
    EXPECT_EQ(benefits(total), "170|4205.00|0 notes 0");
    EXPECT_EQ(benefits(Benefit("CarBenefit", "") + "," + total), "70|-|0, 170|4205.00|0 notes 1") << "no amount";
    const std::string huge = Benefit("ServiceBenefit", "922337203685477.5");
    EXPECT_EQ(benefits(huge + "," + Benefit("EmployerProvidedServices", "922337203685477.5")), "140|-|0 notes 1")
        << "more than an amount can be";
    EXPECT_EQ(benefits(actual + "," + van + "," + total), "70|4200.00|0, 90|5.00|0 notes 1");
    EXPECT_EQ(benefits(Benefit("NonCashBenefit", "7") + "," + Benefit("NurseryPlaces", "8")), "170|15.00|0 notes 0");
}

TEST_F(NewSchedules, AreRefusedWhereAPersonWouldHaveToBeAsked)
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

TEST_F(NewSchedules, TellWhatHasNoBoxOfItsOwn)
{
    Sql("UPDATE BRIXClient SET strNINumber = 'AA000001A'");
    Fetch(Answer(
        R"({"employerPayeReference": "1/A", "employerName": "Firm", "taxTotal": 1, "offPayrollWorkFlag": true})",
        R"({"employerPayeReference": "3/C", "taxablePayTotal": 1})",
        R"({"benefitType": "UniversalCredit", "startDate": "2017-05-01", "taxablePayTotal": 9.5, "taxTotal": 2},)"
        R"({"benefitType": "JobseekersAllowance", "startDate": "2017-05-01", "taxablePayTotal": 3, "taxTotal": 1})",
        R"(, "statePension": {"grossAmount": 80, "lumpSum": {"taxablePayTotal": 90, "taxTotal": 4}},
                    "taxFreeAllowances": [{"allowanceType": "EarlierYearsAdjustment", "amount": 155}])"));
    Sql("INSERT INTO BRIXMTD_NIC (lID, lMTD_TaxYearID, bMaxNICsReached) SELECT 1, lID, 1 FROM BRIXMTD_TaxYear");
    std::string told;
    for (const CString& note : HmrcApi::NotesOf(HmrcApi::LoadStagedYear(m_client, kYear)))
        told += note.Str().substr(0, note.Str().find_first_of(':')) + note.Str().substr(note.Str().find_last_of(' ')) +
                '\n';
    EXPECT_EQ(told, "Firm (1/A) pay.\nFirm (1/A) it.\n3/C tax.\nState Pension (80.00) received.\n"
                    "State Pension lump sum (90.00, tax 4.00) return.\nUniversalCredit (9.50, tax 2.00) "
                    "belongs.\nJobseeker's Allowance own.\nEarlierYearsAdjustment (155.00) own.\n"
                    "National Insurance reached.\n");
    EXPECT_EQ(
        Query("SELECT nMTDType, strReference, amtAmount, amtTax FROM BRIXMTD_PensionStateBenefits WHERE nMTDType > 4"),
        "99|UniversalCredit|9.50|2.00");
    EXPECT_EQ(Create().pensionsAndBenefits, 4) << "none of the kind that is not known";
}
