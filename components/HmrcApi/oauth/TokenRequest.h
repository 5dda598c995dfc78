#pragma once

// Requests for tokens, and what comes back.

#include <functional>
#include <optional>
#include <string>

#include "HmrcApi/answers/AnswerTable.h"
#include "HmrcApi/oauth/Authorisation.h"
#include "HmrcApi/transport/Uri.h"

namespace HmrcApi
{

/// The outcome of one token request.
struct TokenAnswer
{
    HttpAnswer answer;                   // without its body
    ErrorBody error;                     // when there are no tokens
    std::optional<COAuth2Tokens> tokens; // whole, or none

    /// HMRC may have granted this request, and we shall never know.
    bool IsLost() const noexcept
    {
        return answer.outcome == HttpAnswer::Outcome::Incomplete || answer.outcome == HttpAnswer::Outcome::TimedOut ||
               answer.status == 504;
    }
};

/// Posts `fields` with the application's id and secret to oauth/token of the authentication endpoint, once.
TokenAnswer RequestTokens(ITransport& transport, IClientData& clientData, FormFields fields,
                          const std::function<bool()>& cancelled);

/// The address of HMRC's sign-in page for the API at `base`: another host than the API's, the same for a loopback base.
HMRCAPI_API std::string AuthoriseAddress(const std::string& base);

} // namespace HmrcApi
