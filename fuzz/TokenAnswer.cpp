#include <algorithm>
#include <string>

#include "fuzz/JsonText.h"
#include "fuzz/Targets.h"
#include "HmrcApi/json/Json.h"
#include "HmrcApi/oauth/TokenRequest.h"

namespace Fuzz
{
namespace
{

// Letters that no answer holds by chance, so that each is a secret that came back.
constexpr char kRefreshToken[] = "zQ7refreshZq9", kSecret[] = "zQ7application+Zq9", kEncoded[] = "zQ7application%2BZq9";

/// Gives the same answer to whatever is sent.
class OneAnswer : public HmrcApi::ITransport
{
public:
    OneAnswer(int status, std::string_view body)
    {
        m_answer.outcome = HmrcApi::HttpAnswer::Outcome::Answered;
        m_answer.status = status;
        m_answer.contentType = "application/json";
        m_answer.body = body;
    }
    HmrcApi::HttpAnswer Send(const HmrcApi::HttpRequest&) override { return m_answer; }

private:
    HmrcApi::HttpAnswer m_answer;
};

HmrcApi::TokenAnswer Ask(int status, std::string_view body)
{
    OneAnswer transport(status, body);
    HmrcApi::Service service;
    service.base = "http://127.0.0.1:1/";
    service.id = "application";
    service.secret = kSecret;
    return HmrcApi::RequestTokens(transport, service,
                                  {{"grant_type", "refresh_token"}, {"refresh_token", kRefreshToken}}, {}, 1000);
}

bool IsToken(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c <= '~'; });
}

void CheckError(const HmrcApi::TokenAnswer& answer)
{
    Require(!answer.error.code.empty() || !answer.error.message.empty(), "without tokens there is an error");
    for (const std::string* text : {&answer.error.code, &answer.error.message, &answer.error.path})
        for (const char* secret : {kRefreshToken, kSecret, kEncoded})
            Require(text->find(secret) == text->npos, "no error repeats a secret that was sent");
    Require(!HmrcApi::ErrorOf(answer).GetCode().empty(), "an answer without tokens has a meaning");
}

void CheckTokens(const HmrcApi::TokenAnswer& answer, std::string_view body)
{
    const HmrcApi::COAuth2Tokens& tokens = *answer.tokens;
    Require(answer.error.code.empty() && answer.error.message.empty(), "tokens or an error, never both");
    Require(IsToken(tokens.accessToken) && IsToken(tokens.refreshToken), "both tokens can be sent on");
    const auto json = HmrcApi::ParseJson(body);
    Require(json && json->Find("access_token") && json->Find("access_token")->text == tokens.accessToken &&
                json->Find("refresh_token") && json->Find("refresh_token")->text == tokens.refreshToken,
            "the tokens are those of the answer");
}

} // namespace

void TokenAnswer(std::string_view input)
{
    for (const int status : {200, 400, 401, 500}) {
        const HmrcApi::TokenAnswer answer = Ask(status, input);
        Require(answer.answer.body.empty(), "nothing is left of the answer's text");
        Require(status == 200 || !answer.tokens, "only a 200 gives tokens");
        if (answer.tokens)
            CheckTokens(answer, input);
        else
            CheckError(answer);
    }
    // The text as HMRC's reason: what it may quote is what was sent.
    const std::string reason = std::string(input.substr(0, 64)) + kSecret + ' ' + kRefreshToken;
    if (const auto quoted = HmrcApi::ParseJson(QuoteJson(reason)))
        CheckError(Ask(400, R"({"error":"invalid_grant","error_description":)" + QuoteJson(reason) + '}'));
}

} // namespace Fuzz
