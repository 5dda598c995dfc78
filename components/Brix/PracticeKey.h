#pragma once

// What tells a practice's own key from any other.

#include <cstdint>
#include <span>

#include "Brix/Export.h"
#include "Brix/Schema.h"

namespace Brix
{

/// For BRIXSchema.vbKeyCheck, of the key that is set; null without one.
Cellar::Value MakeKeyCheck();
/// The same, of another practice's key.
Cellar::Value MakeKeyCheck(std::span<const std::uint8_t> key);

/// Whether the key that is set is the practice's own. Where nothing in the practice tells yet, it is when it opens a
/// stored secret, or when none is stored, and is known from then on.
BRIX_API bool IsPracticeKey(Cellar::CConnection& connection, const SchemaVersion& version);

} // namespace Brix
