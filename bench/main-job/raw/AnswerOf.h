#pragma once

// HMRC's answer in the terms of the staging rows, read from whichever library's document. Amounts go through binary
// floating point, names that are not known become 0, and nothing is checked.
//
// A Node has Text, Amount (ten-thousandths of a pound) and Flag of a member, which may be missing; Find, a Node or
// nothing; and Each, which calls a function with each Node of an array that may be missing.

#include <cstring>
#include <string>

#include "main-job/raw/Records.h"

namespace Raw
{

struct Number
{
    const char* name;
    int number, code;
};

inline constexpr Number kBenefits[] = {
    {"CarBenefit", 31, 70},
    {"CarFuelBenefit", 29, 80},
    {"MedicalInsurance", 30, 120},
    {"VoucherAndCreditCards", 54, 40},
    {"EmployerProvidedServices", 8, 140},
    {"Accommodation", 38, 50},
    {"FlatRateJobExpenses", 56, 0}, // allowances, as the next
    {"ProfessionalSubscriptions", 57, 0},
    {"EarlierYearsAdjustment", 101, 0},
};

inline constexpr Number kKinds[] = {
    {"JobseekersAllowance", kJobseekersAllowance, 0},
    {"IncapacityBenefit", kIncapacityBenefit, 0},
    {"EmploymentAndSupportAllowance", kEmploymentAndSupportAllowance, 0},
};

template<int Count>
int NumberOf(const Number (&numbers)[Count], const std::string& name)
{
    for (const Number& number : numbers)
        if (std::strcmp(number.name, name.c_str()) == 0)
            return number.number;
    return 0;
}

template<class Node>
Benefit ReadBenefit(const Node& item)
{
    Benefit benefit;
    benefit.type = item.Text("benefitType");
    benefit.number = NumberOf(kBenefits, benefit.type);
    benefit.amount = item.Amount("amount");
    benefit.isForecast = item.Flag("isForecastBenefit");
    return benefit;
}

template<class Node>
Employment ReadEmployment(const Node& item)
{
    Employment employment;
    employment.reference = item.Text("employerPayeReference");
    employment.worksNumber = item.Text("worksNumber");
    employment.employer = item.Text("employerName");
    employment.start = item.Text("startDate");
    employment.end = item.Text("endDate");
    employment.pay = item.Amount("taxablePayTotal");
    employment.tax = item.Amount("taxTotal");
    employment.studentLoan = item.Amount("studentLoan");
    employment.offPayroll = item.Has("offPayrollWorkFlag") ? item.Flag("offPayrollWorkFlag") : -1;
    item.Each("companyBenefits", [&](const Node& benefit) { employment.benefits.push_back(ReadBenefit(benefit)); });
    return employment;
}

/// The start, else the end.
template<class Node>
std::string DateOf(const Node& item)
{
    const std::string start = item.Text("startDate");
    return start.empty() ? item.Text("endDate") : start;
}

template<class Node>
Pension ReadPension(const Node& item, int kind)
{
    Pension pension;
    pension.kind = kind;
    pension.reference = item.Text("employerPayeReference");
    pension.worksNumber = item.Text("worksNumber");
    pension.payer = item.Text("employerName");
    pension.date = kind == kPrivatePension ? item.Text("startDate") : DateOf(item);
    pension.end = item.Text("endDate");
    pension.amount = item.Amount("taxablePayTotal");
    pension.tax = item.Amount("taxTotal");
    return pension;
}

template<class Node>
void ReadStatePension(const Node& root, std::vector<Pension>& pensions)
{
    const auto at = root.Find("statePension");
    if (!at)
        return;
    Pension& pension = pensions.emplace_back();
    pension.reference = at->Text("typeDescription");
    pension.amount = at->Amount("grossAmount");
    const auto lumpSum = at->Find("lumpSum");
    if (!lumpSum)
        return;
    pensions.push_back(ReadPension(*lumpSum, kStatePension));
    pensions.back().reference = "State Pension lump sum";
}

/// The reference, with the works number where several share it.
inline void SetKeys(std::vector<Employment>& employments)
{
    for (Employment& one : employments) {
        int sharing = 0;
        for (const Employment& other : employments)
            sharing += other.reference == one.reference;
        one.key = sharing == 1 ? one.reference : one.reference + ' ' + one.worksNumber;
    }
}

template<class Node>
Year ReadYear(const Node& root)
{
    Year year;
    root.Each("employments", [&](const Node& item) { year.employments.push_back(ReadEmployment(item)); });
    root.Each("privatePensions",
              [&](const Node& item) { year.pensions.push_back(ReadPension(item, kPrivatePension)); });
    root.Each("taxableSocialSecurityBenefits", [&](const Node& item) {
        year.pensions.push_back(ReadPension(item, NumberOf(kKinds, item.Text("benefitType"))));
    });
    ReadStatePension(root, year.pensions);
    root.Each("taxFreeAllowances", [&](const Node& item) {
        const std::string type = item.Text("allowanceType");
        year.allowances.push_back({type, NumberOf(kBenefits, type), item.Amount("amount")});
    });
    SetKeys(year.employments);
    return year;
}

} // namespace Raw
