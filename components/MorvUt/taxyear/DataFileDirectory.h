#pragma once

// Where the suite's list files stand.

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// The folder of the list files, without a separator at the end: the profile's "DataDirectory" in "Preferences", else
/// the folder of the program.
MORVUT_API CString GetDataFileDirectory();
