#pragma once

// Rows that a client or partnership has for each year, and who changed it last. Years are real tax years.
// All of these work on the current connection and throw Cellar::DatabaseError.

#include "Brix/Records.h"
#include "MorvUt/Export.h"

/// Moves `rows`, the yearly rows of one client, to the row of the year; where there is none, to the nearest earlier
/// year back to 1997, else to the nearest later one up to GetMaxRealTaxYear. False when there is none of those.
///
/// With `create` it is always `year`: a missing row is made from the one that was found, or with status 0, and saved,
/// and the list stands on it. One that somebody else has made meanwhile is not made again; then the list is opened anew
/// for the client. When the row cannot be saved, the list holds the rows that it held. Throws std::logic_error for a
/// list that was not opened for one client.
MORVUT_API bool GetClientYearly(Brix::CClientYearly& rows, short year, bool create);
/// The same for a partnership.
MORVUT_API bool GetPartnershipYearly(Brix::CPartnershipYearly& rows, short year, bool create);

/// Stamps the record with today's date and the logged-in user. Its version stays, so that nobody who has it open is
/// refused; listeners hear nothing. No such record: nothing happens.
MORVUT_API void UpdateClientModified(long clientId);
MORVUT_API void UpdatePartnershipModified(long partnershipId);
