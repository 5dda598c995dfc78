#include <string>

#include "fuzz/JsonText.h"
#include "fuzz/Targets.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/json/ExactAmount.h"
#include "HmrcApi/json/Json.h"
#include "HmrcApi/records/Responses.h"

namespace Fuzz
{
namespace
{

using HmrcApi::JsonValue;

void CheckNumbers(const JsonValue& value)
{
    if (value.Is(JsonValue::Kind::Number))
        if (const auto exact = HmrcApi::ExactTenThousandths(value.text)) {
            const CString text = Kiln::CAmt(*exact).Format();
            Require(HmrcApi::ExactTenThousandths(text.View()) == exact, "an exact amount comes back from its text");
        }
    for (const JsonValue& item : value.items)
        CheckNumbers(item);
}

void Check(const Kiln::CAmt& amount)
{
    Require(amount.IsValid() || amount.IsNull(), "an amount that is read is exact or absent");
}

template<class Paid>
void CheckPaid(const Paid& item)
{
    for (const Kiln::CDate& date : {item.startDate, item.endDate})
        Require(date.IsValid() || date.IsNull(), "a date that is read is a day or absent");
    Check(item.taxablePayTotal);
    Check(item.taxTotal);
}

void CheckPaye(std::string_view json)
{
    const HmrcApi::CPayeResponse answer = HmrcApi::ReadPayeResponse(json);
    for (int i = 0; i <= answer.GetEmploymentUpperBound(); ++i) {
        const auto item = answer.GetEmploymentAt(i);
        Require(!item->employerPayeReference.empty(), "an employment has its reference");
        CheckPaid(*item);
        Check(item->studentLoan);
        for (const auto& benefit : item->companyBenefits) {
            Require(!benefit.benefitType.empty(), "a benefit has its type");
            Check(benefit.amount);
        }
    }
    for (int i = 0; i <= answer.GetPrivatePensionUpperBound(); ++i)
        CheckPaid(*answer.GetPrivatePensionAt(i));
    for (int i = 0; i <= answer.GetTaxableSocialSecurityBenefitUpperBound(); ++i)
        CheckPaid(*answer.GetTaxableSocialSecurityBenefitAt(i));
    for (int i = 0; i <= answer.GetTaxFreeAllowanceUpperBound(); ++i)
        Check(answer.GetTaxFreeAllowanceAt(i)->amount);
    if (const auto pension = answer.getStatePension()) {
        Check(pension->grossAmount);
        if (pension->lumpSum)
            CheckPaid(*pension->lumpSum);
    }
}

void CheckNationalInsurance(std::string_view json)
{
    const HmrcApi::CNationalInsuranceResponse answer = HmrcApi::ReadNationalInsuranceResponse(json);
    Check(answer.class1NicableEarnings);
    Check(answer.class2Due);
}

/// True when the answer is accepted.
template<class Read>
bool IsAccepted(Read read, std::string_view json)
{
    try {
        read(json);
        return true;
    } catch (const HmrcApi::HmrcApiErrorException& refusal) {
        Require(refusal.GetCode() == "ANSWER_MALFORMED" || refusal.GetCode() == "AMOUNT_NOT_EXACT",
                "an answer is refused by one of two codes");
        return false;
    }
}

} // namespace

void JsonAnswer(std::string_view input)
{
    const bool isPaye = IsAccepted(CheckPaye, input);
    const bool isNationalInsurance = IsAccepted(CheckNationalInsurance, input);
    HmrcApi::JsonProblem problem;
    const auto value = HmrcApi::ParseJson(input, &problem);
    Require(value.has_value() == problem.text.empty(), "a reason is given exactly for what is refused");
    if (!value) {
        Require(!isPaye && !isNationalInsurance, "what is no JSON is no answer");
        return;
    }
    CheckNumbers(*value);
    Require(HmrcApi::ParseJson(WriteJson(*value)) == value, "the value comes back from its text");
}

} // namespace Fuzz
