#pragma once

// What HMRC's answers make of empty staging rows, written down a second time, from HMRC's lists of members and nothing
// of the library's: the answer itself is read, not what the library's readers make of it.

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "HmrcApi/json/Json.h"
#include "support/Table.h"

namespace Plain
{

using Json = HmrcApi::JsonValue;
using Rows = std::vector<std::string>; // "E|reference|...": sorted, values as Show gives them

inline constexpr char kNothing[] = "-";

/// Ten-thousandths of a pound.
inline std::string ShowAmount(const std::string& number)
{
    const std::size_t exponent = number.find_first_of("eE");
    std::string digits;
    int shift = 4;
    bool isFraction = false;
    for (const char c : number.substr(0, exponent)) {
        isFraction = isFraction || c == '.';
        if (c == '-' || c == '.')
            continue;
        digits += c;
        shift -= isFraction ? 1 : 0;
    }
    shift += exponent == number.npos ? 0 : std::stoi(number.substr(exponent + 1));
    digits.resize(static_cast<std::size_t>(std::max(0, static_cast<int>(digits.size()) + shift)), '0');
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    return digits.empty() ? "0" : (number[0] == '-' ? "-" : "") + digits;
}

inline std::string ShowDate(const std::string& text)
{
    int year = 0, month = 0, day = 0;
    char shown[32];
    if (std::sscanf(text.c_str(), "%4d-%2d-%2d", &year, &month, &day) != 3)
        return kNothing;
    std::snprintf(shown, sizeof shown, "%04d-%02d-%02d", year, month, day);
    return shown;
}

/// A member: "name" a text, "@name" a date, "#name" an amount, "?name" a flag, "!name" one where absent is false.
inline std::string Show(const Json& object, const std::string& member)
{
    const bool hasKind = std::string("@#?!").find(member[0]) != std::string::npos;
    const Json* value = object.Find(member.substr(hasKind ? 1 : 0));
    const bool isFlag = value && value->Is(Json::Kind::Boolean);
    if (isFlag || member[0] == '!')
        return isFlag && value->boolean ? "1" : "0";
    if (!value || value->text.empty())
        return kNothing;
    return member[0] == '#' ? ShowAmount(value->text) : member[0] == '@' ? ShowDate(value->text) : value->text;
}

/// Members as "a|b|c"; "=" and a text stands for itself.
inline std::string Row(const Json& object, const char* members)
{
    std::string row, member;
    for (std::istringstream words(members); std::getline(words, member, ' ');)
        row += (row.empty() ? "" : "|") + (member[0] == '=' ? member.substr(1) : Show(object, member));
    return row;
}

/// The objects of a list; none when it is absent.
inline const std::vector<Json>& List(const Json& object, const char* name)
{
    static const std::vector<Json> none;
    const Json* list = object.Find(name);
    return list ? list->items : none;
}
inline const Json& Object(const Json& object, const char* name)
{
    static const Json none;
    const Json* found = object.Find(name);
    return found ? *found : none;
}

/// HMRC's number of a kind of benefit or allowance, the last eight by the boxes of the employment pages; 0 for one that
/// is not in its list.
inline int NumberOf(const std::string& kind)
{
    static const Json numbers = HmrcApi::ParseJson(::Test::FileText("MorvUt/hmrc/numbers.json")).value();
    const Json* const number = numbers.Find(kind);
    return number ? std::stoi(number->text) : 0;
}

/// An employment with its benefits, of which the order says nothing.
inline std::string Employment(const std::string& row, Rows benefits)
{
    std::sort(benefits.begin(), benefits.end());
    std::string text = "E|" + row;
    for (const std::string& benefit : benefits)
        text += " [" + benefit + ']';
    return text;
}
inline std::string Benefit(const std::string& kind, const std::string& amount, const std::string& isForecast)
{
    return std::to_string(NumberOf(kind)) + '|' + kind + '|' + amount + '|' + isForecast;
}

/// "P|kind|reference|works number|payer|date|end|amount|tax" of a taxable benefit.
inline std::string StateBenefit(const Json& item)
{
    const std::string kind = Show(item, "benefitType");
    const char* const from = Show(item, "@startDate") != kNothing ? "@startDate" : "@endDate";
    const std::string figures = std::string(from) + " @endDate #taxablePayTotal #taxTotal";
    const char* const known[] = {"JobseekersAllowance", "IncapacityBenefit", "EmploymentAndSupportAllowance"};
    for (int i = 0; i < 3; ++i)
        if (kind == known[i])
            return Row(item, ("=P =" + std::to_string(i + 2) + " employerPayeReference =- =- " + figures).c_str());
    return Row(item, ("=P =99 benefitType =- employerPayeReference " + figures).c_str());
}

inline Rows RowsOfPaye(const Json& answer)
{
    Rows rows;
    for (const Json& item : List(answer, "employments")) {
        Rows benefits;
        for (const Json& benefit : List(item, "companyBenefits"))
            benefits.push_back(
                Benefit(Show(benefit, "benefitType"), Show(benefit, "#amount"), Show(benefit, "!isForecastBenefit")));
        rows.push_back(Employment(Row(item, "employerPayeReference worksNumber employerName @startDate @endDate "
                                            "#taxablePayTotal #taxTotal #studentLoan ?offPayrollWorkFlag"),
                                  benefits));
    }
    for (const Json& item : List(answer, "privatePensions"))
        rows.push_back(Row(item, "=P =1 employerPayeReference worksNumber employerName @startDate @endDate "
                                 "#taxablePayTotal #taxTotal"));
    for (const Json& item : List(answer, "taxableSocialSecurityBenefits"))
        rows.push_back(StateBenefit(item));
    for (const Json& item : List(answer, "taxFreeAllowances"))
        rows.push_back("A|" + std::to_string(NumberOf(Show(item, "allowanceType"))) + '|' +
                       Row(item, "allowanceType #amount"));
    if (const Json* state = answer.Find("statePension")) {
        const Json* lump = state->Find("lumpSum");
        const std::string words = Show(*state, "typeDescription"), amount = Show(*state, "#grossAmount");
        if (!lump || words != kNothing || amount != kNothing)
            rows.push_back("P|0|" + (words == kNothing ? "State Pension" : words) + "|-|-|-|-|" + amount + "|-");
        if (lump)
            rows.push_back("P|0|State Pension lump sum|-|-|" +
                           Row(*lump, Show(*lump, "@startDate") != kNothing
                                          ? "@startDate @endDate #taxablePayTotal #taxTotal"
                                          : "@endDate @endDate #taxablePayTotal #taxTotal"));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

/// The individual interfaces' answers: employment history, income, benefits, tax; a null one is "nothing yet".
using Parts = std::array<Json, 4>;

/// Of the employments of each reference the first stands with the first in every answer, and so on.
inline Rows EmploymentsOf(const Parts& parts)
{
    std::map<std::string, std::vector<Parts>> employments;
    for (std::size_t part = 0; part < parts.size(); ++part) {
        std::map<std::string, std::size_t> counts;
        for (const Json& item : List(parts[part], "employments")) {
            const std::string reference = Show(item, "employerPayeReference");
            const std::size_t nth = counts[reference]++;
            auto& same = employments[reference];
            same.resize(std::max(same.size(), nth + 1));
            same[nth][part] = item;
        }
    }
    Rows rows;
    for (const auto& [reference, same] : employments)
        for (const auto& [history, income, benefits, tax] : same) {
            Rows sums;
            for (std::size_t i = 0; i < benefits.names.size(); ++i)
                if (const std::string& kind = benefits.names[i]; NumberOf(kind) != 0 && benefits.Find(kind))
                    sums.push_back(Benefit(kind, Show(benefits, '#' + kind), "0"));
            rows.push_back(Employment(reference + "|-|" + Show(history, "employerName") + "|-|-|" +
                                          Show(income, "#payFromEmployment") + '|' + Show(tax, "#taxTakenOffPay") +
                                          "|-|" + Show(history, "?offPayrollWorkFlag"),
                                      sums));
        }
    return rows;
}

/// `unstaged`: what people must be told, since it is no row: the sums of which only the tax was sent.
inline Rows RowsOfParts(const Parts& parts, Rows& unstaged)
{
    Rows rows = EmploymentsOf(parts);
    const Json &income = parts[1], &tax = parts[3];
    constexpr char kSums[] = "pensionsAnnuitiesAndOtherStateBenefits";
    const Json &sums = Object(income, kSums), &taxes = Object(tax, kSums);
    const auto add = [&](const char* kind, const char* words, const std::string& amount, const std::string& taken) {
        const bool isLeftOut = income.Is(Json::Kind::Null) && amount == kNothing && taken != kNothing;
        if (isLeftOut)
            unstaged.emplace_back(words);
        else if (amount != kNothing || taken != kNothing)
            rows.push_back(std::string("P|") + kind + '|' + words + "|-|-|-|-|" + amount + '|' + taken);
    };
    const char *const pensions = "#otherPensionsAndRetirementAnnuities", *const incapacity = "#incapacityBenefit";
    add("1", "Pensions and retirement annuities", Show(sums, pensions), Show(taxes, pensions));
    add("3", "Incapacity Benefit and Employment and Support Allowance", Show(sums, incapacity),
        Show(taxes, incapacity));
    add("2", "Jobseeker's Allowance", Show(sums, "#jobseekersAllowance"), kNothing);
    add("99", "Self-Employment Income Support Scheme", Show(sums, "#seissNetPaid"), kNothing);
    add("99", "Income Tax refunded or set off", Show(Object(tax, "refunds"), "#taxRefundedOrSetOff"), kNothing);
    std::sort(rows.begin(), rows.end());
    return rows;
}

/// Empty when HMRC sent nothing of it.
inline std::string RowOfInsurance(const Json& answer)
{
    if (!Object(answer, "class1").Find("totalNICableEarnings") && !Object(answer, "class2").Find("totalDue") &&
        !answer.Find("maxNICsReached"))
        return {};
    return "N|" + Show(Object(answer, "class1"), "#totalNICableEarnings") + '|' +
           Show(Object(answer, "class2"), "#totalDue") + '|' + Show(answer, "?maxNICsReached");
}

} // namespace Plain
