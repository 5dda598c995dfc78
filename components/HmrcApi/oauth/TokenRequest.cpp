#include "HmrcApi/oauth/TokenRequest.h"

#include <algorithm>
#include <cstdint>

#include "Afx/text/Numbers.h"
#include "Afx/text/TextFold.h"
#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/json/Json.h"

namespace HmrcApi
{
namespace
{

constexpr struct
{
    std::string_view base, page;
} kAuthorisePages[] = {
    {kProductionService, "https://www.tax.service.gov.uk"},
    {"https://test-api.service.hmrc.gov.uk", "https://test-www.tax.service.gov.uk"},
};

constexpr std::string_view kSecretFields[] = {"refresh_token", "code", "code_verifier", "client_secret"};

constexpr std::int32_t kUsualLifetime = 14'400; // seconds; HMRC's access tokens live four hours

std::string TextOf(const JsonValue& json, std::string_view name)
{
    const JsonValue* member = json.Find(name);
    return member && member->Is(JsonValue::Kind::Text) ? member->text : std::string();
}

std::int32_t LifetimeOf(const JsonValue& json)
{
    const JsonValue* member = json.Find("expires_in");
    const bool isWritten = member && (member->Is(JsonValue::Kind::Number) || member->Is(JsonValue::Kind::Text));
    return isWritten ? Afx::ParseWhole<std::int32_t>(member->text).value_or(kUsualLifetime) : kUsualLifetime;
}

/// Visible characters only, as OAuth has it: a line end in a token would be a line of the next request's head.
bool IsToken(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c <= '~'; });
}

/// Nothing unless both tokens are there: an access token alone would end in four hours with no way on.
std::optional<COAuth2Tokens> ReadTokens(const std::string& body)
{
    std::optional<JsonValue> json = ParseJson(body);
    if (!json)
        return std::nullopt;
    COAuth2Tokens tokens;
    tokens.accessToken = TextOf(*json, "access_token");
    tokens.refreshToken = TextOf(*json, "refresh_token");
    tokens.tokenType = TextOf(*json, "token_type");
    tokens.scope = TextOf(*json, "scope");
    tokens.expiresIn = LifetimeOf(*json);
    for (JsonValue& member : json->items)
        Wipe(member.text);
    if (!IsToken(tokens.accessToken) || !IsToken(tokens.refreshToken))
        return std::nullopt;
    return tokens;
}

/// An answer may repeat what it was sent; the code comes in upper case.
void MaskSecrets(ErrorBody& error, const FormFields& sent)
{
    for (const auto& [name, value] : sent) {
        if (std::find(std::begin(kSecretFields), std::end(kSecretFields), name) == std::end(kSecretFields))
            continue;
        const std::string encoded = PercentEncode(value), upper = Afx::FoldUpper(value);
        for (std::string* text : {&error.code, &error.message, &error.path})
            *text = Mask(*text, {value, encoded, upper});
    }
}

} // namespace

TokenAnswer RequestTokens(ITransport& transport, const Service& service, FormFields fields,
                          const std::function<bool()>& cancelled, unsigned milliseconds)
{
    fields.emplace_back("client_id", service.id);
    fields.emplace_back("client_secret", service.secret);
    HttpRequest request;
    request.method = "POST";
    request.address = JoinAddress(service.base, "oauth/token");
    request.headers = {{"Content-Type", "application/x-www-form-urlencoded"}, {"Accept", "application/json"}};
    request.body = EncodeForm(fields);
    request.cancelled = cancelled;
    request.connectMilliseconds = std::min(request.connectMilliseconds, milliseconds);
    request.totalMilliseconds = std::min(request.totalMilliseconds, milliseconds);

    TokenAnswer result;
    result.answer = transport.Send(request);
    Wipe(request.body);
    std::string& body = result.answer.body;
    if (result.answer.outcome == HttpAnswer::Outcome::Answered) {
        if (result.answer.status == 200)
            result.tokens = ReadTokens(body);
        if (result.answer.status == 200 && !result.tokens)
            result.error = {"ANSWER_MALFORMED", "HMRC's answer holds no tokens", {}};
        else if (!result.tokens)
            result.error = ReadErrorBody(result.answer);
        MaskSecrets(result.error, fields);
    }
    Wipe(body);
    return result;
}

HmrcApiErrorException ErrorOf(const TokenAnswer& answer)
{
    const AnswerRule& rule = RuleFor(answer.answer, answer.error.code);
    if (rule.verdict == Verdict::Success) // 200, but without tokens
        return {answer.error.code, answer.error.message, {}, "200"};
    return ErrorOf(answer.answer, rule, answer.error);
}

void Trace(IChainLogger* logger, const char* event, const TokenAnswer& answer)
{
    if (logger)
        logger->Log(event, "Authorisation", "POST /oauth/token", Mask(DescribeAnswer(answer.answer, answer.error)), {});
}

std::string AuthoriseAddress(const std::string& base)
{
    std::string_view host = base;
    while (host.ends_with('/'))
        host.remove_suffix(1);
    for (const auto& row : kAuthorisePages)
        if (row.base == host)
            host = row.page;
    return JoinAddress(host, "oauth/authorize");
}

} // namespace HmrcApi
