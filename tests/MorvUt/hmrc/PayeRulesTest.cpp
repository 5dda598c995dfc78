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

namespace
{

std::vector<std::string> Words(const std::string& text)
{
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

/// "Car=1": one of a penny; "?" behind it for a forecast.
HmrcApi::CompanyBenefit_t BenefitOf(const std::string& text)
{
    const std::size_t at = text.find('=') + 1;
    const std::string name = text.substr(0, at - 1) + "Benefit";
    const bool hasAmount = at < text.size();
    return {name, HmrcApi::BenefitNumber(name),
            hasAmount ? Kiln::CAmt::FromPence(std::stoi(text.substr(at))) : Kiln::CAmt(), text.back() == '?'};
}

} // namespace

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
    const ::Test::Practice practice;
    // what is stored, "!" behind what is withdrawn; what is sent; whether they differ
    for (const auto& [stored, sent, differs, why] :
         ::Test::Table<const char*, const char*, bool>("MorvUt/hmrc/PayeRules.tsv")) {
        Brix::CMTD_EmploymentsCompanyBenefits list;
        for (const std::string& text : Words(stored)) {
            const HmrcApi::CompanyBenefit_t benefit = BenefitOf(text);
            list.AddNew();
            list.SetBenefitType(benefit.benefitNumber);
            list.SetBenefitTypeName(benefit.benefitType);
            list.SetAmount(benefit.amount);
            list.SetForecast(benefit.isForecastBenefit);
            list.SetWithdrawn(text.back() == '!');
        }
        std::vector<HmrcApi::CompanyBenefit_t> answer;
        for (const std::string& text : Words(sent))
            answer.push_back(BenefitOf(text));
        EXPECT_EQ(CPAYEPrepop::CompanyBenefitsDiffers(list, answer), differs) << why;
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
    for (const auto& [ofHmrc, expected, why] : ::Test::Table<const char*, const char*>("MorvUt/hmrc/PayeRules.tsv")) {
        std::vector<HmrcApi::StagedEmployment> items, none;
        std::istringstream list(ofHmrc);
        for (std::string text; std::getline(list, text, ',');) {
            items.emplace_back().reference = text.substr(0, text.find('|'));
            items.back().worksNumber = text.substr(text.find('|') + 1);
        }
        HmrcApi::SetKeys(items, none, std::vector<int>(items.size(), HmrcApi::kNoRow));
        std::string keys;
        for (const auto& item : items)
            keys += (keys.empty() ? "" : ",") + item.key;
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
