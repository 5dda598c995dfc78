#pragma once

// From OLE's decimal numbers to its currency.

#include <cstdint>
#include <optional>

#include "Afx/Export.h"
#include "Afx/Platform.h"

namespace Afx
{

/// `value` in ten-thousandths, further decimals rounded to the nearest, halves to the even neighbour, as Windows does.
/// Nothing when 64 bits cannot hold it, or its scale is above 28.
AFX_API std::optional<std::int64_t> DecimalToCy(const DECIMAL& value) noexcept;

} // namespace Afx
