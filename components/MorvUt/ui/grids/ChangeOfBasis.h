#pragma once

// Amounts across a change of accounting basis: what may be kept.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Kiln/CAmt.h"
#include "MorvUt/Export.h"

/// One column: before, adjustment, after, result.
using BasisColumn = std::array<Kiln::CAmt, 4>;

inline constexpr short kFirstYearOfBasisCheck = 2004; // real tax year

struct BasisFinding
{
    enum class Kind : std::uint8_t
    {
        Negative, // the result is below zero: refused
        Changed   // no longer what was loaded: the user is asked
    };
    Kind kind;
    std::size_t column; // from 0
    friend bool operator==(const BasisFinding&, const BasisFinding&) = default;
};

struct BasisChecks
{
    bool negative = false;
    bool change = false;
    short realYear = 0; // the current one: before 2004 no change is asked about
};

/// What is found, in the order of the columns, up to the first that is refused. Amounts that are not valid count as
/// zero in the comparison with what was `loaded`; a column that was not loaded, as four of them.
MORVUT_API std::vector<BasisFinding> CheckBasis(std::span<const BasisColumn> columns,
                                                std::span<const BasisColumn> loaded, const BasisChecks& checks);
