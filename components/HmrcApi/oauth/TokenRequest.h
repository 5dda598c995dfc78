#pragma once

// Requests for tokens, and what comes back.

#include <functional>
#include <optional>
#include <string>

#include "HmrcApi/answers/AnswerTable.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/oauth/Service.h"
#include "HmrcApi/oauth/Tokens.h"
#include "HmrcApi/transport/Transport.h"
#include "HmrcApi/transport/Uri.h"

namespace HmrcApi
{

/// The outcome of one token request.
struct TokenAnswer
{
    HttpAnswer answer;                   // without its body
    ErrorBody error;                     // when there are no tokens; without the secrets that were sent
    std::optional<COAuth2Tokens> tokens; // whole, or none

    /// HMRC may have granted this request, and we shall never know.
    bool IsLost() const noexcept
    {
        return answer.outcome == HttpAnswer::Outcome::Incomplete || answer.outcome == HttpAnswer::Outcome::TimedOut ||
               answer.status == 504;
    }
};

/// Posts `fields` with the application's id and secret to oauth/token of the service, once, within the usual time-outs
/// and `milliseconds`.
HMRCAPI_API TokenAnswer RequestTokens(ITransport& transport, const Service& service, FormFields fields,
                                      const std::function<bool()>& cancelled, unsigned milliseconds);

/// What an answer without tokens means.
HMRCAPI_API HmrcApiErrorException ErrorOf(const TokenAnswer& answer);
/// Logs how the request went; nothing without a logger.
void Trace(IChainLogger* logger, const char* event, const TokenAnswer& answer);

/// The address of HMRC's sign-in page for the API at `base`: another host than the API's, the same for a loopback base.
HMRCAPI_API std::string AuthoriseAddress(const std::string& base);

} // namespace HmrcApi
