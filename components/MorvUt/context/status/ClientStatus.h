#pragma once

// What a client or partnership is, and is in a year. Years are real tax years. A client that does not exist has no
// status: every answer is no, except what rows say that hang on its id. All at once, and with the reasons:
// StatusView.h. All of them read the current connection and throw Cellar::DatabaseError.

#include "MorvUt/context/status/StatusRules.h"
#include "MorvUt/Export.h"
#include "Quarry/Keys.h"

namespace Brix
{
class CClient;
class CTaxForm;
} // namespace Brix

// Dead, dormant, inactive.

/// A client that is no trust and died before the current tax year (GetCurrentRealTaxYear), or a partnership that ceased
/// before it: in every year asked about, past ones too. Or one whose return of `year` is marked dormant. Or one with a
/// period of inactivity that covers the whole of `year`.
MORVUT_API bool IsClientDeadDormant(long id, bool isPartnership, short year);
/// The same, and a client that is not active and has no return in `year`, or a partnership that is not active.
MORVUT_API bool IsClientInactiveInYear(long id, bool isPartnership, short year);

// By the client, or partnership, and year that the process holds (CClientSingleton): asked again, they read nothing,
// and see what that cache sees.

/// Whether the return of `year` is marked dormant.
MORVUT_API bool ClientIsDormant(long id, bool isPartnership, short year);
/// Whether HMRC has accepted the return of `year`, so that changes amend it. Never before 2008.
MORVUT_API bool Amending(long id, bool isPartnership, short year);

// The return of a year: the first one, when there are several.

/// 1 when there is a return and its date of finalisation is valid.
MORVUT_API int IsTaxReturnFinalisedForYear(long clientId, short year);
/// The same of a partnership, by the name that its callers know.
MORVUT_API int IsPartershipTaxReturnFinalised(long partnershipId, short year);
/// Whether the tax form, on its current row, says that the taxpayer is Scottish. Never before 2018, nor of a list that
/// stands on no row.
MORVUT_API bool IsScottishTaxPayer(Brix::CTaxForm& taxForm);
/// Whether the return claims the trading allowance. Never before 2018, nor for a trust.
MORVUT_API bool ClaimTradingAllowance(long clientId, short year);

// Kinds of client. For id 0 no database is asked.

/// 1 when the client is a trust (or an estate, which is kept as a trust); 0 for no such client. With `checkKind` also a
/// client whose trust option is set and whose trust kind is not 1.
MORVUT_API int IsClientATrust(const ClientId& id, bool checkKind);
/// 1 for a trust whose entity type is "Estate", in any case of its letters.
MORVUT_API int IsClientAnEstate(long clientId);
/// 1 for a trust, by flag or option, that is no estate.
MORVUT_API int IsActualTrustClient(long clientId);
MORVUT_API int IsPartnershipAnLLP(long partnershipId);
/// The same of a record that was read already.
MORVUT_API bool IsTrust(const Brix::CClient& client, bool checkKind);
MORVUT_API bool IsEstate(const Brix::CClient& client);
