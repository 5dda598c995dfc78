#include "MorvUt/context/Ordering.h"

#include "support/Practice.h"

using namespace Brix;

/// Asks before an owner has rows, and when it has 7, 1 and 2, beside another owner's 50.
template<class Rows, class Owner, class Answer>
static void ExpectOneMore(Answer (*ask)(const Owner&), int ownerColumn = 1)
{
    Owner owner;
    owner.AddNew();
    EXPECT_EQ(ask(owner), 1) << Rows::Declaration().sqlName;
    for (const int number : {7, 1, 2, 50})
        ::Test::Add<Rows>([&](Rows& row) {
            row.Set(ownerColumn, number == 50 ? 4711 : owner.GetID());
            row.SetOrdering(number);
        });
    EXPECT_EQ(ask(owner), 8) << Rows::Declaration().sqlName;
}

using Ordering = ::Test::OnPractice;
ON_BOTH_DATABASES(Ordering);

TEST_P(Ordering, OfEveryListIsOneMoreThanTheOwnersHighest)
{
    ExpectOneMore<CCGTAcq>(&GetCGTAcqOrderingNumber, CCGTAcq::kCGTID);
    ExpectOneMore<CEmployUKIncomeDetails>(&GetEmployUKImcomeDetailsOrderingNumber);
    ExpectOneMore<CNewEmploy>(&GetNewEmployOrderingNumber);
    ExpectOneMore<CNewInterest>(&GetNewInterestJointIncomeOrderingNumber, CNewInterest::kJointIncomeSourceTaxYearID);
    ExpectOneMore<CNewInterest>(&GetNewInterestOrderingNumber);
    ExpectOneMore<CNewInterestPayment>(&GetNewInterestPaymentOrderingNumber);
    ExpectOneMore<CNewInterestUT>(&GetNewInterestUTOrderingNumber);
    ExpectOneMore<COtherOut>(&GetOtherOutgoingsOrderingNumber);
    ExpectOneMore<CPlanPayment>(&GetPensionContributionPaymentOrderingNumber, CPlanPayment::kPlanID);
    ExpectOneMore<CPlan>(&GetPensionContributionsOrderingNumber);
    ExpectOneMore<CPSBDetails>(&GetPensionStateBenefitDetailsOrderingNumber);
    ExpectOneMore<CPensionStateBenefits>(&GetPensionStateBenefitsOrderingNumber);
    ExpectOneMore<CPropUK>(&GetPropertyOrderingNumber);
}

TEST_P(Ordering, TakesNumbersAsOtherProgramsLeaveThem)
{
    const ::Test::Case<std::vector<Cellar::Value>, int> rows[] = {
        {{nullptr, -3}, 1, "no number is 0"},
        {{-3}, -2, "below 0"},
        {{2147483647}, 2147483647, "the last one stays"},
        {{9223372036854775807}, 2147483647, "beyond it"},
    };
    for (const auto& row : rows) {
        if (::Test::IsOnServer() && row.in[0] == Cellar::Value(9223372036854775807))
            continue; // its columns take 32 bits
        CTaxForm form;
        form.AddNew();
        for (const Cellar::Value& number : row.in)
            Quarry::GetConnection().Execute("INSERT INTO BRIXPropUK (lTaxFormID, nOrdering) VALUES (%ld, %I64d)",
                                            {form.GetID(), number});
        EXPECT_EQ(GetPropertyOrderingNumber(form), row.out) << row.why;
    }
}
