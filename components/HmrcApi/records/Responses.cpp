#include "HmrcApi/records/Responses.h"

#include <optional>

#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/json/ExactAmount.h"
#include "HmrcApi/json/Json.h"

namespace HmrcApi
{
namespace
{

[[noreturn]] void Refuse(const std::string& why, const std::string& path)
{
    throw HmrcApiErrorException("ANSWER_MALFORMED", "HMRC's answer cannot be read: " + why, path);
}

[[noreturn]] void RefuseAmount(const std::string& path)
{
    throw HmrcApiErrorException("AMOUNT_NOT_EXACT",
                                "HMRC's answer holds an amount that cannot be kept exactly" +
                                    (path.empty() ? std::string() : ": " + path),
                                path);
}

/// `YYYY-M-D` with one or two digits each for month and day; null when it is anything else or no such day.
Kiln::CDate ReadIsoDate(std::string_view text) noexcept
{
    int fields[3] = {};
    const std::size_t most[3] = {4, 2, 2};
    for (int i = 0; i < 3; ++i) {
        std::size_t count = 0;
        for (; count < text.size() && count < most[i] && text[count] >= '0' && text[count] <= '9'; ++count)
            fields[i] = fields[i] * 10 + (text[count] - '0');
        if (count == 0 || (i == 0 && count != 4))
            return {};
        text.remove_prefix(count);
        if (i == 2 ? !text.empty() : text.empty() || text.front() != '-')
            return {};
        if (i < 2)
            text.remove_prefix(1);
    }
    const Kiln::CDate date(fields[0], fields[1], fields[2]);
    return date.IsValid() ? date : Kiln::CDate();
}

/// An object of the answer and its place in it. A known member of the wrong type is refused, because its figure must
/// not turn into "not reported"; only a date that cannot be read counts as absent (HMRC's own data holds such).
class Node
{
public:
    Node(const JsonValue& value, std::string path) : m_value(value), m_path(std::move(path))
    {
        if (!m_value.Is(JsonValue::Kind::Object))
            Refuse((m_path.empty() ? "it" : m_path) + " is no object", m_path);
    }

    std::string Text(const char* name) const
    {
        const JsonValue* member = Member(name, JsonValue::Kind::Text, "text");
        return member ? member->text : std::string();
    }
    /// A text that identifies its record: absent or empty is refused.
    std::string Key(const char* name) const
    {
        std::string text = Text(name);
        if (text.empty())
            Refuse(PathOf(name) + " is missing", PathOf(name));
        return text;
    }
    Kiln::CAmt Amount(const char* name) const
    {
        const JsonValue* member = Member(name, JsonValue::Kind::Number, "number");
        if (!member)
            return {};
        const std::optional<std::int64_t> value = ExactTenThousandths(member->text);
        if (!value)
            RefuseAmount(PathOf(name));
        return Kiln::CAmt(*value);
    }
    Kiln::CDate Date(const char* name) const
    {
        const JsonValue* member = m_value.Find(name);
        return member && member->Is(JsonValue::Kind::Text) ? ReadIsoDate(member->text) : Kiln::CDate();
    }
    bool Flag(const char* name) const
    {
        const JsonValue* member = Member(name, JsonValue::Kind::Boolean, "true or false");
        return member && member->boolean;
    }
    std::optional<Node> Object(const char* name) const
    {
        const JsonValue* member = m_value.Find(name);
        return member ? std::optional<Node>(std::in_place, *member, PathOf(name)) : std::nullopt;
    }
    /// Each object of the array `name`; none when it is absent.
    template<class Visit>
    void Each(const char* name, Visit visit) const
    {
        const JsonValue* member = Member(name, JsonValue::Kind::Array, "array");
        for (std::size_t i = 0; member && i < member->items.size(); ++i)
            visit(Node(member->items[i], PathOf(name) + '/' + std::to_string(i)));
    }

private:
    std::string PathOf(const char* name) const { return m_path + '/' + name; }
    const JsonValue* Member(const char* name, JsonValue::Kind kind, const char* wanted) const
    {
        const JsonValue* member = m_value.Find(name);
        if (member && !member->Is(kind))
            Refuse(PathOf(name) + " is no " + wanted, PathOf(name));
        return member;
    }

    const JsonValue& m_value;
    std::string m_path; // JSON pointer, as in HMRC's own error lists
};

/// Parses and hands the outermost object on.
template<class Read>
auto WithRoot(std::string_view json, Read read)
{
    JsonProblem problem;
    const std::optional<JsonValue> root = ParseJson(json, &problem);
    if (!root && problem.isNumberTooLarge)
        RefuseAmount({});
    if (!root)
        Refuse(problem.text, {});
    return read(Node(*root, {}));
}

CompanyBenefit_t ReadCompanyBenefit(const Node& node)
{
    CompanyBenefit_t benefit;
    benefit.benefitType = node.Key("benefitType");
    benefit.benefitNumber = BenefitNumber(benefit.benefitType);
    benefit.amount = node.Amount("amount");
    benefit.isForecastBenefit = node.Flag("isForecastBenefit");
    return benefit;
}

/// What an employment and a pension have in common. The employer's name is only shown: without it the figures count.
template<class Payer>
Payer ReadPayer(const Node& node)
{
    Payer payer;
    payer.employerPayeReference = node.Key("employerPayeReference");
    payer.employerName = node.Text("employerName");
    payer.worksNumber = node.Text("worksNumber");
    payer.startDate = node.Date("startDate");
    payer.endDate = node.Date("endDate");
    payer.taxablePayTotal = node.Amount("taxablePayTotal");
    payer.taxTotal = node.Amount("taxTotal");
    return payer;
}

Employment_t ReadEmployment(const Node& node)
{
    auto employment = ReadPayer<Employment_t>(node);
    employment.studentLoan = node.Amount("studentLoan");
    node.Each("companyBenefits",
              [&](const Node& item) { employment.companyBenefits.push_back(ReadCompanyBenefit(item)); });
    return employment;
}

TaxableSocialSecurityBenefit_t::BenefitType BenefitTypeOf(std::string_view name) noexcept
{
    using Benefit = TaxableSocialSecurityBenefit_t;
    constexpr struct
    {
        std::string_view name;
        Benefit::BenefitType type;
    } kTypes[] = {
        {"JobseekersAllowance", Benefit::JobseekersAllowance},
        {"IncapacityBenefit", Benefit::IncapacityBenefit},
        {"EmploymentAndSupportAllowance", Benefit::EmploymentAndSupportAllowance},
    };
    for (const auto& row : kTypes)
        if (row.name == name)
            return row.type;
    return Benefit::Unknown;
}

TaxableSocialSecurityBenefit_t ReadSocialSecurityBenefit(const Node& node)
{
    TaxableSocialSecurityBenefit_t benefit;
    benefit.benefitTypeName = node.Key("benefitType");
    benefit.benefitType = BenefitTypeOf(benefit.benefitTypeName);
    benefit.employerPayeReference = node.Text("employerPayeReference");
    benefit.startDate = node.Date("startDate");
    benefit.endDate = node.Date("endDate");
    benefit.taxablePayTotal = node.Amount("taxablePayTotal");
    benefit.taxTotal = node.Amount("taxTotal");
    return benefit;
}

TaxFreeAllowance_t ReadTaxFreeAllowance(const Node& node)
{
    TaxFreeAllowance_t allowance;
    allowance.allowanceType = node.Key("allowanceType");
    allowance.allowanceNumber = AllowanceNumber(allowance.allowanceType);
    allowance.amount = node.Amount("amount");
    return allowance;
}

StatePension_t ReadStatePension(const Node& node)
{
    StatePension_t pension;
    pension.grossAmount = node.Amount("grossAmount");
    pension.typeDescription = node.Text("typeDescription");
    if (const std::optional<Node> item = node.Object("lumpSum")) {
        StatePension_t::LumpSum_t lumpSum;
        lumpSum.startDate = item->Date("startDate");
        lumpSum.endDate = item->Date("endDate");
        lumpSum.taxablePayTotal = item->Amount("taxablePayTotal");
        lumpSum.taxTotal = item->Amount("taxTotal");
        pension.lumpSum = std::make_shared<const StatePension_t::LumpSum_t>(lumpSum);
    }
    return pension;
}

} // namespace

CPayeResponse ReadPayeResponse(std::string_view json)
{
    const auto read = [](const Node& root) {
        CPayeResponse response;
        root.Each("employments", [&](const Node& item) { response.Add(ReadEmployment(item)); });
        root.Each("privatePensions", [&](const Node& item) { response.Add(ReadPayer<PrivatePension_t>(item)); });
        root.Each("taxableSocialSecurityBenefits",
                  [&](const Node& item) { response.Add(ReadSocialSecurityBenefit(item)); });
        root.Each("taxFreeAllowances", [&](const Node& item) { response.Add(ReadTaxFreeAllowance(item)); });
        if (const std::optional<Node> pension = root.Object("statePension"))
            response.SetStatePension(ReadStatePension(*pension));
        return response;
    };
    return WithRoot(json, read);
}

CNationalInsuranceResponse ReadNationalInsuranceResponse(std::string_view json)
{
    const auto read = [](const Node& root) {
        CNationalInsuranceResponse response;
        if (const std::optional<Node> class1 = root.Object("class1"))
            response.class1NicableEarnings = class1->Amount("totalNICableEarnings");
        if (const std::optional<Node> class2 = root.Object("class2"))
            response.class2Due = class2->Amount("totalDue");
        response.maxNicsReached = root.Flag("maxNICsReached");
        return response;
    };
    return WithRoot(json, read);
}

} // namespace HmrcApi
