#pragma once

// What tells a practice's own key from any other.

#include "Cellar/Value.h"

namespace Brix
{

/// For BRIXSchema.vbKeyCheck, of the key that is set; null without one.
Cellar::Value MakeKeyCheck();

} // namespace Brix
