#pragma once

// How the Government Gateway user IDs of a practice stand with HMRC.

#include <string>
#include <vector>

#include "Afx/text/CString.h"
#include "Afx/time/DateTime.h"
#include "MorvUt/Export.h"

namespace HmrcApi
{

/// Moments are UTC.
struct GatewayState
{
    std::string gateway;
    bool isRegistered = false;
    bool isAuthorised = false;
    // Of one that is authorised; empty and null otherwise.
    std::string service;                           // base address of the service that gave the grant
    std::string scope;                             // as HMRC gave it
    COleDateTime expires = COleDateTime::Null();   // the access token; it is refreshed
    COleDateTime grantEnds = COleDateTime::Null(); // 18 months after the consent, refreshed or not

    /// What a user must know: that the grant has ended, or ends within 60 days. `now`: UTC.
    MORVUT_API CString Warning(const COleDateTime& now) const;
    /// "PAYE, National Insurance and Marriage Allowance"; what is not known as HMRC has it.
    MORVUT_API std::string ScopeInWords() const;
};

// These read the current connection and throw Cellar::DatabaseError.

MORVUT_API GatewayState ReadGatewayState(const std::string& gateway);
/// All that are registered, by id.
MORVUT_API std::vector<GatewayState> ListGateways();

/// 18 months after a consent; a day that the month has not becomes its last.
MORVUT_API COleDateTime GrantEnd(const COleDateTime& granted);

} // namespace HmrcApi
