#include "Afx/system/CoreDumps.h"

#include <sys/resource.h>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace Afx
{

void SwitchOffCoreDumps() noexcept
{
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
#ifdef __linux__
    prctl(PR_SET_DUMPABLE, 0, 0, 0, 0); // a system that hands images to a program does not mind the limit
#endif
}

} // namespace Afx
