#include "HmrcApi/interfaces/detail/Retrieval.h"

#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/answers/Retry.h"
#include "HmrcApi/transport/Waiting.h"

namespace HmrcApi
{
namespace
{

void SetAuthorization(HttpRequest& request, const std::string& accessToken)
{
    for (auto& [name, value] : request.headers)
        if (name == "Authorization")
            Wipe(value);
    std::erase_if(request.headers, [](const auto& header) { return header.first == "Authorization"; });
    if (!accessToken.empty())
        request.headers.emplace_back("Authorization", "Bearer " + accessToken);
}

/// The tokens in hand for the service; empty ones when there are none.
COAuth2Tokens TokensOf(const CAuthorisation& authorisation, const Service& service)
{
    COAuth2Tokens tokens;
    authorisation.get_authtokens(tokens, service);
    return tokens;
}

/// Refreshes and puts the new token into the request, or throws the refresh's error.
void Refresh(CAuthorisation& authorisation, const Service& service, HttpRequest& request, COAuth2Tokens& tokens,
             IChainLogger* logger)
{
    if (!authorisation.RefreshTokens(logger, service)) {
        const CAuthorisation::Error& error = authorisation.GetLastError();
        throw HmrcApiErrorException(error.code, error.text, {}, error.status);
    }
    tokens = TokensOf(authorisation, service);
    SetAuthorization(request, tokens.accessToken);
}

HttpAnswer SendUnless(bool isCancelled, ITransport& transport, const HttpRequest& request)
{
    if (!isCancelled && !(request.cancelled && request.cancelled()))
        return transport.Send(request);
    HttpAnswer answer;
    answer.outcome = HttpAnswer::Outcome::Cancelled;
    return answer;
}

/// What an error answer says; it may repeat what it was sent.
ErrorBody ErrorIn(const HttpAnswer& answer, const std::string& token)
{
    if (answer.outcome != HttpAnswer::Outcome::Answered || answer.status == 200)
        return {};
    ErrorBody body = ReadErrorBody(answer);
    for (std::string* text : {&body.code, &body.message, &body.path})
        *text = Mask(*text, {token});
    return body;
}

/// The body of a 200; what is none is logged.
std::string Taken(HttpAnswer& answer, const RequestLog& log)
{
    try {
        return TakeJson(answer);
    } catch (const HmrcApiErrorException& refusal) {
        log.Refused(refusal);
        throw;
    }
}

} // namespace

std::optional<std::string> Retrieve(ITransport& transport, HttpRequest request, CAuthorisation& authorisation,
                                    const Service& service, const RequestLog& log)
{
    COAuth2Tokens tokens = TokensOf(authorisation, service);
    SetAuthorization(request, tokens.accessToken);
    bool mayRefresh = !tokens.accessToken.empty();
    bool isCancelled = false;
    unsigned failures = 0;
    for (unsigned number = 1;; ++number) {
        HttpAnswer answer = SendUnless(isCancelled, transport, request);
        const ErrorBody body = ErrorIn(answer, tokens.accessToken);
        log.Answered(number, answer, body, tokens.accessToken);
        const AnswerRule& rule = RuleFor(answer, body.code);
        if (rule.verdict == Verdict::Success)
            return Taken(answer, log);
        if (rule.verdict == Verdict::NothingYet)
            return std::nullopt;
        if (rule.verdict == Verdict::Refresh && mayRefresh) {
            mayRefresh = false; // once: a second refusal has another reason
            Refresh(authorisation, service, request, tokens, log.Logger());
            continue;
        }
        const std::optional<unsigned> wait =
            failures < rule.retries ? RetryWait(failures + 1, answer.retryAfter) : std::nullopt;
        if (!wait)
            throw ErrorOf(answer, rule, body);
        ++failures;
        isCancelled = !WaitUnless(request.cancelled, *wait);
    }
}

} // namespace HmrcApi
