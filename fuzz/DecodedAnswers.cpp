// Each of HMRC's answers, decoded: every figure is the one that stands at its place in the text, and nothing but the
// figures decides what is read.

#include <algorithm>
#include <optional>
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

/// What was read beside the text that it was read from. Each figure is also told as text, so that two readings can be
/// compared.
class Reading
{
public:
    /// The items of the list `name`, as many as were read; none where it is absent.
    static const std::vector<JsonValue>& Items(const JsonValue& node, const char* name, int read)
    {
        static const std::vector<JsonValue> none;
        const JsonValue* const list = node.Find(name);
        const std::vector<JsonValue>& items = list ? list->items : none;
        Require(static_cast<int>(items.size()) == read, "as many items are read as are sent");
        return items;
    }
    /// The object `name`; one without members where it is absent.
    static const JsonValue& Object(const JsonValue& node, const char* name)
    {
        static const JsonValue none;
        const JsonValue* const member = node.Find(name);
        return member ? *member : none;
    }

    void Amount(const Kiln::CAmt& read, const JsonValue& node, const char* name)
    {
        const JsonValue* const sent = node.Find(name);
        Require(sent ? sent->Is(Kind::Number) && read.IsValid() &&
                           HmrcApi::ExactTenThousandths(sent->text) == read.GetValue()
                     : read.IsNull(),
                "an amount is the one that was sent, to the last digit, or absent");
        Tell(read.Format().Str());
    }
    void Text(const std::string& read, const JsonValue& node, const char* name)
    {
        const JsonValue* const sent = node.Find(name);
        Require(read == (sent ? sent->text : std::string()), "a text is the one that was sent, or absent");
        Tell(read);
    }
    void Key(const std::string& read, const JsonValue& node, const char* name)
    {
        Require(!read.empty(), "what names a record is there");
        Text(read, node, name);
    }
    void Date(const Kiln::CDate& read, const JsonValue& node, const char* name)
    {
        Require(read.IsNull() || read.IsValid(), "a date is a day or absent");
        Require(read.IsNull() || (node.Find(name) && Fits(read, node.Find(name)->text)),
                "a date is the day that was sent");
        Tell(read.Format("%Y%m%d").Str());
    }
    void Flag(const std::optional<bool>& read, const JsonValue& node, const char* name)
    {
        const JsonValue* const sent = node.Find(name);
        Require(read == (sent ? std::optional(sent->boolean) : std::nullopt), "a flag is the one that was sent");
        Tell(read ? *read ? "yes" : "no" : "");
    }
    void Tell(const std::string& text) { m_told += text + '\n'; }
    const std::string& Told() const noexcept { return m_told; }

private:
    /// The numbers of the date, in the order year, month, day, are those of the text.
    static bool Fits(const Kiln::CDate& date, const std::string& text)
    {
        int fields[3] = {}, field = 0;
        for (const char c : text) {
            if (c == '-' && field < 2)
                ++field;
            else if (c < '0' || c > '9' || fields[field] > 9999)
                return false;
            else
                fields[field] = fields[field] * 10 + (c - '0');
        }
        return fields[0] == date.GetYear() && fields[1] == date.GetMonth() && fields[2] == date.GetDay();
    }

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
template<class Read, class Compare>
std::string Outcome(std::string_view json, Read read, Compare compare)
{
    try {
        const auto response = read(json);
        const std::optional<JsonValue> root = HmrcApi::ParseJson(json);
        Require(root && root->Is(Kind::Object), "an answer is a JSON object");
        Reading reading;
        compare(reading, *root, response);
        return reading.Told();
    } catch (const HmrcApi::HmrcApiErrorException& refusal) {
        Require(refusal.GetCode() == "ANSWER_MALFORMED" || refusal.GetCode() == "AMOUNT_NOT_EXACT",
                "an answer is refused by one of two codes");
        Require(!refusal.GetText().empty() && refusal.GetStatus().empty(), "a refusal says why, and of no request");
        return refusal.GetCode();
    }
}

/// `compare(reading, root, response)` holds a response against the text that it was read from.
template<class Read, class Compare>
void CheckDecoder(std::string_view input, Read read, Compare compare)
{
    constexpr std::size_t kMost = HmrcApi::kJsonValues / 8; // the further members must not lead beyond the bound
    const std::string outcome = Outcome(input, read, compare);
    const std::optional<JsonValue> root = HmrcApi::ParseJson(input);
    Require(root || outcome == "ANSWER_MALFORMED", "what is no JSON is no answer");
    if (root && CountValues(*root) < kMost)
        Require(Outcome(WriteJson(Reordered(*root)), read, compare) == outcome,
                "order and unknown members change nothing");
}

/// What a payment of the PAYE interface says of time and money.
template<class Paid>
void ComparePaid(Reading& reading, const JsonValue& node, const Paid& read)
{
    reading.Date(read.startDate, node, "startDate");
    reading.Date(read.endDate, node, "endDate");
    reading.Amount(read.taxablePayTotal, node, "taxablePayTotal");
    reading.Amount(read.taxTotal, node, "taxTotal");
}

template<class Payer>
void ComparePayer(Reading& reading, const JsonValue& node, const Payer& read)
{
    reading.Key(read.employerPayeReference, node, "employerPayeReference");
    reading.Text(read.employerName, node, "employerName");
    reading.Text(read.worksNumber, node, "worksNumber");
    ComparePaid(reading, node, read);
}

void CompareEmployment(Reading& reading, const JsonValue& node, const HmrcApi::Employment_t& read)
{
    ComparePayer(reading, node, read);
    reading.Amount(read.studentLoan, node, "studentLoan");
    reading.Flag(read.offPayrollWorkFlag, node, "offPayrollWorkFlag");
    std::size_t at = 0;
    for (const JsonValue& item :
         Reading::Items(node, "companyBenefits", static_cast<int>(read.companyBenefits.size()))) {
        const HmrcApi::CompanyBenefit_t& benefit = read.companyBenefits[at++];
        reading.Key(benefit.benefitType, item, "benefitType");
        reading.Amount(benefit.amount, item, "amount");
        const JsonValue* const forecast = item.Find("isForecastBenefit");
        Require(benefit.isForecastBenefit == (forecast && forecast->boolean), "a forecast is one that was called so");
    }
}

void CompareStatePension(Reading& reading, const JsonValue& node, const HmrcApi::StatePension_t& read)
{
    reading.Amount(read.grossAmount, node, "grossAmount");
    reading.Text(read.typeDescription, node, "typeDescription");
    Require((read.lumpSum != nullptr) == (node.Find("lumpSum") != nullptr), "a lump sum is read where one is sent");
    if (read.lumpSum)
        ComparePaid(reading, *node.Find("lumpSum"), *read.lumpSum);
}

void ComparePaye(Reading& reading, const JsonValue& root, const HmrcApi::CPayeResponse& read)
{
    int at = 0;
    for (const JsonValue& item : Reading::Items(root, "employments", read.GetEmploymentUpperBound() + 1))
        CompareEmployment(reading, item, *read.GetEmploymentAt(at++));
    at = 0;
    for (const JsonValue& item : Reading::Items(root, "privatePensions", read.GetPrivatePensionUpperBound() + 1))
        ComparePayer(reading, item, *read.GetPrivatePensionAt(at++));
    at = 0;
    for (const JsonValue& item :
         Reading::Items(root, "taxableSocialSecurityBenefits", read.GetTaxableSocialSecurityBenefitUpperBound() + 1)) {
        const auto benefit = read.GetTaxableSocialSecurityBenefitAt(at++);
        reading.Key(benefit->benefitTypeName, item, "benefitType");
        reading.Text(benefit->employerPayeReference, item, "employerPayeReference");
        ComparePaid(reading, item, *benefit);
    }
    at = 0;
    for (const JsonValue& item : Reading::Items(root, "taxFreeAllowances", read.GetTaxFreeAllowanceUpperBound() + 1)) {
        const auto allowance = read.GetTaxFreeAllowanceAt(at++);
        reading.Key(allowance->allowanceType, item, "allowanceType");
        reading.Amount(allowance->amount, item, "amount");
    }
    const auto pension = read.getStatePension();
    Require((pension != nullptr) == (root.Find("statePension") != nullptr),
            "a state pension is read where one is sent");
    if (pension)
        CompareStatePension(reading, *root.Find("statePension"), *pension);
}

void CompareInsurance(Reading& reading, const JsonValue& root, const HmrcApi::CNationalInsuranceResponse& read)
{
    reading.Amount(read.class1NicableEarnings, Reading::Object(root, "class1"), "totalNICableEarnings");
    reading.Amount(read.class2Due, Reading::Object(root, "class2"), "totalDue");
    reading.Flag(read.maxNicsReached, root, "maxNICsReached");
}

/// Every number among an employment's members is a benefit that is told, under its name, and there is no other.
void CompareBenefits(Reading& reading, const JsonValue& node, const HmrcApi::Employment_t& read)
{
    std::size_t known = 0;
    for (const std::string& name : node.names)
        known += HmrcApi::BenefitNumber(name) > 1000 && node.Find(name) ? 1 : 0;
    Require(read.companyBenefits.size() == known, "each sum of benefits that is sent is read");
    for (const HmrcApi::CompanyBenefit_t& benefit : read.companyBenefits) {
        Require(benefit.benefitNumber == HmrcApi::BenefitNumber(benefit.benefitType), "a benefit has its number");
        reading.Tell(benefit.benefitType);
        reading.Amount(benefit.amount, node, benefit.benefitType.c_str());
    }
}

/// The answer of one of the four individual interfaces: `ofEmployment` compares what it has of each employment,
/// `ofYear` what it has beside them.
template<class Read, class OfEmployment, class OfYear>
void CheckIndividual(std::string_view input, Read read, OfEmployment ofEmployment, OfYear ofYear)
{
    CheckDecoder(input, read, [&](Reading& reading, const JsonValue& root, const auto& answer) {
        int at = 0;
        for (const JsonValue& item : Reading::Items(root, "employments", answer.GetUpperBound() + 1)) {
            const auto employment = answer.GetAt(at++);
            reading.Key(employment->employerPayeReference, item, "employerPayeReference");
            ofEmployment(reading, item, *employment);
        }
        ofYear(reading, Reading::Object(root, "pensionsAnnuitiesAndOtherStateBenefits"), root, answer);
    });
}

constexpr auto kNothingMore = [](auto&&...) {};

} // namespace

void PayeAnswer(std::string_view input) { CheckDecoder(input, &HmrcApi::ReadPayeResponse, &ComparePaye); }

void InsuranceAnswer(std::string_view input)
{
    CheckDecoder(input, &HmrcApi::ReadNationalInsuranceResponse, &CompareInsurance);
}

void HistoryAnswer(std::string_view input)
{
    const auto ofEmployment = [](Reading& reading, const JsonValue& item, const HmrcApi::Employment_t& read) {
        reading.Text(read.employerName, item, "employerName");
        reading.Flag(read.offPayrollWorkFlag, item, "offPayrollWorkFlag");
    };
    CheckIndividual(input, &HmrcApi::ReadEmploymentHistoryResponse, ofEmployment, kNothingMore);
}

void BenefitsAnswer(std::string_view input)
{
    CheckIndividual(input, &HmrcApi::ReadBenefitsSummaryResponse, &CompareBenefits, kNothingMore);
}

void IncomeAnswer(std::string_view input)
{
    const auto ofEmployment = [](Reading& reading, const JsonValue& item, const HmrcApi::Employment_t& read) {
        reading.Amount(read.taxablePayTotal, item, "payFromEmployment");
    };
    const auto ofYear = [](Reading& reading, const JsonValue& other, const JsonValue&, const auto& read) {
        reading.Amount(read.otherPensionsAndRetirementAnnuities, other, "otherPensionsAndRetirementAnnuities");
        reading.Amount(read.incapacityBenefit, other, "incapacityBenefit");
        reading.Amount(read.jobseekersAllowance, other, "jobseekersAllowance");
        reading.Amount(read.seissNetPaid, other, "seissNetPaid");
    };
    CheckIndividual(input, &HmrcApi::ReadIncomeSummaryResponse, ofEmployment, ofYear);
}

void TaxAnswer(std::string_view input)
{
    const auto ofEmployment = [](Reading& reading, const JsonValue& item, const HmrcApi::Employment_t& read) {
        reading.Amount(read.taxTotal, item, "taxTakenOffPay");
    };
    const auto ofYear = [](Reading& reading, const JsonValue& other, const JsonValue& root, const auto& read) {
        reading.Amount(read.otherPensionsAndRetirementAnnuities, other, "otherPensionsAndRetirementAnnuities");
        reading.Amount(read.incapacityBenefit, other, "incapacityBenefit");
        reading.Amount(read.taxRefundedOrSetOff, Reading::Object(root, "refunds"), "taxRefundedOrSetOff");
    };
    CheckIndividual(input, &HmrcApi::ReadTaxSummaryResponse, ofEmployment, ofYear);
}

} // namespace Fuzz
