// The rules without a socket: each file of `transcripts` holds requests and what is answered.

#include <map>
#include <regex>
#include <sstream>

#include "Afx/text/TextFold.h"
#include "hmrc-sandbox/FraudHeaders.h"
#include "hmrc-sandbox/Identifiers.h"
#include "hmrc-sandbox/RedirectUri.h"
#include "hmrc-sandbox/Service.h"
#include "HmrcApi/transport/FraudHeaders.h"
#include "support/Test.h"

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
    ::Test::ExpectTranscript(std::string("apps/hmrc-sandbox/transcripts/") + GetParam() + ".txt",
                             [this](const std::string& command) { return Run(command); });
}

INSTANTIATE_TEST_SUITE_P(Sandbox, Rules, testing::Values("api", "control", "faults", "individual", "oauth"));

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
    const std::map<std::string, bool (*)(std::string_view)> checks{
        {"IsUtr", IsUtr}, {"IsNino", IsNino}, {"IsTaxYear", IsTaxYear}, {"IsRedirectUri", IsRedirectUri}};
    for (const auto& [check, text, isTaken, why] :
         ::Test::Table<std::string, std::string, bool>("apps/hmrc-sandbox/Rules.tsv"))
        EXPECT_EQ(checks.at(check)(text), isTaken) << text;
}

} // namespace Sandbox
