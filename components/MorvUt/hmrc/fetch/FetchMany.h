#pragma once

// The command "fetch from HMRC" for many clients.

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "MorvUt/Export.h"
#include "MorvUt/hmrc/fetch/Absence.h"
#include "MorvUt/hmrc/fetch/FetchData.h"
#include "Quarry/Keys.h"

namespace HmrcApi
{

/// How a run over many clients ended.
struct ManyFetched
{
    Absence ended = Absence::None; // why it was given up; None: everybody was asked about
    std::size_t done = 0;          // clients with a result: the first so many
    bool isAnyAsked = false;       // of HMRC,
    bool isAnyReached = false;     // which answered
};

struct ManyOptions
{
    IEndpointOverride::ResponseType type = IEndpointOverride::Live;
    /// Asked between clients, and on other threads; true ends the run once those under way are done. After five seconds
    /// requests and waits that are still under way are broken off. Empty: never.
    std::function<bool()> cancelled;
};

/// Fetches each of the clients as FetchFromHmrc does. Up to four are asked about at once, on threads of their own, one
/// request in flight and one connection each; everything else happens on the calling thread, which has the practice's
/// connection, in the order of the clients. `each` is called with the place of the client and what came of it.
///
/// One client's failure does not stop the others. What would keep all of them from being fetched ends the run: at once
/// where that is certain, else after three clients in a row. Once one of them makes it doubtful whether HMRC, or the
/// practice, is there, no more are begun until those under way say otherwise.
///
/// The practice's options are read once, and its authority while the access token lasts and HMRC takes it.
///
/// The process takes its turns at HMRC from the practice's row (TakeSharedSecond) meanwhile. No wait window is shown.
/// `each` may throw; who is under way is waited for then.
MORVUT_API ManyFetched FetchManyFromHmrc(const std::vector<ClientId>& clients, const std::string& gatewayId,
                                         const std::function<void(std::size_t place, const FetchResult&)>& each,
                                         const ManyOptions& options = {});

} // namespace HmrcApi
