#include "RequestLog.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Text.h"

namespace Sandbox
{

namespace
{

constexpr std::size_t kMostLines = 10000; // the oldest go first
constexpr std::size_t kLongestText = 300;

/// The grant's name when it is one of the three, so that a secret in the wrong place is not kept.
std::string GrantType(const Call& call)
{
    constexpr const char* kGrants[] = {"authorization_code", "refresh_token", "client_credentials"};
    if (call.path != "/oauth/token")
        return {};
    const std::string given = Find(call.parameters, "grant_type").value_or("");
    const bool known = std::find(std::begin(kGrants), std::end(kGrants), given) != std::end(kGrants);
    return known ? given : "other";
}

} // namespace

void RequestLog::Add(const Call& call, const Answer& answer, bool authorised)
{
    if (m_lines.size() == kMostLines)
        m_lines.pop_front();
    m_lines.push_back({call.method, call.path.substr(0, kLongestText), call.accept.substr(0, kLongestText),
                       GrantType(call), answer.code, answer.status, authorised});
}

nlohmann::ordered_json RequestLog::ToJson() const
{
    auto list = nlohmann::ordered_json::array();
    for (const Line& line : m_lines) {
        nlohmann::ordered_json json{{"method", line.method},
                                    {"path", line.path},
                                    {"status", line.status},
                                    {"accept", line.accept},
                                    {"authorised", line.authorised}};
        if (!line.code.empty())
            json["code"] = line.code;
        if (!line.grantType.empty())
            json["grant_type"] = line.grantType;
        list.push_back(std::move(json));
    }
    return list;
}

} // namespace Sandbox
