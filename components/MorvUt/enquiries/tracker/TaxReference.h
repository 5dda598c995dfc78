#pragma once

// Whether a tax reference is nobody else's.

#include "Cellar/Connection.h"
#include "MorvUt/Export.h"

/// 1 when no client or partnership but this one (`id`; 0: a new one) holds the reference; only its digits count, and
/// one without digits is nobody's. Otherwise 0, and who does: a client rather than a partnership, of several the
/// smallest id, with the real year of the latest return, 0 without one. Throws Cellar::DatabaseError.
MORVUT_API int IsUniqueTaxReference(Cellar::CConnection& connection, long id, bool isPartnership, const char* reference,
                                    long& otherId, bool& otherIsPartnership, short& year);
