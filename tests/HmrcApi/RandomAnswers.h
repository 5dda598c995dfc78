#pragma once

// Answers of the PAYE interface as a seed would have them, and what they add up to.

#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>

namespace HmrcApi::Fakes
{

/// Sums in ten-thousandths of a pound.
struct AnswerTotals
{
    std::int64_t pay = 0, tax = 0, studentLoan = 0, benefits = 0, allowances = 0;
    std::int64_t pensionPay = 0, pensionTax = 0, stateBenefitsPay = 0, stateBenefitsTax = 0;
    std::int64_t statePension = 0, lumpSumPay = 0, lumpSumTax = 0;
    friend bool operator==(const AnswerTotals&, const AnswerTotals&) = default;
};

/// One valid answer: every member absent now and then, amounts in every form of a number (zero and negative ones too),
/// unknown members and kinds, references and works numbers that occur again. The same seed gives the same answer
/// everywhere.
class RandomAnswer
{
public:
    explicit RandomAnswer(std::uint32_t seed) : m_random(seed)
    {
        m_json = '{' +
                 Members({List("employments", 3, &RandomAnswer::Employment),
                          List("privatePensions", 2, &RandomAnswer::Pension),
                          List("taxableSocialSecurityBenefits", 2, &RandomAnswer::StateBenefit),
                          List("taxFreeAllowances", 2, &RandomAnswer::Allowance), StatePension(), Unknown()}) +
                 '}';
    }

    const std::string& Json() const noexcept { return m_json; }
    const AnswerTotals& Totals() const noexcept { return m_totals; }

private:
    using Item = std::string (RandomAnswer::*)();

    std::uint32_t Below(std::uint32_t count) { return static_cast<std::uint32_t>(m_random() % count); }
    bool Perhaps(std::uint32_t oneIn = 2) { return Below(oneIn) == 0; }
    std::string OneOf(std::initializer_list<const char*> texts)
    {
        return texts.begin()[Below(static_cast<std::uint32_t>(texts.size()))];
    }

    /// The members that are not empty, separated.
    static std::string Members(std::initializer_list<std::string> members)
    {
        std::string text;
        for (const std::string& member : members)
            text += (text.empty() || member.empty() ? "" : ",") + member;
        return text;
    }
    static std::string Named(const char* name, const std::string& value)
    {
        return '"' + std::string(name) + "\":" + value;
    }
    static std::string Text(const char* name, const std::string& text) { return Named(name, '"' + text + '"'); }

    std::string List(const char* name, std::uint32_t most, Item item)
    {
        std::string items;
        for (std::uint32_t count = Below(most + 1); count > 0; --count)
            items += (items.empty() ? "{" : ",{") + (this->*item)() + '}';
        return items.empty() && Perhaps() ? std::string() : Named(name, '[' + items + ']');
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
            digits += OneOf({"e", "E"}); // one draw a statement: the order within one is not the same everywhere
            digits += exponent >= 0 ? OneOf({"", "+"}) : "";
            digits += std::to_string(exponent);
        }
        return (tenThousandths < 0 || (tenThousandths == 0 && Perhaps(4)) ? "-" : "") + digits;
    }
    std::string Amount(const char* name, std::int64_t& total)
    {
        if (Perhaps(5))
            return Perhaps() ? std::string() : Named(name, "null");
        const std::int64_t most = Perhaps() ? 1'000'000 : 4'000'000'000;
        std::int64_t value = m_random() % most;
        value -= Perhaps() ? value % 100 : 0; // whole pence
        value = Perhaps(10) ? 0 : Perhaps(10) ? -value : value;
        total += value;
        return Named(name, Number(value));
    }

    std::string Reference() { return Text("employerPayeReference", OneOf({"123/AB456", "456/AB456", "789/X"})); }
    std::string WorksNumber()
    {
        return Perhaps() ? std::string() : Text("worksNumber", OneOf({"W1", "W2", "00191048716"}));
    }
    std::string Date(const char* name)
    {
        return Perhaps() ? std::string() : Text(name, OneOf({"2017-04-06", "2017-5-1", "2018-04-05", "soon"}));
    }
    std::string Dates() { return Members({Date("startDate"), Date("endDate")}); }
    std::string Unknown()
    {
        return Perhaps()
                   ? std::string()
                   : Named("new",
                           OneOf({"1e400", "0.123456789", "{\"amount\":7}", "[5,\"\\\"1\"]", "\"-1\\\\\"", "null"}));
    }

    std::string PaidBy(std::int64_t& pay, std::int64_t& tax)
    {
        return Members({Reference(), Text("employerName", "Company XYZ"), WorksNumber(), Dates(),
                        Amount("taxablePayTotal", pay), Amount("taxTotal", tax), Unknown()});
    }
    std::string Employment()
    {
        return Members({PaidBy(m_totals.pay, m_totals.tax), Amount("studentLoan", m_totals.studentLoan),
                        List("companyBenefits", 3, &RandomAnswer::CompanyBenefit)});
    }
    std::string Pension() { return PaidBy(m_totals.pensionPay, m_totals.pensionTax); }
    std::string CompanyBenefit()
    {
        return Members({Text("benefitType",
                             OneOf({"CarBenefit", "VanBenefit", "NurseryPlaces", "TotalBenefitInKind", "SpaceTravel"})),
                        Amount("amount", m_totals.benefits),
                        Perhaps() ? std::string() : Named("isForecastBenefit", OneOf({"true", "false"})), Unknown()});
    }
    std::string StateBenefit()
    {
        return Members(
            {Text("benefitType", OneOf({"JobseekersAllowance", "IncapacityBenefit", "EmploymentAndSupportAllowance",
                                        "UniversalCredit", "jobseekersallowance"})),
             Dates(), Amount("taxablePayTotal", m_totals.stateBenefitsPay),
             Amount("taxTotal", m_totals.stateBenefitsTax), Unknown()});
    }
    std::string Allowance()
    {
        return Members(
            {Text("allowanceType", OneOf({"FlatRateJobExpenses", "EarlierYearsAdjustment", "UniformCleaning"})),
             Amount("amount", m_totals.allowances), Unknown()});
    }
    std::string StatePension()
    {
        if (Perhaps())
            return {};
        const std::string lumpSum =
            Perhaps() ? std::string()
                      : Named("lumpSum", '{' +
                                             Members({Dates(), Amount("taxablePayTotal", m_totals.lumpSumPay),
                                                      Amount("taxTotal", m_totals.lumpSumTax)}) +
                                             '}');
        return Named("statePension", '{' + Members({Amount("grossAmount", m_totals.statePension), lumpSum}) + '}');
    }

    std::mt19937 m_random;
    AnswerTotals m_totals;
    std::string m_json;
};

} // namespace HmrcApi::Fakes
