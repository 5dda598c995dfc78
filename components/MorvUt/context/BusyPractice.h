#pragma once

// What a screen does when another program is writing to the practice.

#include "Cellar/DatabaseError.h"
#include "MorvUt/Export.h"

/// For a handler of the error: tells the user that another program is writing, so that they try again with what they
/// have typed. Any other error is thrown on.
MORVUT_API void TellBusyOrThrow(const Cellar::DatabaseError& error);
