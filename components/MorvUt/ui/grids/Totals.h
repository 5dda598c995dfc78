#pragma once

// What the total cells of a grid show. The status of an amount is that of its cell: null is empty, invalid is "Error".

#include <span>

#include "Kiln/CAmt.h"
#include "MorvUt/Export.h"

/// The amounts that are there, added up; null ones are none. Invalid when one of them is, or the sum is too large: a
/// total that leaves out what could not be read would be believed.
MORVUT_API Kiln::CAmt SumOf(std::span<const Kiln::CAmt> amounts) noexcept;

/// A total as it is shown: nothing for zero.
MORVUT_API Kiln::CAmt ShownTotal(const Kiln::CAmt& total) noexcept;

/// What is left of `total` behind the shares, as it is shown. Without an amount to split (zero, null or invalid) empty
/// shares leave an empty cell and others an error.
MORVUT_API Kiln::CAmt ShownRemainder(const Kiln::CAmt& total, std::span<const Kiln::CAmt> shares) noexcept;
