#pragma once

// A practice whose rows are put in by plain SQL, in the tax year 2022/23, which no program begins with.

#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "support/Practice.h"

namespace Test
{

class StatusTest : public OnPractice
{
protected:
    StatusTest() { SetCurrentTaxYear(32); }
    ~StatusTest() override { CCurrentTaxYearSingleton::Destroy(); }
};

} // namespace Test
