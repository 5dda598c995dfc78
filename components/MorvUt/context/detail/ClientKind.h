#pragma once

// Kinds of client, of a record that was read already.

#include "Brix/Records.h"

/// IsClientATrust for the current row.
bool IsTrust(const Brix::CClient& client, bool checkKind);
