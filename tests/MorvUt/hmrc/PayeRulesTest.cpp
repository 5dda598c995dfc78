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
    const struct
    {
        int scheduleType, mtdType;
        const char *scheduleReference, *stagedReference;
        Kiln::CDate scheduleDate, stagedDate;
        bool isMatch;
        const char* why;
    } rows[] = {
        {1050, 1, "1/A", "1/A", {2017, 5, 1}, {2018, 1, 1}, true, "pension: reference alone"},
        {1040, 1, "1/A", "1/a", {}, {}, false, "case counts"},
        {1060, 1, "1/A", "1/A", {}, {}, false, "not a pension's type"},
        {1090, 2, "1/A", "2/B", {2017, 5, 1}, {2017, 5, 1}, true, "benefit: date alone"},
        {1090, 2, "1/A", "1/A", {2017, 5, 1}, {2017, 5, 2}, false, "another day"},
        {1140, 4, "", "", {}, {}, true, "two without a date"},
        {1140, 3, "", "", {2017, 5, 1}, {}, false, "one without a date"},
        {1140, 2, "", "", {2017, 5, 1}, {2017, 5, 1}, false, "another benefit"},
    };
    const ::Test::Practice practice;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
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
        EXPECT_EQ(CPAYEPrepop::PSBMatchesMTDPSB(schedule, staged), row.isMatch);
    }
}

TEST(CompanyBenefitsDiffers, ComparesCountTypeAmountAndForecast)
{
    using Benefits = std::vector<HmrcApi::CompanyBenefit_t>;
    const HmrcApi::CompanyBenefit_t car{"CarBenefit", 31, Kiln::CAmt::FromPence(4400), false};
    const HmrcApi::CompanyBenefit_t fuel{"CarFuelBenefit", 29, Kiln::CAmt(), true};
    const HmrcApi::CompanyBenefit_t unknown{"YachtBenefit", 0, Kiln::CAmt::FromPence(1), false};
    const auto with = [](HmrcApi::CompanyBenefit_t benefit, const Kiln::CAmt& amount, bool isForecast) {
        benefit.amount = amount;
        benefit.isForecastBenefit = isForecast;
        return benefit;
    };
    const struct
    {
        Benefits stored, sent;
        bool differs;
        const char* why;
    } rows[] = {
        {{}, {}, false, "none on either side"},
        {{car}, {car, fuel}, true, "one more sent"},
        {{car, fuel}, {car, unknown}, true, "another type"},
        {{car}, {with(car, Kiln::CAmt::FromPence(4401), false)}, true, "a penny"},
        {{car}, {with(car, car.amount, true)}, true, "now a forecast"},
        {{fuel}, {with(fuel, Kiln::CAmt::kZero, true)}, true, "absent is not zero"},
        {{unknown}, {{"ZooBenefit", 0, unknown.amount, false}}, true, "unknown types differ by name"},
        {{car, with(car, Kiln::CAmt::FromPence(5), false)},
         {car, with(car, Kiln::CAmt::FromPence(5), false)},
         true,
         "a second of one type is compared with the first: looked at again, never overlooked"},
    };
    const ::Test::Practice practice;
    long employment = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        ++employment;
        Brix::CMTD_EmploymentsCompanyBenefits list;
        list.Open({{list.kMTD_EmploymentsID, employment}});
        for (const auto& benefit : row.stored) {
            list.AddNew();
            list.SetBenefitType(benefit.benefitNumber);
            list.SetBenefitTypeName(benefit.benefitType);
            list.SetAmount(benefit.amount);
            list.SetForecast(benefit.isForecastBenefit);
        }
        EXPECT_EQ(CPAYEPrepop::CompanyBenefitsDiffers(list, row.sent), row.differs);
    }
}

TEST(CompanyBenefitsDiffers, LeavesOutWithdrawnRows)
{
    const ::Test::Practice practice;
    Brix::CMTD_EmploymentsCompanyBenefits list;
    list.AddNew();
    list.SetBenefitType(31);
    list.SetWithdrawn(true);
    EXPECT_FALSE(CPAYEPrepop::CompanyBenefitsDiffers(list, {}));
    EXPECT_TRUE(CPAYEPrepop::CompanyBenefitsDiffers(list, {{"CarBenefit", 31, {}, false}}));
}

TEST(TaxFreeAllowances, HaveAValueWhenItIsThereAndNotNothing)
{
    const ::Test::Practice practice;
    Brix::CMTD_TaxFreeAllowances list;
    EXPECT_FALSE(CPAYEPrepop::MTD_TaxFreeAllowancesHasValue(list)) << "no row";
    list.AddNew();
    EXPECT_FALSE(CPAYEPrepop::MTD_TaxFreeAllowancesHasValue(list)) << "no amount";
    list.SetAmount(Kiln::CAmt::kZero);
    EXPECT_FALSE(CPAYEPrepop::MTD_TaxFreeAllowancesHasValue(list)) << "0";
    list.SetAmount(Kiln::CAmt::FromPence(-1));
    EXPECT_TRUE(CPAYEPrepop::MTD_TaxFreeAllowancesHasValue(list)) << "a penny the other way";
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
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(HmrcApi::StagingKeys(row.in), row.out);
    }
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
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(HmrcApi::ScheduleKeys(row.schedules, row.keys), row.found);
    }
}
