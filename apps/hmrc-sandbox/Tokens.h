#pragma once

// What has been given out to the application, and how long it holds.

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace Sandbox
{

using TimePoint = std::chrono::steady_clock::time_point;

/// Where the time comes from; tests set their own.
using Now = std::function<TimePoint()>;

/// Told of each code and token as it is given out; may be empty.
using Issued = std::function<void(const std::string&)>;

using Scopes = std::set<std::string>;

/// Every scope that can be asked for.
const Scopes& KnownScopes();

/// The scopes of a blank-separated list.
Scopes ParseScopes(std::string_view text);

/// The list, separated by blanks.
std::string JoinScopes(const Scopes& scopes);

/// Authorisation codes, access tokens and refresh tokens that have been given out, and how long each holds.
class Tokens
{
public:
    /// What a code was given for; the token request must fit it.
    struct CodeGrant
    {
        std::string redirectUri;
        Scopes scopes;
        std::string challenge; // empty: none was sent
    };

    /// An access token's rights.
    struct Access
    {
        Scopes scopes;
        bool application; // of a client-credentials grant: no user stands behind it
        TimePoint expires;
    };

    /// A new access token; `refresh` is empty for an application.
    struct Pair
    {
        std::string access;
        std::string refresh;
        Scopes scopes;
        long long lifetime; // seconds
    };

    explicit Tokens(Now now, Issued issued = {});

    /// A code that holds for ten minutes.
    std::string IssueCode(CodeGrant grant);
    /// Nothing for a code that is unknown, used or expired.
    std::optional<CodeGrant> FindCode(const std::string& code) const;
    void UseCode(const std::string& code);

    /// A user's first pair, from which the grant's 18 months run.
    Pair Issue(const Scopes& scopes);
    /// A token for an application without a user.
    Pair IssueApplication(const Scopes& scopes);
    /// A new pair for a refresh token; the old pair ends at once. Nothing for one that is unknown, used or expired.
    std::optional<Pair> Refresh(const std::string& refresh);

    /// The rights of an access token; null when it is unknown, superseded or expired.
    const Access* FindAccess(const std::string& access) const;

    /// Every access token ends now; the refresh tokens still hold.
    void ExpireAccess();
    /// Every code ends now.
    void ExpireCodes();
    /// Every grant ends now, as when the user withdraws it.
    void RevokeAll();
    /// Takes a scope from every token that is out, and from what they are refreshed to.
    void DropScope(const std::string& scope);

    /// Seconds that tokens given out from now on hold.
    void SetLifetime(long long seconds) { m_lifetime = seconds; }
    long long GetLifetime() const { return m_lifetime; }

    static constexpr long long kLifetime = 14400;

private:
    struct Code
    {
        CodeGrant grant;
        TimePoint expires;
    };
    struct Grant
    {
        std::string access; // the token that a refresh supersedes
        Scopes scopes;
        TimePoint ends;
    };

    std::string AddAccess(const Scopes& scopes, bool application);
    Pair AddPair(const Scopes& scopes, TimePoint grantEnds);
    void DropExpired();

    std::string NewSecret();

    Now m_now;
    Issued m_issued;
    long long m_lifetime = kLifetime;
    std::map<std::string, Code> m_codes;
    std::map<std::string, Access> m_access;
    std::map<std::string, Grant> m_refresh;
};

} // namespace Sandbox
