#pragma once

// The banks that the practice keeps as records.

#include <vector>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// Their names, ascending; those without a name are left out. Reads the current connection and throws
/// Cellar::DatabaseError; none while no practice is open.
MORVUT_API std::vector<CString> BankNames();
