// The rules that say what is what, without a fetch.

#include <iterator>
#include <sstream>

#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/hmrc/schedules/Matching.h"
#include "MorvUt/hmrc/schedules/StagedWords.h"
#include "MorvUt/hmrc/staging/Identity.h"
#include "MorvUt/hmrc/staging/Pairing.h"
#include "MorvUt/taxyear/DateRules.h"

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
    const ::Test::Practice practice;
    for (const auto& [type, mtdType, reference, stagedReference, date, stagedDate, isMatch, why] :
         ::Test::Table<int, int, const char*, const char*, long, long, bool>("MorvUt/hmrc/PayeRules.tsv")) {
        Brix::CPensionStateBenefits schedule;
        schedule.AddNew();
        schedule.SetType(type);
        schedule.SetReference(reference);
        schedule.SetStart(LongToCDate(date));
        Brix::CMTD_PensionStateBenefits staged;
        staged.AddNew();
        staged.SetMTDType(mtdType);
        staged.SetReference(stagedReference);
        staged.SetStart(LongToCDate(stagedDate));
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

TEST(IsClass1Final, NotWhileNothingWasEarnedBeforeSeptember)
{
    const Kiln::CDate august(2024, 8, 31), september(2024, 9, 1);
    for (const auto& [earnings, day, isFinal] : {std::tuple(Kiln::CAmt::kZero, august, false),
                                                 {Kiln::CAmt::kZero, september, true},
                                                 {Kiln::CAmt(1), august, true},
                                                 {Kiln::CAmt(), august, true}}) {
        HmrcApi::StagedNationalInsurance insurance;
        insurance.class1Earnings = earnings;
        EXPECT_EQ(HmrcApi::IsClass1Final(insurance, 2024, day), isFinal) << day.FormatIso().Str();
    }
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

std::vector<std::string> Words(const std::string& text)
{
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

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
    for (const auto& [ofHmrc, ofReturn, matches, why] :
         ::Test::Table<const char*, const char*, const char*>("MorvUt/hmrc/PayeRules.tsv")) {
        SCOPED_TRACE(why);
        HmrcApi::StagedYear staged;
        HmrcApi::ReturnYear own;
        const auto fill = [](auto& record, Kiln::CAmt& amount, bool& mark, const Item& item) {
            record.reference = "1/A";
            record.worksNumber = item.works;
            amount = item.pay;
            mark = item.isMarked;
        };
        for (const std::string& text : Words(ofHmrc)) {
            HmrcApi::StagedEmployment& employment = staged.employments.emplace_back();
            fill(employment, employment.pay, employment.isWithdrawn, Item(text));
            employment.key = "key " + std::to_string(staged.employments.size());
            HmrcApi::StagedPension& pension = staged.pensions.emplace_back();
            fill(pension, pension.amount, pension.isWithdrawn, Item(text));
            pension.kind = HmrcApi::kPrivatePension;
        }
        for (const std::string& text : Words(ofReturn)) {
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
