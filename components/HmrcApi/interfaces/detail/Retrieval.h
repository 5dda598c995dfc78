#pragma once

// One request of HMRC's data with its repetitions.

#include <optional>
#include <string>

#include "HmrcApi/interfaces/detail/RequestLog.h"
#include "HmrcApi/oauth/Authorisation.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

/// Sends with the authorisation's token for `service`, which the request must go to, until the answer table is content,
/// and answers the JSON text; nothing when HMRC has nothing yet (404 NOT_FOUND). Throws HmrcApiErrorException for every
/// other answer.
std::optional<std::string> Retrieve(ITransport& transport, HttpRequest request, CAuthorisation& authorisation,
                                    const Service& service, const RequestLog& log);

} // namespace HmrcApi
