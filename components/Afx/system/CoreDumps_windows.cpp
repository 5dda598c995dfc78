#include "Afx/system/CoreDumps.h"

#include "Afx/Platform.h"

namespace Afx
{

/// Keeps the system from asking, and from reporting with an image. What an administrator has set up stays.
void SwitchOffCoreDumps() noexcept { SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); }

} // namespace Afx
