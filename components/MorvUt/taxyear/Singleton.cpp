#include "MorvUt/taxyear/Singleton.h"

namespace
{

bool g_listenersDisabled = false;

} // namespace

void DisableQuarryListeners(bool disable) noexcept { g_listenersDisabled = disable; }

bool AreQuarryListenersDisabled() noexcept { return g_listenersDisabled; }
