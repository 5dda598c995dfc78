#pragma once

// What one year's return says of a source with an accrued allowance.

#include "Afx/text/CString.h"
#include "Kiln/CAmt.h"
#include "MorvUt/context/AccruedAllowance.h"

namespace Context::Detail
{

/// A source as callers name it.
struct AccruedSource
{
    long clientId;
    SchedType type;
    CString name;
    bool flagA;
    bool flagB;
};

struct AccruedFigures
{
    Kiln::CAmt broughtForward; // not valid: not entered
    Kiln::CAmt addition;
    Kiln::CAmt deduction;
    Kiln::CAmt income;
};

/// The figures of a real tax year; all zero without a return or such a source in it.
AccruedFigures ReadAccruedFigures(const AccruedSource& source, short year);

} // namespace Context::Detail
