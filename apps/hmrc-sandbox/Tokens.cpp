#include "Tokens.h"

#include <utility>

#include "Crypto.h"
#include "Text.h"

namespace Sandbox
{

namespace
{

constexpr std::chrono::minutes kCodeLifetime(10);
constexpr std::chrono::hours kGrantLifetime(24 * 548); // 18 months

} // namespace

const Scopes& KnownScopes()
{
    static const Scopes scopes = {"hello",
                                  "read:individual-benefits",
                                  "read:individual-employment",
                                  "read:individual-income",
                                  "read:individual-paye",
                                  "read:individual-tax",
                                  "read:marriage-allowance",
                                  "read:national-insurance"};
    return scopes;
}

Scopes ParseScopes(std::string_view text)
{
    Scopes scopes;
    for (const auto scope : Split(text, ' '))
        if (!scope.empty())
            scopes.emplace(scope);
    return scopes;
}

std::string JoinScopes(const Scopes& scopes)
{
    std::string text;
    for (const std::string& scope : scopes)
        text += (text.empty() ? "" : " ") + scope;
    return text;
}

Tokens::Tokens(Now now, Issued issued) : m_now(std::move(now)), m_issued(std::move(issued)) {}

std::string Tokens::NewSecret()
{
    std::string secret = RandomText();
    if (m_issued)
        m_issued(secret);
    return secret;
}

std::string Tokens::IssueCode(CodeGrant grant)
{
    DropExpired();
    const std::string code = NewSecret();
    m_codes[code] = {std::move(grant), m_now() + kCodeLifetime};
    return code;
}

std::optional<Tokens::CodeGrant> Tokens::FindCode(const std::string& code) const
{
    const auto at = m_codes.find(code);
    if (at == m_codes.end() || m_now() >= at->second.expires)
        return std::nullopt;
    return at->second.grant;
}

void Tokens::UseCode(const std::string& code) { m_codes.erase(code); }

Tokens::Pair Tokens::Issue(const Scopes& scopes)
{
    DropExpired();
    return AddPair(scopes, m_now() + kGrantLifetime);
}

Tokens::Pair Tokens::IssueApplication(const Scopes& scopes)
{
    DropExpired();
    return {AddAccess(scopes, true), {}, scopes, m_lifetime};
}

std::optional<Tokens::Pair> Tokens::Refresh(const std::string& refresh)
{
    DropExpired();
    const auto at = m_refresh.find(refresh);
    if (at == m_refresh.end())
        return std::nullopt;
    const Grant grant = std::move(at->second);
    m_refresh.erase(at);
    m_access.erase(grant.access);
    return AddPair(grant.scopes, grant.ends);
}

const Tokens::Access* Tokens::FindAccess(const std::string& access) const
{
    const auto at = m_access.find(access);
    return at == m_access.end() || m_now() >= at->second.expires ? nullptr : &at->second;
}

void Tokens::ExpireAccess() { m_access.clear(); }

void Tokens::ExpireCodes() { m_codes.clear(); }

void Tokens::RevokeAll()
{
    m_codes.clear();
    m_access.clear();
    m_refresh.clear();
}

void Tokens::DropScope(const std::string& scope)
{
    for (auto& [token, access] : m_access)
        access.scopes.erase(scope);
    for (auto& [token, grant] : m_refresh)
        grant.scopes.erase(scope);
}

std::string Tokens::AddAccess(const Scopes& scopes, bool application)
{
    std::string token = NewSecret();
    m_access[token] = {scopes, application, m_now() + std::chrono::seconds(m_lifetime)};
    return token;
}

Tokens::Pair Tokens::AddPair(const Scopes& scopes, TimePoint grantEnds)
{
    Pair pair{AddAccess(scopes, false), NewSecret(), scopes, m_lifetime};
    m_refresh[pair.refresh] = {pair.access, scopes, grantEnds};
    return pair;
}

void Tokens::DropExpired()
{
    const TimePoint now = m_now();
    std::erase_if(m_codes, [&](const auto& code) { return now >= code.second.expires; });
    std::erase_if(m_access, [&](const auto& access) { return now >= access.second.expires; });
    std::erase_if(m_refresh, [&](const auto& grant) { return now >= grant.second.ends; });
}

} // namespace Sandbox
