#pragma once

// The staging rows of a year, between records and values.

#include <vector>

#include "Brix/Records.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi::Detail
{

// The rows below the client's CMTD_TaxYear of the year; normally there is one such year, and several count as one.
bool Open(Brix::CMTD_Employments& rows, ClientId client, short year);
bool Open(Brix::CMTD_EmploymentsCompanyBenefits& rows, ClientId client, short year);
bool Open(Brix::CMTD_PensionStateBenefits& rows, ClientId client, short year);
bool Open(Brix::CMTD_TaxFreeAllowances& rows, ClientId client, short year);
bool Open(Brix::CMTD_NIC& rows, ClientId client, short year);
bool Open(Brix::CMTD_TaxYear& rows, ClientId client, short year); // the year itself

// The current row as a value.
StagedEmployment Read(const Brix::CMTD_Employments& row);
StagedBenefit Read(const Brix::CMTD_EmploymentsCompanyBenefits& row);
StagedPension Read(const Brix::CMTD_PensionStateBenefits& row);
StagedAllowance Read(const Brix::CMTD_TaxFreeAllowances& row);
StagedNationalInsurance Read(const Brix::CMTD_NIC& row);

// Sets the current row's columns, except its parent and bWithdrawn; a column that reads the same already stays.
void Fill(Brix::CMTD_Employments& row, const StagedEmployment& item);
void Fill(Brix::CMTD_EmploymentsCompanyBenefits& row, const StagedBenefit& item);
void Fill(Brix::CMTD_PensionStateBenefits& row, const StagedPension& item);
void Fill(Brix::CMTD_TaxFreeAllowances& row, const StagedAllowance& item);
void Fill(Brix::CMTD_NIC& row, const StagedNationalInsurance& item); // its time stays

/// The rows as values, in the list's order.
template<class List>
auto ReadAll(List& rows)
{
    std::vector<decltype(Read(rows))> values;
    values.reserve(static_cast<std::size_t>(rows.GetCount()));
    for (bool isThere = rows.MoveFirst(); isThere; isThere = rows.MoveNext())
        values.push_back(Read(rows));
    return values;
}

/// Gives the employments that were read their benefits.
void AddBenefits(std::vector<StagedEmployment>& employments, Brix::CMTD_EmploymentsCompanyBenefits& benefits);

/// The year as the lists hold it.
StagedYear YearOf(Brix::CMTD_Employments& employments, Brix::CMTD_EmploymentsCompanyBenefits& benefits,
                  Brix::CMTD_PensionStateBenefits& pensions, Brix::CMTD_TaxFreeAllowances& allowances,
                  Brix::CMTD_NIC& nationalInsurance);

} // namespace HmrcApi::Detail
