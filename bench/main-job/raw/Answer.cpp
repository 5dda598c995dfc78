#include "main-job/raw/Answer.h"

#include <cmath>
#include <cstring>

#include <nlohmann/json.hpp>

namespace Raw
{
namespace
{

using Json = nlohmann::json;

struct Number
{
    const char* name;
    int number, code;
};

constexpr Number kBenefits[] = {
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

constexpr Number kKinds[] = {
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

std::string Text(const Json& item, const char* name)
{
    const auto at = item.find(name);
    return at == item.end() ? std::string() : at->get<std::string>();
}

std::int64_t Amount(const Json& item, const char* name)
{
    const auto at = item.find(name);
    return at == item.end() ? kNoAmount : std::llround(at->get<double>() * 10'000);
}

bool Flag(const Json& item, const char* name)
{
    const auto at = item.find(name);
    return at != item.end() && at->get<bool>();
}

/// Calls `take` with each item of the array, which may be missing.
template<class Take>
void Each(const Json& parent, const char* name, Take take)
{
    const auto at = parent.find(name);
    if (at != parent.end())
        for (const Json& item : *at)
            take(item);
}

Benefit ReadBenefit(const Json& item)
{
    Benefit benefit;
    benefit.type = Text(item, "benefitType");
    benefit.number = NumberOf(kBenefits, benefit.type);
    benefit.amount = Amount(item, "amount");
    benefit.isForecast = Flag(item, "isForecastBenefit");
    return benefit;
}

Employment ReadEmployment(const Json& item)
{
    Employment employment;
    employment.reference = Text(item, "employerPayeReference");
    employment.worksNumber = Text(item, "worksNumber");
    employment.employer = Text(item, "employerName");
    employment.start = Text(item, "startDate");
    employment.end = Text(item, "endDate");
    employment.pay = Amount(item, "taxablePayTotal");
    employment.tax = Amount(item, "taxTotal");
    employment.studentLoan = Amount(item, "studentLoan");
    employment.isOffPayroll = Flag(item, "offPayrollWorkFlag");
    Each(item, "companyBenefits", [&](const Json& benefit) { employment.benefits.push_back(ReadBenefit(benefit)); });
    return employment;
}

/// The start, else the end.
std::string DateOf(const Json& item)
{
    const std::string start = Text(item, "startDate");
    return start.empty() ? Text(item, "endDate") : start;
}

Pension ReadPension(const Json& item, int kind)
{
    Pension pension;
    pension.kind = kind;
    pension.reference = Text(item, "employerPayeReference");
    pension.worksNumber = Text(item, "worksNumber");
    pension.payer = Text(item, "employerName");
    pension.date = kind == kPrivatePension ? Text(item, "startDate") : DateOf(item);
    pension.amount = Amount(item, "taxablePayTotal");
    pension.tax = Amount(item, "taxTotal");
    return pension;
}

void ReadStatePension(const Json& root, std::vector<Pension>& pensions)
{
    const auto at = root.find("statePension");
    if (at == root.end())
        return;
    Pension& pension = pensions.emplace_back();
    pension.reference = Text(*at, "typeDescription");
    pension.amount = Amount(*at, "grossAmount");
    const auto lumpSum = at->find("lumpSum");
    if (lumpSum == at->end())
        return;
    pensions.push_back(ReadPension(*lumpSum, kStatePension));
    pensions.back().reference = "State Pension lump sum";
}

/// The reference, with the works number where several share it.
void SetKeys(std::vector<Employment>& employments)
{
    for (Employment& one : employments) {
        int sharing = 0;
        for (const Employment& other : employments)
            sharing += other.reference == one.reference;
        one.key = sharing == 1 ? one.reference : one.reference + ' ' + one.worksNumber;
    }
}

} // namespace

Year ReadAnswer(const std::string& json)
{
    const Json root = Json::parse(json);
    Year year;
    Each(root, "employments", [&](const Json& item) { year.employments.push_back(ReadEmployment(item)); });
    Each(root, "privatePensions",
         [&](const Json& item) { year.pensions.push_back(ReadPension(item, kPrivatePension)); });
    Each(root, "taxableSocialSecurityBenefits", [&](const Json& item) {
        year.pensions.push_back(ReadPension(item, NumberOf(kKinds, Text(item, "benefitType"))));
    });
    ReadStatePension(root, year.pensions);
    Each(root, "taxFreeAllowances", [&](const Json& item) {
        const std::string type = Text(item, "allowanceType");
        year.allowances.push_back({type, NumberOf(kBenefits, type), Amount(item, "amount")});
    });
    SetKeys(year.employments);
    return year;
}

int BenefitCode(int number)
{
    for (const Number& benefit : kBenefits)
        if (benefit.number == number)
            return benefit.code;
    return 180; // other items
}

} // namespace Raw
