#pragma once

// The life of the library in a process.

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// Makes the library ready: the application's name and the base of its registry keys (as `CUserData` shows them).
MORVUT_API void MorvUtStartUp(const CString& applicationName, const CString& keyBase);

/// Ends, in this order, the singletons, the listeners, the connection and the window system. Nothing is left to static
/// destruction.
MORVUT_API void MorvUtShutDown();
