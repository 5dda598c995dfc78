#pragma once

// What a client or partnership is, and is in a year: rules over the records. Years are real tax years.
// All of them read the current connection and throw Cellar::DatabaseError.

#include "Brix/Keys.h"
#include "MorvUt/Export.h"

namespace Brix
{
class CClient;
}

// Kinds of client.

/// 1 when the client is a trust (or an estate, which is kept as a trust); 0 for no such client. With `checkKind` also a
/// client whose trust option is set and whose trust kind is not 1.
MORVUT_API int IsClientATrust(const ClientId& id, bool checkKind);
/// The same of a record that was read already.
MORVUT_API bool IsTrust(const Brix::CClient& client, bool checkKind);
