#pragma once

// Answers of the PAYE interface as a seed would have them, and what they add up to.

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <string_view>

#include "HmrcApi/json/Json.h"

namespace HmrcApi::Fakes
{

/// All that an answer may hold. Texts are one of several, null stands for what nobody knows.
inline constexpr char kAnyAnswer[] = R"({
  "employments": [{
    "employerPayeReference": "123/AB456|456/AB456|789/X", "employerName": "Company XYZ",
    "worksNumber": "W1|W2|00191048716", "startDate": "2017-04-06|2017-5-1|soon", "endDate": "2018-04-05|soon",
    "taxablePayTotal": 0, "taxTotal": 0, "studentLoan": 0, "new": null,
    "companyBenefits": [{
      "benefitType": "CarBenefit|VanBenefit|NurseryPlaces|TotalBenefitInKind|SpaceTravel",
      "amount": 0, "isForecastBenefit": true, "new": null}]}],
  "privatePensions": [{
    "employerPayeReference": "123/AB456|456/AB456|789/X", "employerName": "Company XYZ",
    "worksNumber": "W1|W2|00191048716", "startDate": "2017-04-06|2017-5-1|soon", "endDate": "2018-04-05|soon",
    "taxablePayTotal": 0, "taxTotal": 0, "new": null}],
  "taxableSocialSecurityBenefits": [{
    "benefitType": "JobseekersAllowance|IncapacityBenefit|EmploymentAndSupportAllowance|UniversalCredit|jobseekersallowance",
    "startDate": "2017-04-06|2017-5-1|soon", "endDate": "2018-04-05|soon",
    "taxablePayTotal": 0, "taxTotal": 0, "new": null}],
  "taxFreeAllowances": [{
    "allowanceType": "FlatRateJobExpenses|EarlierYearsAdjustment|UniformCleaning", "amount": 0, "new": null}],
  "statePension": {"grossAmount": 0,
    "lumpSum": {"startDate": "2017-04-06|2017-5-1|soon", "taxablePayTotal": 0, "taxTotal": 0}},
  "new": null})";

/// One valid answer: every member absent now and then, but not all at once, amounts in every form of a number (zero and
/// negative ones too), unknown members and kinds, references and works numbers that occur again. The same seed gives
/// the same answer everywhere.
class RandomAnswer
{
public:
    explicit RandomAnswer(std::uint32_t seed) : m_random(seed), m_answer(Vary(ParseJson(kAnyAnswer).value(), {})) {}

    const JsonValue& Answer() const noexcept { return m_answer; }
    /// The sum of the amounts with these names on the way, "/employments/taxTotal", in ten-thousandths of a pound.
    std::int64_t Total(const std::string& path) const
    {
        const auto found = m_totals.find(path);
        return found == m_totals.end() ? 0 : found->second;
    }

private:
    using Kind = JsonValue::Kind;

    std::uint32_t Below(std::uint32_t count) { return static_cast<std::uint32_t>(m_random() % count); }
    bool Perhaps(std::uint32_t oneIn = 2) { return Below(oneIn) == 0; }
    /// One of what stands between the bars.
    std::string OneOf(std::string_view texts)
    {
        for (auto skip = Below(1 + static_cast<std::uint32_t>(std::count(texts.begin(), texts.end(), '|'))); skip > 0;
             --skip)
            texts.remove_prefix(texts.find('|') + 1);
        return std::string(texts.substr(0, texts.find('|')));
    }

    JsonValue Vary(const JsonValue& model, const std::string& path)
    {
        JsonValue value;
        value.kind = model.kind;
        if (model.Is(Kind::Null))
            return ParseJson(OneOf(R"(1e400|0.123456789|{"amount":7}|[5,"\"1"]|"-1\\"|null)")).value();
        if (model.Is(Kind::Text))
            value.text = OneOf(model.text);
        if (model.Is(Kind::Boolean))
            value.boolean = Perhaps();
        if (model.Is(Kind::Number))
            SetAmount(value, m_totals[path]);
        if (model.Is(Kind::Array))
            for (std::uint32_t count = Below(4); count > 0; --count)
                value.items.push_back(Vary(model.items[0], path));
        for (std::size_t i = 0; i < model.names.size(); ++i) {
            const std::string& name = model.names[i];
            const bool isNeeded = name.ends_with("Reference") || name.ends_with("Type");
            if (!isNeeded && Perhaps(3))
                continue;
            value.names.push_back(name);
            value.items.push_back(Vary(model.items[i], path + '/' + name));
        }
        if (path.empty() && (value.names.empty() || value.names[0] == "new")) { // an answer has one of its own
            value.names.emplace_back("taxFreeAllowances");
            value.items.emplace_back().kind = Kind::Array;
        }
        return value;
    }

    void SetAmount(JsonValue& value, std::int64_t& total)
    {
        if (Perhaps(10)) {
            value.kind = Kind::Null;
            return;
        }
        const std::int64_t most = Perhaps() ? 1'000'000 : 4'000'000'000;
        auto amount = static_cast<std::int64_t>(m_random() % static_cast<std::uint64_t>(most));
        amount -= Perhaps() ? amount % 100 : 0; // whole pence
        amount = Perhaps(10) ? 0 : Perhaps(10) ? -amount : amount;
        total += amount;
        value.text = Number(amount);
    }

    /// A number of that value: plain, with needless zeros, or with an exponent of either sign.
    std::string Number(std::int64_t tenThousandths)
    {
        std::string digits = std::to_string(tenThousandths < 0 ? -tenThousandths : tenThousandths);
        int exponent = -4;
        for (std::uint32_t zeros = tenThousandths != 0 ? Below(4) : 0; zeros > 0; --zeros, --exponent)
            digits += '0';
        while (digits.size() > 1 && digits.back() == '0' && !Perhaps(4)) {
            digits.pop_back();
            ++exponent;
        }
        const bool isPlain = exponent <= 0 && Perhaps();
        const std::size_t decimals = isPlain ? static_cast<std::size_t>(-exponent) : Below(4);
        exponent += static_cast<int>(decimals);
        if (digits.size() <= decimals)
            digits.insert(0, decimals + 1 - digits.size(), '0');
        if (decimals > 0)
            digits.insert(digits.size() - decimals, ".");
        if (exponent != 0 || Perhaps(8)) {
            digits += OneOf("e|E"); // one draw a statement: the order within one is not the same everywhere
            digits += exponent >= 0 ? OneOf("|+") : "";
            digits += std::to_string(exponent);
        }
        return (tenThousandths < 0 || (tenThousandths == 0 && Perhaps(4)) ? "-" : "") + digits;
    }

    std::mt19937 m_random;
    std::map<std::string, std::int64_t> m_totals;
    JsonValue m_answer; // made of the two before
};

} // namespace HmrcApi::Fakes
