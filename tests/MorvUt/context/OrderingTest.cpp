#include "MorvUt/context/Ordering.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/Case.h"
#include "support/Practice.h"

namespace
{

using namespace Brix;

/// Asks for two owners, of which the first has no rows and the second 7, 1 and 2.
template<class Owner, class Rows, class Answer>
void ExpectOneMoreThanTheHighest(Answer (*ask)(const Owner&), int ownerColumn, const char* name)
{
    const long bare = ::Test::Add<Owner>([](Owner&) {});
    const long owner = ::Test::Add<Owner>([](Owner&) {});
    for (const int number : {7, 1, 2})
        ::Test::Add<Rows>([&](Rows& row) {
            row.Set(ownerColumn, owner);
            row.SetOrdering(number);
        });
    Owner rows;
    rows.Open();
    rows.MoveToId(bare);
    EXPECT_EQ(ask(rows), 1) << name;
    rows.MoveToId(owner);
    EXPECT_EQ(ask(rows), 8) << name;
}

template<class Rows>
void ExpectOnForm(int (*ask)(const CTaxForm&), const char* name)
{
    ExpectOneMoreThanTheHighest<CTaxForm, Rows>(ask, Rows::kTaxFormID, name);
}

} // namespace

TEST(Ordering, OfEveryListIsOneMoreThanTheOwnersHighest)
{
    const ::Test::Practice practice;
    ExpectOneMoreThanTheHighest<CCGT, CCGTAcq>(&GetCGTAcqOrderingNumber, CCGTAcq::kCGTID, "acquisitions");
    ExpectOneMoreThanTheHighest<CEmployUKIncome, CEmployUKIncomeDetails>(
        &GetEmployUKImcomeDetailsOrderingNumber, CEmployUKIncomeDetails::kEmployUKIncomeID, "income details");
    ExpectOneMoreThanTheHighest<CJointIncomeSourceTaxYear, CNewInterest>(
        &GetNewInterestJointIncomeOrderingNumber, CNewInterest::kJointIncomeSourceTaxYearID, "joint interest");
    ExpectOneMoreThanTheHighest<CNewInterest, CNewInterestPayment>(
        &GetNewInterestPaymentOrderingNumber, CNewInterestPayment::kNewInterestID, "payments of interest");
    ExpectOneMoreThanTheHighest<CPlan, CPlanPayment>(&GetPensionContributionPaymentOrderingNumber,
                                                     CPlanPayment::kPlanID, "payments of plans");
    ExpectOneMoreThanTheHighest<CPensionStateBenefits, CPSBDetails>(
        &GetPensionStateBenefitDetailsOrderingNumber, CPSBDetails::kPensionStateBenefitsID, "benefit details");
    ExpectOnForm<CNewEmploy>(&GetNewEmployOrderingNumber, "employments");
    ExpectOnForm<CNewInterest>(&GetNewInterestOrderingNumber, "interest");
    ExpectOnForm<CNewInterestUT>(&GetNewInterestUTOrderingNumber, "unit trusts");
    ExpectOnForm<COtherOut>(&GetOtherOutgoingsOrderingNumber, "outgoings");
    ExpectOnForm<CPlan>(&GetPensionContributionsOrderingNumber, "plans");
    ExpectOnForm<CPensionStateBenefits>(&GetPensionStateBenefitsOrderingNumber, "benefits");
    ExpectOnForm<CPropUK>(&GetPropertyOrderingNumber, "properties");
}

TEST(Ordering, TakesNumbersAsOtherProgramsLeaveThem)
{
    constexpr int kMost = std::numeric_limits<int>::max();
    const ::Test::Case<std::vector<Cellar::Value>, int> cases[] = {
        {{1, 3}, 4, "a gap stays"},          {{5, 5}, 6, "a number twice"},
        {{nullptr}, 1, "no number is 0"},    {{-3}, -2, "below 0"},
        {{-3, nullptr}, 1, "0 is above -3"}, {{kMost - 1, 4}, kMost, "up to the last number"},
        {{kMost}, kMost, "which stays"},
    };
    const ::Test::Practice practice;
    for (const auto& row : cases) {
        CTaxForm form;
        form.AddNew();
        form.Update();
        for (const Cellar::Value& number : row.in)
            Quarry::GetConnection().Execute("INSERT INTO BRIXPropUK (lTaxFormID, nOrdering) VALUES (%ld, %ld)",
                                            {form.GetID(), number});
        int statements = 0;
        Quarry::GetConnection().OnSent([&](std::string_view) { ++statements; });
        EXPECT_EQ(GetPropertyOrderingNumber(form), row.out) << row.why;
        EXPECT_EQ(statements, 1) << row.why;
        Quarry::GetConnection().OnSent(nullptr);
    }
}
