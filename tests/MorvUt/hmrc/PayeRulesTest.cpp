// The rules that say what is what, without a fetch.

#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/hmrc/schedules/Matching.h"
#include "MorvUt/hmrc/staging/Identity.h"
#include "MorvUt/hmrc/staging/Pairing.h"

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

TEST(PsbTypes, MatchTheTypesOfTheReturnInFivePairs)
{
    std::string pairs;
    for (const long mtdType : {0, 1, 2, 3, 4, 5, 99})
        for (long type = 0; type <= 2000; ++type)
            if (CPAYEPrepop::DoPSBTypeAndMTD_PSBTypeMatch(type, mtdType))
                pairs += std::to_string(type) + '/' + std::to_string(mtdType) + ' ';
    EXPECT_EQ(pairs, "1040/1 1050/1 1090/2 1140/3 1140/4 ");
}

TEST(PSBMatchesMTDPSB, ComparesReferencesOfPensionsAndDatesOfBenefits)
{
    const Kiln::CDate none, may(2017, 5, 1), nextDay(2017, 5, 2);
    const ::Test::Row<int, int, const char*, const char*, Kiln::CDate, Kiln::CDate, bool> rows[] = {
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
    for (const auto& [type, mtdType, reference, stagedReference, date, stagedDate, isMatch, why] : rows) {
        Brix::CPensionStateBenefits schedule;
        schedule.AddNew();
        schedule.SetType(type);
        schedule.SetReference(reference);
        schedule.SetStart(date);
        Brix::CMTD_PensionStateBenefits staged;
        staged.AddNew();
        staged.SetMTDType(mtdType);
        staged.SetReference(stagedReference);
        staged.SetStart(stagedDate);
        EXPECT_EQ(CPAYEPrepop::PSBMatchesMTDPSB(schedule, staged), isMatch) << why;
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

TEST(SetKeys, TellsItemsApart)
{
    // references with works numbers, keys
    const ::Test::Row<std::vector<std::pair<const char*, const char*>>, std::vector<std::string>> rows[] = {
        {{{"1/A", "W1"}, {"2/B", "W1"}, {"1/A", "W2"}}, {"1/A W1", "2/B", "1/A W2"}, "one reference twice"},
        {{{"1/A", "#2"}, {"1/A", ""}, {"1/A", ""}}, {"1/A #2", "1/A #3", "1/A #4"}, "a works number like ours"},
        {{{"1/A W1", ""}, {"1/A", "W1"}, {"1/A", "W2"}}, {"1/A W1", "1/A W1 #2", "1/A W2"}, "a reference like ours"},
        {{{"1/A", "W"}, {"1/a", "W"}}, {"1/A", "1/a"}, "case counts"},
        {{{"", ""}, {"", ""}}, {" #2", " #3"}, "without any reference"},
    };
    for (const auto& [ofHmrc, expected, why] : rows) {
        std::vector<HmrcApi::StagedEmployment> items, none;
        for (const auto& [reference, works] : ofHmrc) {
            items.emplace_back().reference = reference;
            items.back().worksNumber = works;
        }
        HmrcApi::SetKeys(items, none, std::vector<int>(items.size(), HmrcApi::kNoRow));
        std::vector<std::string> keys;
        for (const auto& item : items)
            keys.push_back(item.key);
        EXPECT_EQ(keys, expected) << why;
    }
}

namespace
{

/// "W1=100", pounds of pay; "!" before one that HMRC withdrew, "~" before a schedule that was made from HMRC's records.
struct Item
{
    explicit Item(std::string text) : isMarked(text[0] == '!' || text[0] == '~')
    {
        text.erase(0, isMarked ? 1 : 0);
        works = text.substr(0, text.find('='));
        pay = Kiln::CAmt(10'000LL * std::stoi(text.substr(text.find('=') + 1)));
    }
    bool isMarked;
    std::string works;
    Kiln::CAmt pay;
};

/// The state of each match, with its schedule: "1 n a2 -" is matched, new, ambiguous, ignored.
std::string Show(const std::vector<HmrcApi::Match>& matches)
{
    std::string text;
    for (const HmrcApi::Match& match : matches) {
        text += text.empty() ? "" : " ";
        text += "-=satn"[static_cast<int>(match.state)];
        text += match.schedule == HmrcApi::kNoSchedule ? "" : std::to_string(match.schedule);
    }
    return text;
}

} // namespace

TEST(Matching, FindsTheScheduleOfEachPeriodWithAnEmployer)
{
    // staged and own ones of one reference; the matches of employments as of pensions
    const ::Test::Row<std::vector<const char*>, std::vector<const char*>, const char*> rows[] = {
        {{"W1=1"}, {"=1"}, "=0", "one of a reference is known by it alone"},
        {{"W1=1"}, {"W9=1", "W1=1"}, "=1", "the one with the works number before another"},
        {{"W9=1"}, {"W1=1"}, "=0", "a works number that HMRC has changed"},
        {{"W9=5"}, {"W1=1", "=5"}, "=1", "the bare one before another works number"},
        {{"W9=5"}, {"W1=1", "W2=5"}, "=1", "of two others the one with the figures"},
        {{"W1=1", "W2=2"}, {"W2=2"}, "n =0", "a second period"},
        {{"W1=1", "W2=2"}, {"=3"}, "a0 a0", "typed without a works number: it may be either, or both"},
        {{"W1=1", "W2=2"}, {"=1", "W1=1", "W2=2"}, "=1 =2", "each has its own, whatever else there is"},
        {{"W1=1", "W2=2"}, {"W1=1", "=2"}, "=0 a1", "the other may be the bare one"},
        {{"W2=2", "!W1=1"}, {"W1=1"}, "n -", "another period's, which HMRC no longer sends"},
        {{"=1", "=2"}, {"=2", "=1"}, "=1 =0", "as many without a number: by their figures"},
        {{"=1", "=2"}, {"=3", "=4"}, "=0 =1", "then in order"},
        {{"=1", "=2"}, {"=2"}, "a0 a0", "fewer without a number, typed"},
        {{"=1", "=2"}, {"~=2"}, "n =0", "made from HMRC's record"},
        {{"W1=1", "=2"}, {"W1=1"}, "=0 n", "one of them without a number"},
        {{"=1", "W1=2"}, {"=2"}, "a0 a0", "typed without a number, which may be either"},
        {{"W9=1", "W2=2"}, {"~W1=1", "~W2=2"}, "=0 =1", "made from HMRC's record, which has another number now"},
        {{"W9=1", "W2=2"}, {"W1=1", "W2=2"}, "n =1", "typed, with another number"},
    };
    for (const auto& [ofHmrc, ofReturn, matches, why] : rows) {
        SCOPED_TRACE(why);
        HmrcApi::StagedYear staged;
        HmrcApi::ReturnYear own;
        const auto fill = [](auto& record, Kiln::CAmt& amount, bool& mark, const Item& item) {
            record.reference = "1/A";
            record.worksNumber = item.works;
            amount = item.pay;
            mark = item.isMarked;
        };
        for (const char* text : ofHmrc) {
            HmrcApi::StagedEmployment& employment = staged.employments.emplace_back();
            fill(employment, employment.pay, employment.isWithdrawn, Item(text));
            employment.key = "key " + std::to_string(staged.employments.size());
            HmrcApi::StagedPension& pension = staged.pensions.emplace_back();
            fill(pension, pension.amount, pension.isWithdrawn, Item(text));
            pension.kind = HmrcApi::kPrivatePension;
        }
        for (const char* text : ofReturn) {
            HmrcApi::ReturnEmployment& employment = own.employments.emplace_back();
            fill(employment, employment.pay, employment.isFromHmrc, Item(text));
            HmrcApi::ReturnPension& pension = own.pensions.emplace_back();
            fill(pension, pension.amount, pension.isFromHmrc, Item(text));
            pension.type = 1050;
        }
        EXPECT_EQ(Show(MatchEmployments(staged, own)), matches);
        EXPECT_EQ(Show(MatchPensions(staged, own)), matches);
    }
}

TEST(Matching, FindsSchedulesByTheirText)
{
    HmrcApi::StagedYear staged;
    for (const auto& [key, works] : {std::pair("1/A W1", "W1"), {"1/A W2", "W2"}, {"1/a", "W3"}, {"1/A W1", "W1"}}) {
        HmrcApi::StagedEmployment& item = staged.employments.emplace_back();
        item.key = key;
        item.reference = std::string(key).substr(0, 3);
        item.worksNumber = works;
    }
    HmrcApi::ReturnYear own;
    for (const char* reference : {"1/A W2", "9/Z", "1/A w1"})
        own.employments.emplace_back().reference = reference;
    EXPECT_EQ(Show(MatchEmployments(staged, own)), "n =0 n -")
        << "typed like the key; case counts; a key twice counts once";
}
