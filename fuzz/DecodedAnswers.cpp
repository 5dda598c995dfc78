// Each of HMRC's answers, decoded: nothing is read that was not sent, and neither order nor unknown members decide what
// is. That each figure comes from its own place, the tests of what is staged show.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "fuzz/JsonText.h"
#include "fuzz/Targets.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/json/ExactAmount.h"
#include "HmrcApi/json/Json.h"
#include "HmrcApi/records/Responses.h"
#include "HmrcApi/records/Summaries.h"

namespace Fuzz
{
namespace
{

using HmrcApi::JsonValue;
using Kind = HmrcApi::JsonValue::Kind;

/// What was read, told as text, so that two readings can be compared; none of it but was sent.
class Reading
{
public:
    explicit Reading(const JsonValue& sent) { Collect(sent); }

    template<class... Values>
    void Tell(const Values&... values)
    {
        (Add(values), ...);
    }
    const std::string& Told() const noexcept { return m_told; }

private:
    void Collect(const JsonValue& value)
    {
        m_texts.insert(value.text);
        m_texts.insert(value.names.begin(), value.names.end()); // the sums of benefits are known by them
        if (const auto exact = value.Is(Kind::Number) ? HmrcApi::ExactTenThousandths(value.text) : std::nullopt)
            m_amounts.insert(*exact);
        for (const JsonValue& item : value.items)
            Collect(item);
    }
    void Add(const std::string& text)
    {
        Require(text.empty() || m_texts.contains(text), "a text is one that was sent, or absent");
        m_told += text + '\n';
    }
    void Add(const Kiln::CAmt& amount)
    {
        Require(amount.IsNull() || (amount.IsValid() && m_amounts.contains(amount.GetValue())),
                "an amount is one that was sent, to the last digit, or absent");
        m_told += amount.Format().Str() + '\n';
    }
    void Add(const Kiln::CDate& date)
    {
        Require(date.IsNull() || date.IsValid(), "a date is a day or absent");
        m_told += date.FormatIso().Str() + '\n';
    }
    void Add(const std::optional<bool>& flag) { m_told += flag ? *flag ? "yes\n" : "no\n" : "\n"; }

    std::set<std::string> m_texts;
    std::set<std::int64_t> m_amounts;
    std::string m_told;
};

constexpr char kUnknown[] = "unknownHere";

/// The same values, the members of each object in the other order, with one more that nobody knows.
JsonValue Reordered(JsonValue value)
{
    for (JsonValue& item : value.items)
        item = Reordered(std::move(item));
    if (!value.Is(Kind::Object))
        return value;
    std::reverse(value.items.begin(), value.items.end());
    std::reverse(value.names.begin(), value.names.end());
    if (std::find(value.names.begin(), value.names.end(), kUnknown) != value.names.end())
        return value;
    value.items.push_back(HmrcApi::ParseJson("1e999").value());
    value.names.emplace_back(kUnknown);
    return value;
}

std::size_t CountValues(const JsonValue& value)
{
    std::size_t count = 1;
    for (const JsonValue& item : value.items)
        count += CountValues(item);
    return count;
}

/// What a decoder makes of a text: what it read, or the code of its refusal.
template<class Read, class Tell>
std::string Outcome(std::string_view json, Read read, Tell tell)
{
    try {
        const auto response = read(json);
        const std::optional<JsonValue> root = HmrcApi::ParseJson(json);
        Require(root && root->Is(Kind::Object), "an answer is a JSON object");
        Reading reading(*root);
        tell(reading, response);
        return reading.Told();
    } catch (const HmrcApi::HmrcApiErrorException& refusal) {
        Require(refusal.GetCode() == "ANSWER_MALFORMED" || refusal.GetCode() == "AMOUNT_NOT_EXACT",
                "an answer is refused by one of two codes");
        Require(!refusal.GetText().empty() && refusal.GetStatus().empty(), "a refusal says why, and of no request");
        return refusal.GetCode();
    }
}

/// `tell(reading, response)` tells all that a response holds.
template<class Read, class Tell>
void CheckDecoder(std::string_view input, Read read, Tell tell)
{
    constexpr std::size_t kMost = HmrcApi::kJsonValues / 8; // the further members must not lead beyond the bound
    const std::string outcome = Outcome(input, read, tell);
    const std::optional<JsonValue> root = HmrcApi::ParseJson(input);
    Require(root || outcome == "ANSWER_MALFORMED", "what is no JSON is no answer");
    if (root && CountValues(*root) < kMost)
        Require(Outcome(WriteJson(Reordered(*root)), read, tell) == outcome,
                "order and unknown members change nothing");
}

void TellPaid(Reading& reading, const auto& paid)
{
    reading.Tell(paid.startDate, paid.endDate, paid.taxablePayTotal, paid.taxTotal);
}

void TellPayer(Reading& reading, const auto& payer)
{
    Require(!payer.employerPayeReference.empty(), "who pays has a reference");
    reading.Tell(payer.employerPayeReference, payer.employerName, payer.worksNumber);
    TellPaid(reading, payer);
}

void TellEmployment(Reading& reading, const HmrcApi::Employment_t& employment)
{
    TellPayer(reading, employment);
    reading.Tell(employment.studentLoan, employment.offPayrollWorkFlag);
    for (const HmrcApi::CompanyBenefit_t& benefit : employment.companyBenefits) {
        Require(benefit.benefitNumber == HmrcApi::BenefitNumber(benefit.benefitType), "a benefit has its number");
        reading.Tell(benefit.benefitType, benefit.amount, std::optional(benefit.isForecastBenefit));
    }
}

void TellPaye(Reading& reading, const HmrcApi::CPayeResponse& read)
{
    for (int i = 0; i <= read.GetEmploymentUpperBound(); ++i)
        TellEmployment(reading, *read.GetEmploymentAt(i));
    for (int i = 0; i <= read.GetPrivatePensionUpperBound(); ++i)
        TellPayer(reading, *read.GetPrivatePensionAt(i));
    for (int i = 0; i <= read.GetTaxableSocialSecurityBenefitUpperBound(); ++i) {
        const auto benefit = read.GetTaxableSocialSecurityBenefitAt(i);
        reading.Tell(benefit->benefitTypeName, benefit->employerPayeReference);
        TellPaid(reading, *benefit);
    }
    for (int i = 0; i <= read.GetTaxFreeAllowanceUpperBound(); ++i)
        reading.Tell(read.GetTaxFreeAllowanceAt(i)->allowanceType, read.GetTaxFreeAllowanceAt(i)->amount);
    if (const auto pension = read.getStatePension()) {
        reading.Tell(pension->grossAmount, pension->typeDescription);
        if (pension->lumpSum)
            TellPaid(reading, *pension->lumpSum);
    }
}

/// The answer of one of the four individual interfaces, which has these sums beside its employments.
template<class Read, class... Sums>
void CheckIndividual(std::string_view input, Read read, Sums... sums)
{
    CheckDecoder(input, read, [&](Reading& reading, const auto& answer) {
        for (int i = 0; i <= answer.GetUpperBound(); ++i)
            TellEmployment(reading, *answer.GetAt(i));
        reading.Tell((answer.*sums)...);
    });
}

} // namespace

void PayeAnswer(std::string_view input) { CheckDecoder(input, &HmrcApi::ReadPayeResponse, &TellPaye); }

void InsuranceAnswer(std::string_view input)
{
    CheckDecoder(input, &HmrcApi::ReadNationalInsuranceResponse, [](Reading& reading, const auto& read) {
        reading.Tell(read.class1NicableEarnings, read.class2Due, read.maxNicsReached);
    });
}

void HistoryAnswer(std::string_view input) { CheckIndividual(input, &HmrcApi::ReadEmploymentHistoryResponse); }

void BenefitsAnswer(std::string_view input) { CheckIndividual(input, &HmrcApi::ReadBenefitsSummaryResponse); }

void IncomeAnswer(std::string_view input)
{
    using Income = HmrcApi::CIncomeSummaryResponse;
    CheckIndividual(input, &HmrcApi::ReadIncomeSummaryResponse, &Income::otherPensionsAndRetirementAnnuities,
                    &Income::incapacityBenefit, &Income::jobseekersAllowance, &Income::seissNetPaid);
}

void TaxAnswer(std::string_view input)
{
    using Tax = HmrcApi::CTaxSummaryResponse;
    CheckIndividual(input, &HmrcApi::ReadTaxSummaryResponse, &Tax::otherPensionsAndRetirementAnnuities,
                    &Tax::incapacityBenefit, &Tax::taxRefundedOrSetOff);
}

} // namespace Fuzz
