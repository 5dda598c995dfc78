#pragma once

// The year offset under which a thread handles the data file of another year.

#include "MorvUt/Export.h"

/// The calling thread's offset in years; 0 unless a CPFileYearOffsetter is at work.
MORVUT_API short GetPFileYearOffset() noexcept;
/// The current real tax year plus the calling thread's offset. A worker thread may ask once the current year is
/// established.
MORVUT_API short GetCurrentRealTaxYear_WithPFileYearOffset();

/// Gives the calling thread a year offset while it lives. Afterwards the offset is 0, whatever it was before: an inner
/// one ends the outer one too.
class MORVUT_API CPFileYearOffsetter
{
public:
    [[nodiscard]] explicit CPFileYearOffsetter(short offset) noexcept;
    CPFileYearOffsetter(const CPFileYearOffsetter&) = delete; // a copy would end the offset of the one it was made from
    CPFileYearOffsetter& operator=(const CPFileYearOffsetter&) = default;
    ~CPFileYearOffsetter();
};
