#pragma once

// What a program leaves behind when it breaks down.

#include "Afx/Export.h"

namespace Afx
{

/// From now on no image of this process's memory is written when it breaks down, and no other process of the user may
/// look into it where the system can forbid that. For programs that hold keys; called once, before they are read.
AFX_API void SwitchOffCoreDumps() noexcept;

} // namespace Afx
