#pragma once

#include "hmrc-sandbox/OAuth.h"
#include "hmrc-sandbox/Service.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <regex>
#include <string>

namespace Sandbox
{

constexpr char kPaye[] = "/individual-paye/nino/AA000001A/annual-summary/2017-18";
constexpr char kPayeSupport[] = "/individual-paye-test-support/paye/nino/AA000001A/tax-year/2017-18";
constexpr char kNi[] = "/national-insurance/sa/2234567890/annual-summary/2017-18";
constexpr char kNiSupport[] = "/national-insurance-test-support/sa/2234567890/annual-summary/2017-18";
constexpr char kVersion1[] = "application/vnd.hmrc.1.0+json";
constexpr char kCallback[] = "http://localhost:53681/callback";
constexpr char kAllScopes[] = "hello read:individual-paye read:national-insurance";

/// A value of an answer's headers, empty when it is not there.
inline std::string Header(const Answer& answer, const std::string& name)
{
    for (const auto& [key, value] : answer.headers)
        if (key == name)
            return value;
    return {};
}

/// What stands after `name=` in an address, up to the next `&`.
inline std::string QueryValue(const std::string& address, const std::string& name)
{
    std::smatch found;
    return std::regex_search(address, found, std::regex("[?&]" + name + "=([^&]*)")) ? found[1].str() : "";
}

inline Parameters AuthoriseQuery()
{
    return {{"response_type", "code"},
            {"client_id", kClientId},
            {"scope", kAllScopes},
            {"redirect_uri", kCallback},
            {"state", "s&1"}};
}

/// `parameters` with one replaced, or left out when `value` is empty.
inline Parameters With(Parameters parameters, const std::string& name, const std::string& value)
{
    parameters.erase(name);
    if (!value.empty())
        parameters.emplace(name, value);
    return parameters;
}

/// The rules without a socket, on a clock that stands still until a test moves it.
class SandboxTest : public testing::Test
{
protected:
    Answer Get(const std::string& path, const std::string& token = {}, const std::string& accept = kVersion1)
    {
        Call call{"GET", path, accept, token.empty() ? "" : "Bearer " + token, "", "", {}, false};
        return m_service.Handle(call);
    }

    Answer Send(const std::string& method, const std::string& path, const std::string& body = {})
    {
        return m_service.Handle({method, path, "*/*", "", "application/json", body, {}, false});
    }

    Answer Authorise(const Parameters& query)
    {
        return m_service.Handle({"GET", "/oauth/authorize", "*/*", "", "", "", query, true});
    }

    Answer Token(const Parameters& form)
    {
        return m_service.Handle(
            {"POST", "/oauth/token", "*/*", "", "application/x-www-form-urlencoded", "", form, false});
    }

    std::string Code(const Parameters& query = AuthoriseQuery())
    {
        return QueryValue(Header(Authorise(query), "Location"), "code");
    }

    static Parameters Form(const std::string& grant, const std::string& name, const std::string& value)
    {
        return {{"grant_type", grant},
                {"client_id", kClientId},
                {"client_secret", kClientSecret},
                {"redirect_uri", kCallback},
                {name, value}};
    }
    static Parameters CodeForm(const std::string& code) { return Form("authorization_code", "code", code); }
    static Parameters RefreshForm(const std::string& refresh)
    {
        return Form("refresh_token", "refresh_token", refresh);
    }

    /// The token answer of a whole dialogue.
    nlohmann::json Dialogue(const std::string& scopes = kAllScopes)
    {
        return nlohmann::json::parse(Token(CodeForm(Code(With(AuthoriseQuery(), "scope", scopes)))).body);
    }

    std::string AccessToken(const std::string& scopes = kAllScopes) { return Dialogue(scopes)["access_token"]; }

    TimePoint m_time{};
    Service m_service{Options{"", [this] { return m_time; }}};
};

} // namespace Sandbox
