// The rules without a socket: each file of `transcripts` holds requests and what is answered.

#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <tuple>

#include "Afx/text/TextFold.h"
#include "hmrc-sandbox/FraudHeaders.h"
#include "hmrc-sandbox/Identifiers.h"
#include "hmrc-sandbox/RedirectUri.h"
#include "hmrc-sandbox/Service.h"
#include "HmrcApi/transport/FraudHeaders.h"
#include "support/TestSupport.h"

namespace Sandbox
{
namespace
{

/// `text` (a=1&b=2) over what is there; an empty value takes the parameter away, a plus stands for a blank.
Parameters Parse(const std::string& text)
{
    Parameters parameters;
    std::istringstream parts(::Test::ReplacedAll(text, "+", " "));
    for (std::string part; std::getline(parts, part, '&');) {
        const std::string name = part.substr(0, part.find('='));
        parameters.erase(name);
        if (name.size() + 1 < part.size())
            parameters.emplace(name, part.substr(name.size() + 1));
    }
    return parameters;
}

/// A service on a clock that stands still. Codes and tokens are <1>, <2> ... in the order in which they are given out.
class Rules : public testing::TestWithParam<const char*>
{
protected:
    /// "wait MILLISECONDS", "let NAME TEXT", or "METHOD PATH [accept TYPE] [auth SCHEME TOKEN] [BODY]".
    std::string Run(std::string command)
    {
        for (auto name = m_names.rbegin(); name != m_names.rend(); ++name) // what was named last may hold others
            command = ::Test::ReplacedAll(command, name->first, name->second);
        for (std::size_t i = m_secrets.size(); i > 0; --i)
            command = ::Test::ReplacedAll(command, '<' + std::to_string(i) + '>', m_secrets[i - 1]);
        std::istringstream words(command);
        std::string verb, path, rest;
        std::getline(words >> verb >> path >> std::ws, rest);
        if (verb == "wait")
            m_time += std::chrono::milliseconds(std::stoll(path));
        else if (verb == "let")
            m_names.emplace_back(path, rest);
        else
            return Told(m_service.Handle(Read(verb, path, rest)));
        return {};
    }

private:
    static Call Read(const std::string& method, const std::string& path, std::string rest)
    {
        const auto take = [&rest](const char* name, const char* otherwise) {
            std::smatch found;
            if (!std::regex_search(rest, found, std::regex("^" + std::string(name) + " ?")))
                return std::string(otherwise);
            const std::string value = found[1];
            rest = found.suffix();
            return value;
        };
        Call call;
        call.method = method;
        call.path = path.substr(0, path.find('?'));
        call.hasQuery = call.path != path;
        call.accept = take("accept ([^ ]*)", "application/vnd.hmrc.1.0+json");
        call.authorization = take("auth ([^ ]* [^ ]*)", "");
        if (call.hasQuery)
            call.parameters = Parse(path.substr(path.find('?') + 1));
        const bool isForm = rest.find('=') != rest.npos && rest[0] != '{';
        call.contentType = isForm ? "application/x-www-form-urlencoded" : "application/json";
        call.body = isForm ? "" : rest;
        if (isForm)
            call.parameters = Parse(rest);
        return call;
    }

    std::string Told(const Answer& answer)
    {
        std::string text = std::to_string(answer.status);
        if (answer.contentType != "application/json")
            text += ' ' + answer.contentType;
        if (answer.delay.count() > 0)
            text += " after " + std::to_string(answer.delay.count()) + " ms";
        text += '\n';
        for (const auto& [name, value] : answer.headers)
            if (name != "Cache-Control" && name != "Pragma")
                text += name + ": " + value + '\n';
        text += answer.body + (answer.body.empty() || answer.body.back() == '\n' ? "" : "\n");
        static const std::regex secret("[0-9a-f]{40}");
        for (std::smatch found; std::regex_search(text, found, secret);) {
            const std::string value = found[0];
            m_secrets.push_back(value);
            text = ::Test::ReplacedAll(text, value, '<' + std::to_string(m_secrets.size()) + '>');
        }
        return text;
    }

    std::vector<std::pair<std::string, std::string>> m_names;
    std::vector<std::string> m_secrets;
    TimePoint m_time{};
    Service m_service{Options{"", [this] { return m_time; }}};
};

} // namespace

TEST_P(Rules, AnswerAsHmrcDoes)
{
    ::Test::ExpectTranscript(std::string(HMRC_SANDBOX_TRANSCRIPTS) + GetParam() + ".txt",
                             [this](const std::string& command) { return Run(command); });
}

INSTANTIATE_TEST_SUITE_P(Sandbox, Rules, testing::Values("api", "control", "faults", "individual", "oauth"));

// Each of the eight interfaces breaks on demand, in each way, and answers again once that is cleared.
TEST(FaultsOnDemand, BreakEveryInterface)
{
    std::vector<std::string> secrets; // a code, then the tokens
    Service service(
        Options{.scenario = "EVERYTHING", .issued = [&](const std::string& each) { secrets.push_back(each); }});
    const auto ask = [&](const char* method, const std::string& path, const std::string& parameters,
                         const char* version = "1.0", const std::string& body = {}) {
        Call call;
        call.method = method;
        call.path = path;
        call.parameters = Parse(parameters);
        call.hasQuery = call.method == "GET" && !parameters.empty();
        call.contentType = "application/x-www-form-urlencoded";
        call.accept = std::string("application/vnd.hmrc.") + version + "+json";
        call.authorization = secrets.size() > 1 ? "Bearer " + secrets[1] : "";
        call.body = body;
        return service.Handle(call);
    };
    const std::string client = "client_id=morvut-sandbox&client_secret=morvut-sandbox-secret",
                      back = "&redirect_uri=http://localhost:53681/callback";
    ask("GET", "/oauth/authorize",
        "response_type=code&client_id=morvut-sandbox" + back +
            "&scope=hello+read:marriage-allowance+read:national-insurance+read:individual-paye+read:individual-benefits"
            "+read:individual-employment+read:individual-income+read:individual-tax");
    ask("POST", "/oauth/token", client + back + "&grant_type=authorization_code&code=" + secrets.at(0));
    ask("POST", "/marriage-allowance-test-support/sa/2234567890/status/2017-18", "");

    const std::string year = "/sa/2234567890/annual-summary/2017-18";
    const std::tuple<std::string, const char*, const char*> interfaces[] = {
        {"/individual-benefits" + year, "", "1.1"},
        {"/individual-employment" + year, "", "1.2"},
        {"/individual-income" + year, "", "1.2"},
        {"/individual-tax" + year, "", "1.1"},
        {"/national-insurance" + year, "", "1.1"},
        {"/individual-paye/nino/AA000001A/annual-summary/2017-18", "", "1.0"},
        {"/marriage-allowance/sa/2234567890/status", "taxYear=2017-18", "2.0"},
        {"/hello/user", "", "1.0"},
    };
    const std::pair<const char*, int> faults[] = {
        {"MESSAGE_THROTTLED_OUT", 429},
        {"RESOURCE_FORBIDDEN", 403},
        {"SERVER_ERROR", 503},
        {"SCHEDULED_MAINTENANCE", 503},
        {"GATEWAY_TIMEOUT", 504},
        {"INTERNAL_SERVER_ERROR", 500},
        {"HTML", 502},
        {"CUT_OFF", 200},
        {"DROPPED", 200},
        {"SLOW", 200},
        {"REDIRECT", 307},
    };
    for (const auto& [path, parameters, version] : interfaces)
        for (const auto& [fault, status] : faults) {
            SCOPED_TRACE(path + ' ' + fault);
            const auto show = [](const Answer& answer) {
                return std::tuple(answer.status, answer.body, answer.dropped, answer.delay.count());
            };
            const auto usual = show(ask("GET", path, parameters, version));
            EXPECT_EQ(std::get<0>(usual), 200) << std::get<1>(usual);
            ask("POST", "/sandbox/fault", "", "1.0",
                R"({"times": 0, "fault": ")" + std::string(fault) + R"(", "path": ")" + path + "\"}");
            const Answer broken = ask("GET", path, parameters, version);
            EXPECT_EQ(broken.status, status);
            EXPECT_NE(show(broken), usual);
            ask("DELETE", "/sandbox/fault", "");
            EXPECT_EQ(show(ask("GET", path, parameters, version)), usual);
        }
}

/// What this program sends leaves out what it cannot know, and nothing of it is wrong.
TEST(FraudHeaders, OfTheClientAreTakenByTheCheck)
{
    std::map<std::string, std::string> sent;
    for (const auto& [name, value] : HmrcApi::FraudPreventionHeaders("Zoë & co"))
        sent.emplace(Afx::FoldLower(name), value);
    EXPECT_EQ(sent["gov-client-user-ids"].rfind("morvut=Zo%C3%AB%20%26%20co"), sent["gov-client-user-ids"].size() - 26);
    const auto checked = CheckFraudHeaders(sent);
    for (const auto& error : checked.value("errors", nlohmann::ordered_json::array())) // a machine without a network
        EXPECT_EQ(error["code"], "MISSING_HEADER") << error;
    EXPECT_EQ(checked["warnings"].size(), 3U) << checked;
    sent["gov-client-timezone"] = "GMT";
    EXPECT_EQ(CheckFraudHeaders(sent)["code"], "INVALID_HEADERS");
}

TEST(Identifiers, AreThoseThatHmrcTakes)
{
    using Texts = std::vector<const char*>;
    const struct
    {
        bool (*check)(std::string_view);
        Texts good, bad;
    } rows[] = {
        // HMRC's examples; a wrong check digit
        {IsUtr,
         {"2234567890", "1111111111"},
         {"1234567890", "223456789", "22345678900", "2234567890K", "22345 6789", ""}},
        // The suffix is optional; O may come first but not second, Q never (though HMRC's prose has it); BG, GB, KN,
        // NK,
        // NT, TN and ZZ are never given out.
        {IsNino,
         {"AA000001A", "AA000001", "AA000001D", "OA123456A", "GA123456A"},
         {"AA000001E", "QQ123456A", "AO123456A", "ZZ123456A", "BG123456A", "aa000001a", "AA 00 00 01 A", ""}},
        {IsTaxYear, {"2017-18", "1999-00"}, {"2017-17", "2017-2018", "2017/18", "2017-1a", ""}},
        {IsRedirectUri,
         {"http://localhost:8080", "http://localhost:53681/callback", "http://LocalHost/callback",
          "urn:ietf:wg:oauth:2.0:oob"},
         {"urn:ietf:wg:oauth:2.0:oob:other", "http://127.0.0.1:8080/callback", "http://[::1]:8080/callback",
          "http://www.example.com/", "http://localhost.example.com/", "http://localhost@example.com/",
          "http://localhost:0/", "http://localhost:65536/", "http://localhost:80x/", "http://localhost/callback#part",
          "http://localhost/call back", "http://localhost/\r\nX: y", "https:///callback", "ftp://localhost/", ""}},
    };
    for (const auto& row : rows) {
        for (const char* text : row.good)
            EXPECT_TRUE(row.check(text)) << text;
        for (const char* text : row.bad)
            EXPECT_FALSE(row.check(text)) << text;
    }
}

} // namespace Sandbox
