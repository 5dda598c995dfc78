// The rules that say what is what, without a fetch.

#include <gtest/gtest.h>

#include "MorvUt/hmrc/detail/StagingKeys.h"
#include "MorvUt/hmrc/HmrcTest.h"
#include "support/Case.h"

using HmrcApi::CPAYEPrepop;

TEST(PsbTypes, ComeFromHmrcsBenefitTypes)
{
    for (const auto& [benefit, type] : {std::pair(0, 2), {1, 3}, {2, 4}, {3, 0}, {-1, 0}, {99, 0}}) {
        EXPECT_EQ(CPAYEPrepop::MapTSSBBenefitTypeToMTD_PSBType(benefit), type) << benefit;
        EXPECT_EQ(CPAYEPrepop::IsTaxableSocialSecurityBenefit(type), type != 0) << type;
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
    using HmrcApi::CompanyBenefit_t;
    const Kiln::CAmt penny = Kiln::CAmt::FromPence(1);
    const CompanyBenefit_t car{"CarBenefit", 31, penny, false}, dearer{"CarBenefit", 31, penny + penny, false},
        forecast{"CarBenefit", 31, penny, true}, free{"CarBenefit", 31, Kiln::CAmt::kZero, false},
        open{"CarBenefit", 31, Kiln::CAmt(), false}, van{"VanBenefit", 35, penny, false},
        yacht{"YachtBenefit", 0, penny, false}, zoo{"ZooBenefit", 0, penny, false};
    const struct
    {
        std::vector<CompanyBenefit_t> stored, sent;
        bool differs;
        const char* why;
        bool isWithdrawn = false;
    } rows[] = {
        {{}, {}, false, "none on either side"},
        {{car, van}, {van, car}, false, "another order"},
        {{car}, {car, van}, true, "one more sent"},
        {{car, van}, {car, yacht}, true, "another type"},
        {{car}, {dearer}, true, "a penny"},
        {{car}, {forecast}, true, "now a forecast"},
        {{open}, {free}, true, "absent is not zero"},
        {{yacht}, {zoo}, true, "unknown types differ by name"},
        {{car, dearer}, {car, dearer}, true, "a second of one type is looked at again, never overlooked"},
        {{car}, {}, false, "withdrawn", true},
        {{car}, {car}, true, "withdrawn, and sent again", true},
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

TEST(StagingKeys, TellItemsApartAndFindTheStagedRowOfEachSchedule)
{
    const struct
    {
        std::vector<HmrcApi::PayeIdentity> items;
        std::set<std::string> staged; // keys; empty: the items are one answer's
        std::vector<std::string> keys;
        const char* why;
    } rows[] = {
        {{{"1/A", "W1"}, {"2/B", "W1"}, {"1/A", "W2"}}, {}, {"1/A W1", "2/B", "1/A W2"}, "one reference twice"},
        {{{"1/A", "#2"}, {"1/A", ""}, {"1/A", ""}}, {}, {"1/A #2", "1/A #3", "1/A #4"}, "a works number like ours"},
        {{{"1/A", "W"}, {"1/a", "W"}}, {}, {"1/A", "1/a"}, "case counts"},
        {{{"", ""}, {"", ""}}, {}, {" #2", " #3"}, "without any reference"},
        {{{"1/A", "W1"}, {"1/A", "W2"}}, {"1/A", "1/A W2"}, {"1/A", "1/A W2"}, "one of them withdrawn"},
        {{{"1/A", "W9"}}, {"1/A"}, {"1/A"}, "a works number that HMRC has changed"},
        {{{"1/A #2", ""}}, {"1/A #2"}, {"1/A #2"}, "a reference typed like the key"},
        {{{"9/Z", "W1"}}, {"1/A"}, {"9/Z W1"}, "not HMRC's"},
        {{{"1/a", "W1"}}, {"1/A"}, {"1/a W1"}, "case counts for schedules too"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.staged.empty() ? HmrcApi::StagingKeys(row.items) : HmrcApi::ScheduleKeys(row.items, row.staged),
                  row.keys)
            << row.why;
}
