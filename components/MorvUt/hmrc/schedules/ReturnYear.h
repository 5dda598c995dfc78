#pragma once

// The return's employments, pensions and benefits of one client and tax year, read once.

#include <vector>

#include "Afx/text/CString.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "MorvUt/Export.h"
#include "Quarry/Keys.h"

namespace HmrcApi
{

/// One benefit of an employment schedule.
struct ReturnBenefit
{
    int code = 0; // of mapNewEmployBenefitsGrid
    Kiln::CAmt amount;
    bool isEstimate = false;
};

struct ReturnEmployment
{
    long id = 0;
    int ordering = 0;
    CString guid, employer;
    CString reference, worksNumber;
    Kiln::CDate start, end;
    Kiln::CAmt pay, tax, studentLoan;
    bool isFromHmrc = false; // made from HMRC's records, not typed
    std::vector<ReturnBenefit> benefits;
};

/// A pension or a benefit of the state.
struct ReturnPension
{
    long id = 0;
    int ordering = 0;
    int section = 0; // of mapPSBCategorys
    int type = 0;    // of mapPSBTypes
    CString description, payer;
    CString reference, worksNumber;
    Kiln::CDate start;
    Kiln::CAmt amount, tax;
    bool isFromHmrc = false;
};

struct ReturnYear
{
    long taxFormId = 0; // 0: the year has no tax form yet
    Kiln::CDate finalised;
    std::vector<ReturnEmployment> employments; // both in the return's order
    std::vector<ReturnPension> pensions;
};

/// The client's return of the real tax year: four statements, one without a tax form. Throws Cellar::DatabaseError.
MORVUT_API ReturnYear LoadReturnYear(ClientId client, short year);

} // namespace HmrcApi
