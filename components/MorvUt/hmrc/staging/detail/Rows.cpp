#include "MorvUt/hmrc/staging/detail/Rows.h"

#include <type_traits>
#include <unordered_map>

#include "HmrcApi/records/Responses.h"

namespace HmrcApi::Detail
{
namespace
{

using Brix::CMTD_Employments;
using Brix::CMTD_EmploymentsCompanyBenefits;
using Brix::CMTD_NIC;
using Brix::CMTD_PensionStateBenefits;
using Brix::CMTD_TaxFreeAllowances;
using Brix::CMTD_TaxYear;
using Quarry::Where;

Where UnderYear(int ordinal, ClientId client, short year)
{
    return Where::Under(ordinal, CMTD_TaxYear::Declaration(),
                        {{CMTD_TaxYear::kClientID, client.Get()}, {CMTD_TaxYear::kYear, year}});
}

/// A flag of which nothing is stored unless HMRC says it.
template<class List>
std::optional<bool> ReadFlag(const List& row, bool (List::*get)() const, int ordinal)
{
    return row.IsNull(ordinal) ? std::nullopt : std::optional((row.*get)());
}

template<class List>
void AssignFlag(List& row, bool (List::*get)() const, int ordinal, std::optional<bool> value)
{
    if (ReadFlag(row, get, ordinal) != value)
        row.Set(ordinal, value ? Cellar::Value(*value) : Cellar::Value());
}

/// Sets a value unless it is the same in the reading program's terms, so that a row which another program wrote in its
/// own way does not count as changed.
template<class List, class T>
void Assign(List& list, T (List::*get)() const, void (List::*set)(const T&), const std::type_identity_t<T>& value)
{
    if (!((list.*get)() == value))
        (list.*set)(value);
}

} // namespace

bool Open(CMTD_Employments& rows, ClientId client, short year)
{
    return rows.Open({UnderYear(rows.kMTD_TaxYearID, client, year)}, {{rows.kKey}});
}

bool Open(CMTD_EmploymentsCompanyBenefits& rows, ClientId client, short year)
{
    return rows.Open({Where::Under(rows.kMTD_EmploymentsID, CMTD_Employments::Declaration(),
                                   {UnderYear(CMTD_Employments::kMTD_TaxYearID, client, year)})});
}

bool Open(CMTD_PensionStateBenefits& rows, ClientId client, short year)
{
    return rows.Open({UnderYear(rows.kMTD_TaxYearID, client, year)}, {{rows.kStart}});
}

bool Open(CMTD_TaxFreeAllowances& rows, ClientId client, short year)
{
    return rows.Open({UnderYear(rows.kMTD_TaxYearID, client, year)}, {{rows.kAmount}});
}

bool Open(CMTD_NIC& rows, ClientId client, short year)
{
    return rows.Open({UnderYear(rows.kMTD_TaxYearID, client, year)});
}

bool Open(CMTD_TaxYear& rows, ClientId client, short year)
{
    return rows.Open({{rows.kClientID, client.Get()}, {rows.kYear, year}});
}

/// Rows of other programs may lack the key, or have nothing but it.
StagedEmployment Read(const CMTD_Employments& row)
{
    StagedEmployment item;
    item.id = row.GetID();
    item.key = row.GetKey().Str();
    item.reference = row.GetPAYEReference().Str();
    item.worksNumber = row.GetWorksNumber().Str();
    item.employer = row.GetEmployerName().Str();
    item.start = row.GetStart();
    item.end = row.GetEnd();
    item.pay = row.GetPay();
    item.tax = row.GetTax();
    item.studentLoan = row.GetStudentLoan();
    item.isOffPayroll = ReadFlag(row, &CMTD_Employments::GetOffPayroll, row.kOffPayroll);
    item.isWithdrawn = row.GetWithdrawn();
    item.decision = {row.GetDecision(), row.GetDecided().Str()};
    if (item.reference.empty() && !item.key.starts_with(' ')) // with a blank it is of an employment without reference
        item.reference = item.key;
    else if (item.key.empty())
        item.key = item.worksNumber.empty() ? item.reference : item.reference + ' ' + item.worksNumber;
    return item;
}

/// Rows of other programs may have HMRC's name alone.
StagedBenefit Read(const CMTD_EmploymentsCompanyBenefits& row)
{
    const std::string type = row.GetBenefitTypeName().Str();
    const int number = row.GetBenefitType() != 0 ? row.GetBenefitType() : BenefitNumber(type);
    return {row.GetID(), type, number, row.GetAmount(), row.GetForecast(), row.GetWithdrawn()};
}

StagedPension Read(const CMTD_PensionStateBenefits& row)
{
    return {row.GetID(),
            row.GetMTDType(),
            row.GetReference().Str(),
            row.GetWorksNumber().Str(),
            row.GetPayer().Str(),
            row.GetStart(),
            row.GetEnd(),
            row.GetAmount(),
            row.GetTax(),
            row.GetWithdrawn(),
            {row.GetDecision(), row.GetDecided().Str()}};
}

StagedAllowance Read(const CMTD_TaxFreeAllowances& row)
{
    const std::string type = row.GetAllowanceTypeName().Str();
    const int number = row.GetAllowanceType() != 0 ? row.GetAllowanceType() : AllowanceNumber(type);
    return {row.GetID(), type, number, row.GetAmount(), row.GetWithdrawn()};
}

StagedNationalInsurance Read(const CMTD_NIC& row)
{
    return {row.GetClass1Earnings(), row.GetClass2Due(),
            ReadFlag(row, &CMTD_NIC::GetMaxNICsReached, row.kMaxNICsReached), row.GetUpdated()};
}

void Fill(CMTD_Employments& row, const StagedEmployment& item)
{
    using List = CMTD_Employments;
    Assign(row, &List::GetKey, &List::SetKey, item.key);
    Assign(row, &List::GetEmployerName, &List::SetEmployerName, item.employer);
    Assign(row, &List::GetPAYEReference, &List::SetPAYEReference, item.reference);
    Assign(row, &List::GetWorksNumber, &List::SetWorksNumber, item.worksNumber);
    Assign(row, &List::GetStart, &List::SetStart, item.start);
    Assign(row, &List::GetEnd, &List::SetEnd, item.end);
    Assign(row, &List::GetPay, &List::SetPay, item.pay);
    Assign(row, &List::GetTax, &List::SetTax, item.tax);
    Assign(row, &List::GetStudentLoan, &List::SetStudentLoan, item.studentLoan);
    AssignFlag(row, &List::GetOffPayroll, row.kOffPayroll, item.isOffPayroll);
}

void Fill(CMTD_EmploymentsCompanyBenefits& row, const StagedBenefit& item)
{
    using List = CMTD_EmploymentsCompanyBenefits;
    Assign(row, &List::GetBenefitType, &List::SetBenefitType, item.number);
    Assign(row, &List::GetBenefitTypeName, &List::SetBenefitTypeName, item.type);
    Assign(row, &List::GetAmount, &List::SetAmount, item.amount);
    Assign(row, &List::GetForecast, &List::SetForecast, item.isForecast);
}

void Fill(CMTD_PensionStateBenefits& row, const StagedPension& item)
{
    using List = CMTD_PensionStateBenefits;
    if (row.IsNew() || row.GetMTDType() != item.kind) // a new row says 0, too
        row.SetMTDType(item.kind);
    Assign(row, &List::GetReference, &List::SetReference, item.reference);
    Assign(row, &List::GetWorksNumber, &List::SetWorksNumber, item.worksNumber);
    Assign(row, &List::GetPayer, &List::SetPayer, item.payer);
    Assign(row, &List::GetStart, &List::SetStart, item.date);
    Assign(row, &List::GetEnd, &List::SetEnd, item.end);
    Assign(row, &List::GetAmount, &List::SetAmount, item.amount);
    Assign(row, &List::GetTax, &List::SetTax, item.tax);
}

void Fill(CMTD_TaxFreeAllowances& row, const StagedAllowance& item)
{
    using List = CMTD_TaxFreeAllowances;
    Assign(row, &List::GetAllowanceTypeName, &List::SetAllowanceTypeName, item.type);
    Assign(row, &List::GetAllowanceType, &List::SetAllowanceType, item.number);
    Assign(row, &List::GetAmount, &List::SetAmount, item.amount);
}

void Fill(CMTD_NIC& row, const StagedNationalInsurance& item)
{
    using List = CMTD_NIC;
    if (item.class1Earnings.IsValid())
        Assign(row, &List::GetClass1Earnings, &List::SetClass1Earnings, item.class1Earnings);
    if (item.class2Due.IsValid())
        Assign(row, &List::GetClass2Due, &List::SetClass2Due, item.class2Due);
    if (item.isMaximumReached || row.IsNew()) // a new row says "no" by itself
        AssignFlag(row, &List::GetMaxNICsReached, row.kMaxNICsReached, item.isMaximumReached);
}

void AddBenefits(std::vector<StagedEmployment>& employments, CMTD_EmploymentsCompanyBenefits& benefits)
{
    std::unordered_map<long, StagedEmployment*> byId;
    for (StagedEmployment& employment : employments)
        byId.emplace(employment.id, &employment);
    for (bool isThere = benefits.MoveFirst(); isThere; isThere = benefits.MoveNext())
        if (const auto own = byId.find(benefits.GetMTD_EmploymentsID()); own != byId.end())
            own->second->benefits.push_back(Read(benefits)); // else of an employment that another program just added
}

StagedYear YearOf(CMTD_Employments& employments, CMTD_EmploymentsCompanyBenefits& benefits,
                  CMTD_PensionStateBenefits& pensions, CMTD_TaxFreeAllowances& allowances, CMTD_NIC& nationalInsurance)
{
    StagedYear year{ReadAll(employments), ReadAll(pensions), ReadAll(allowances), {}};
    AddBenefits(year.employments, benefits);
    if (nationalInsurance.MoveFirst())
        year.nationalInsurance = Read(nationalInsurance);
    return year;
}

} // namespace HmrcApi::Detail
