// The rules that say what is what, without a fetch.

#include <gtest/gtest.h>

#include "MorvUt/hmrc/detail/StagingKeys.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "support/Case.h"

using HmrcApi::CPAYEPrepop;

TEST(PsbTypes, ComeFromHmrcsBenefitTypes)
{
    const ::Test::Case<int, int> rows[] = {{0, 2}, {1, 3}, {2, 4}, {3, 0}, {-1, 0}, {99, 0}};
    for (const auto& row : rows) {
        const auto type = CPAYEPrepop::MapTSSBBenefitTypeToMTD_PSBType(row.in);
        EXPECT_EQ(type, row.out) << row.in;
        EXPECT_EQ(CPAYEPrepop::IsTaxableSocialSecurityBenefit(type), row.out != 0) << row.in;
    }
    for (const long type : {0, 1, 2, 3, 4, 5})
        EXPECT_EQ(CPAYEPrepop::IsPrivatePension(type), type == 1) << type;
}

TEST(PSBMatchesMTDPSB, ComparesReferencesOfPensionsAndDatesOfBenefits)
{
    const Kiln::CDate none, may(2017, 5, 1), nextDay(2017, 5, 2);
    const struct
    {
        int scheduleType, mtdType;
        const char *scheduleReference, *stagedReference;
        Kiln::CDate scheduleDate, stagedDate;
        bool isMatch;
        const char* why;
    } rows[] = {
        {1050, 1, "1/A", "1/A", may, nextDay, true, "pension: reference alone"},
        {1040, 1, "1/A", "1/A", none, none, true, "pension of the other type"},
        {1040, 1, "1/A", "1/a", none, none, false, "case counts"},
        {1060, 1, "1/A", "1/A", none, none, false, "not a pension's type"},
        {1090, 2, "1/A", "2/B", may, may, true, "benefit: date alone"},
        {1090, 2, "1/A", "1/A", may, nextDay, false, "another day"},
        {1140, 4, "", "", none, none, true, "two without a date"},
        {1140, 3, "", "", may, none, false, "one without a date"},
        {1140, 2, "", "", may, may, false, "another benefit"},
    };
    const ::Test::Practice practice;
    for (const auto& row : rows) {
        Brix::CPensionStateBenefits schedule;
        schedule.AddNew();
        schedule.SetType(row.scheduleType);
        schedule.SetReference(row.scheduleReference);
        schedule.SetStart(row.scheduleDate);
        Brix::CMTD_PensionStateBenefits staged;
        staged.AddNew();
        staged.SetMTDType(row.mtdType);
        staged.SetReference(row.stagedReference);
        staged.SetStart(row.stagedDate);
        EXPECT_EQ(CPAYEPrepop::PSBMatchesMTDPSB(schedule, staged), row.isMatch) << row.why;
    }
}

TEST(CompanyBenefitsDiffers, ComparesCountTypeAmountAndForecast)
{
    using Benefits = std::vector<HmrcApi::CompanyBenefit_t>;
    const auto car = [](int pence, bool isForecast = false) {
        return HmrcApi::CompanyBenefit_t{"CarBenefit", 31, Kiln::CAmt::FromPence(pence), isForecast};
    };
    const auto unknown = [](const char* name) {
        return HmrcApi::CompanyBenefit_t{name, 0, Kiln::CAmt::FromPence(1), false};
    };
    const HmrcApi::CompanyBenefit_t fuel{"CarFuelBenefit", 29, Kiln::CAmt(), true};
    const HmrcApi::CompanyBenefit_t zeroFuel{"CarFuelBenefit", 29, Kiln::CAmt::kZero, true};
    const struct
    {
        Benefits stored, sent;
        bool differs;
        const char* why;
        bool isWithdrawn = false;
    } rows[] = {
        {{}, {}, false, "none on either side"},
        {{car(44)}, {car(44), fuel}, true, "one more sent"},
        {{car(44), fuel}, {car(44), unknown("YachtBenefit")}, true, "another type"},
        {{car(44)}, {car(45)}, true, "a penny"},
        {{car(44)}, {car(44, true)}, true, "now a forecast"},
        {{fuel}, {zeroFuel}, true, "absent is not zero"},
        {{unknown("YachtBenefit")}, {unknown("ZooBenefit")}, true, "unknown types differ by name"},
        // A second of one type is compared with the first.
        {{car(44), car(5)}, {car(44), car(5)}, true, "looked at again, never overlooked"},
        {{car(44)}, {}, false, "withdrawn", true},
        {{car(44)}, {car(44)}, true, "withdrawn, and sent again", true},
    };
    const ::Test::Practice practice;
    for (const auto& row : rows) {
        Brix::CMTD_EmploymentsCompanyBenefits list;
        for (const auto& benefit : row.stored) {
            list.AddNew();
            list.SetBenefitType(benefit.benefitNumber);
            list.SetBenefitTypeName(benefit.benefitType);
            list.SetAmount(benefit.amount);
            list.SetForecast(benefit.isForecastBenefit);
            list.SetWithdrawn(row.isWithdrawn);
        }
        EXPECT_EQ(CPAYEPrepop::CompanyBenefitsDiffers(list, row.sent), row.differs) << row.why;
    }
}

TEST(TaxFreeAllowances, BelongToTheFirstEmployment)
{
    const ::Test::Practice practice;
    Brix::CNewEmploy list;
    EXPECT_FALSE(CPAYEPrepop::Match_MTD_TaxFreeAllowancesToEmployment(list));
    for (const int ordering : {3, 1, 2}) {
        list.AddNew();
        list.SetOrdering(ordering);
    }
    EXPECT_TRUE(CPAYEPrepop::Match_MTD_TaxFreeAllowancesToEmployment(list));
    EXPECT_EQ(list.GetOrdering(), 1);
}

TEST(StagingKeys, TellOneAnswersItemsApart)
{
    const ::Test::Case<std::vector<HmrcApi::PayeIdentity>, std::vector<std::string>> rows[] = {
        {{{"1/A", "W1"}, {"2/B", "W1"}, {"1/A", "W2"}}, {"1/A W1", "2/B", "1/A W2"}, "one reference twice"},
        {{{"1/A", "#2"}, {"1/A", ""}, {"1/A", ""}}, {"1/A #2", "1/A #3", "1/A #4"}, "a works number like ours"},
        {{{"1/A", "W"}, {"1/a", "W"}}, {"1/A", "1/a"}, "case counts"},
        {{{"", ""}, {"", ""}}, {" #2", " #3"}, "without any reference"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(HmrcApi::StagingKeys(row.in), row.out) << row.why;
}

TEST(ScheduleKeys, FindTheStagedRowOfEachSchedule)
{
    const struct
    {
        std::vector<HmrcApi::PayeIdentity> schedules;
        std::set<std::string> keys;
        std::vector<std::string> found;
        const char* why;
    } rows[] = {
        {{{"1/A", "W1"}, {"1/A", "W2"}}, {"1/A", "1/A W2"}, {"1/A", "1/A W2"}, "one of them withdrawn"},
        {{{"1/A", "W9"}}, {"1/A"}, {"1/A"}, "a works number that HMRC has changed"},
        {{{"1/A #2", ""}}, {"1/A #2"}, {"1/A #2"}, "a reference typed like the key"},
        {{{"9/Z", "W1"}}, {"1/A"}, {"9/Z W1"}, "not HMRC's"},
        {{{"1/a", "W1"}}, {"1/A"}, {"1/a W1"}, "case counts"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(HmrcApi::ScheduleKeys(row.schedules, row.keys), row.found) << row.why;
}
