#pragma once

// What the plumbing asks of its host: where tokens rest, what the application is, and where log lines go.

#include <cstdint>
#include <string>
#include <vector>

#include "Afx/Platform.h"
#include "Afx/time/DateTime.h"
#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// The OAuth tokens of one Government Gateway user ID, and the lock that keeps two workstations from refreshing at
/// once. Tokens are held and stored enciphered, as CAuthorisation::EncryptToken makes them. The getters and setters
/// work on a copy in memory: LoadTokens reads it from where it rests, UpdateTokens writes it there.
class HMRCAPI_API IAuthorisationStore
{
public:
    enum AuthorisationStatus : std::int16_t
    {
        NotAuthorised = 0,
        Authorised = 1
    };

    virtual ~IAuthorisationStore();
    virtual bool LoadTokens() = 0;   // false: there are none, or they cannot be read
    virtual bool UpdateTokens() = 0; // false: not kept; a single-use refresh token is lost then unless tried again
    virtual bool LockStore() = 0;    // false at once when another holds it
    virtual bool UnlockStore() = 0;
    virtual bool HasAuthenticatedGatewayID() const = 0;
    virtual std::vector<unsigned char> GetAccessToken() = 0;
    virtual void SetAccessToken(const std::vector<unsigned char>& token) = 0;
    virtual std::vector<unsigned char> GetRefreshToken() = 0;
    virtual void SetRefreshToken(const std::vector<unsigned char>& token) = 0;
    virtual std::int32_t GetExpiresIn() const = 0; // seconds that the access token holds; 14400 at HMRC
    virtual void SetExpiresIn(std::int32_t seconds) = 0;
    virtual std::string GetScope() = 0;
    virtual void SetScope(const std::string& scope) = 0;
    virtual std::string GetTokenType() = 0;
    virtual void SetTokenType(const std::string& type) = 0;
    virtual COleDateTime GetAuthenticatedTimestamp() = 0; // when HMRC gave the tokens, UTC
    virtual void SetAuthenticatedTimestamp(const COleDateTime& timestamp) = 0;
    virtual void SetAuthorisationStatus(AuthorisationStatus status) = 0;
    virtual AuthorisationStatus GetAuthorisationStatus() = 0;
    virtual std::uint32_t GetRetryDelay() const = 0; // milliseconds between two tries at the lock
    virtual void SetRetryDelay(std::uint32_t milliseconds) = 0;
};

/// HMRC's production service, as grants keep it; also that of grants which name none.
inline constexpr char kProductionService[] = "https://api.service.hmrc.gov.uk";

/// What a store may do beside IAuthorisationStore. Without it tokens count as those of HMRC's production service, a
/// refresh cannot name who holds the lock, what another stores in the moment before an update is written over, and
/// nothing shows beforehand that the store has no room.
class HMRCAPI_API IGrantStore
{
public:
    enum class Update : std::int8_t
    {
        Failed,
        Done,
        Replaced // what was to be written over is not there any more; nothing was written
    };

    virtual ~IGrantStore();
    /// The service that gave the tokens; empty: not known, and an update leaves the stored one.
    virtual std::string GetService() = 0;
    virtual void SetService(const std::string& service) = 0;
    /// Writes the tokens, never the service, over what LoadTokens read last, in one step with the test that tokens and
    /// status are still those.
    virtual Update UpdateLoaded() = 0;
    /// Writes tokens and service as a new consent's, with its time, over whatever is there; makes the row if need be.
    virtual bool UpdateConsent() = 0;
    /// True when new tokens can be stored now, however long they are. Changes nothing that is read.
    virtual bool Rehearse() = 0;
    /// Why the last operation failed, for people, when waiting does not help: no room, no right. Else empty.
    virtual std::string GetProblem() = 0;
    /// The last operation failed because another program has the database.
    virtual bool IsBusy() = 0;
    /// False when nobody holds the lock, or it cannot be told.
    virtual bool GetLockHolder(std::string& workstation, std::string& user) = 0;
};

class HMRCAPI_API IScope
{
public:
    virtual ~IScope();
    /// The scopes to ask for, separated by single blanks.
    virtual std::string GetScope() = 0;
    virtual void SetScope(const std::string& scope) = 0;
};

class HMRCAPI_API IClientData
{
public:
    virtual ~IClientData();
    virtual std::string GetId() = 0; // empty: this build has no credentials
    virtual std::string GetSecret() = 0;
    virtual std::string GetAuthenticationEndpoint() = 0; // absolute, ends in '/'
    virtual std::string GetAPIEndpoint() = 0;
};

class HMRCAPI_API IChainLogger
{
public:
    virtual ~IChainLogger();
    virtual void SetChainId(const GUID& id) = 0;
    virtual const GUID& GetChainId() = 0;
    virtual std::string GetChainIdString() = 0;
    virtual bool IsDebugLogging() = 0;
    /// Event, interface, request, response, detail. The plumbing masks tokens, secrets and National Insurance numbers
    /// before it calls this.
    virtual void Log(const std::string& a1, const std::string& a2, const std::string& a3, const std::string& a4,
                     const std::string& a5) = 0;
};

/// Canned answers in place of HMRC's.
class HMRCAPI_API IEndpointOverride
{
public:
    /// 0 asks HMRC; each other value is one of HMRC's published examples.
    enum ResponseType : std::int32_t
    {
        Live = 0,
        Everything = 1,
        EverythingMissingPayAndTax = 2,
        Employed = 3,
        Employed2 = 4,
        Pensioner = 5,
        Jobseeker = 6
    };
    virtual ~IEndpointOverride();
};

} // namespace HmrcApi
