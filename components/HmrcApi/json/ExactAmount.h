#pragma once

// From the text of a JSON number to an amount, exactly.

#include <cstdint>
#include <optional>
#include <string_view>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// The text is a number by the grammar of JSON, however large or long.
HMRCAPI_API bool IsJsonNumber(std::string_view text) noexcept;

/// Pounds as a JSON number in ten-thousandths: "22551.05" is 225510500, "1.5e2" is 1500000. Nothing when the text is
/// no JSON number, has decimals beyond the fourth that are not 0, or does not fit 64 bits. Never rounds.
HMRCAPI_API std::optional<std::int64_t> ExactTenThousandths(std::string_view number) noexcept;

} // namespace HmrcApi
