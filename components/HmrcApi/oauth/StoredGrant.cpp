#include "HmrcApi/oauth/StoredGrant.h"

#include "Afx/Clock.h"
#include "Afx/TextFold.h"

namespace HmrcApi
{
namespace
{

constexpr int kSaveAttempts = 3;
constexpr double kSecondsADay = 86'400;
constexpr char kProduction[] = "https://api.service.hmrc.gov.uk"; // of rows from before services were kept

[[noreturn]] void Fail(const char* code, std::string text) { throw HmrcApiErrorException(code, std::move(text), {}); }

IGrantStore* Extras(IAuthorisationStore& store) { return dynamic_cast<IGrantStore*>(&store); }

std::string StoredService(IAuthorisationStore& store)
{
    IGrantStore* const extras = Extras(store);
    const std::string service = extras ? extras->GetService() : std::string();
    return service.empty() ? kProduction : service;
}

std::string HostOf(const std::string& service)
{
    const std::size_t scheme = service.find("://");
    const std::size_t host = scheme == std::string::npos ? 0 : scheme + 3;
    return service.substr(host, service.find('/', host) - host);
}

} // namespace

void NeedCredentials(IClientData& clientData)
{
    if (clientData.GetId().empty())
        Fail("NO_CREDENTIALS_FILE", "This program was delivered without HMRC's credentials (built without cmake "
                                    "-DMORVUT_HMRC_CREDENTIALS=FILE)");
}

std::string ServiceOf(const std::string& base)
{
    std::string service = Afx::FoldLower(base);
    while (service.ends_with('/'))
        service.pop_back();
    for (const std::string_view port : {"https:443", "http:80"}) {
        const std::size_t colon = port.find(':');
        if (service.starts_with(std::string(port.substr(0, colon)) + "://") && service.ends_with(port.substr(colon)))
            service.resize(service.size() - (port.size() - colon));
    }
    return service;
}

COAuth2Tokens StoredGrant::Read() const
{
    if (!m_store.LoadTokens())
        Fail("NO_CREDENTIALS", "Unable to load user's HMRC credentials");
    if (m_store.GetAuthorisationStatus() != IAuthorisationStore::Authorised || m_store.GetAccessToken().empty())
        Fail("NOT_AUTHORISED", "HMRC has not been authorised for this Government Gateway user ID");
    const std::string stored = StoredService(m_store), asked = ServiceOf(m_clientData.GetAuthenticationEndpoint());
    if (stored != asked)
        Fail("WRONG_SERVICE", "The authority of this Government Gateway user ID is for " + HostOf(stored) +
                                  ", not for " + HostOf(asked) + ": authorise for this service");
    COAuth2Tokens tokens;
    tokens.accessToken = OpenToken(m_store.GetAccessToken());
    tokens.refreshToken = OpenToken(m_store.GetRefreshToken());
    tokens.tokenType = m_store.GetTokenType();
    tokens.scope = m_store.GetScope();
    tokens.expiresIn = m_store.GetExpiresIn();
    if (tokens.accessToken.empty()) {
        NeedKey();
        Fail("TOKENS_UNREADABLE", "The stored HMRC tokens cannot be read with this practice's key");
    }
    return tokens;
}

double StoredGrant::SecondsLeft() const
{
    const COleDateTime since = m_store.GetAuthenticatedTimestamp();
    if (since.GetStatus() != COleDateTime::valid)
        return 0;
    const double age = COleDateTime::GetCurrentUtcTime().GetOleDate() - since.GetOleDate();
    return m_store.GetExpiresIn() - age * kSecondsADay;
}

bool StoredGrant::Holds(const COAuth2Tokens& tokens) const
{
    return !m_store.LoadTokens() || OpenToken(m_store.GetRefreshToken()) == tokens.refreshToken;
}

void StoredGrant::NeedKey() const
{
    if (!SealToken("key"))
        Fail("NO_PRACTICE_KEY", "The practice's key is missing, so HMRC's tokens can neither be read nor stored");
}

bool StoredGrant::Update() const
{
    for (int attempt = 0; attempt < kSaveAttempts; ++attempt) {
        if (attempt > 0)
            Afx::Clock::Sleep(m_store.GetRetryDelay());
        if (m_store.UpdateTokens())
            return true;
    }
    return false;
}

void StoredGrant::FailForGood() const
{
    IGrantStore* const extras = Extras(m_store);
    if (const std::string problem = extras ? extras->GetProblem() : std::string(); !problem.empty())
        Fail("TOKENS_NOT_SAVED", "The practice's database cannot keep HMRC's tokens: " + problem);
}

void StoredGrant::Save(const COAuth2Tokens& tokens) const
{
    const auto access = SealToken(tokens.accessToken), refresh = SealToken(tokens.refreshToken);
    if (!access || !refresh)
        NeedKey();
    m_store.SetAccessToken(access.value());
    m_store.SetRefreshToken(refresh.value());
    m_store.SetExpiresIn(tokens.expiresIn);
    m_store.SetScope(tokens.scope);
    m_store.SetTokenType(tokens.tokenType);
    m_store.SetAuthenticatedTimestamp(COleDateTime::GetCurrentUtcTime());
    m_store.SetAuthorisationStatus(IAuthorisationStore::Authorised);
    if (IGrantStore* const extras = Extras(m_store))
        extras->SetService(ServiceOf(m_clientData.GetAuthenticationEndpoint()));
    if (Update())
        return;
    FailForGood();
    Fail("TOKENS_NOT_SAVED", "The practice's database cannot keep HMRC's tokens");
}

bool StoredGrant::End() const
{
    m_store.SetAuthorisationStatus(IAuthorisationStore::NotAuthorised);
    return Update();
}

void StoredGrant::Rehearse() const
{
    NeedKey();
    IGrantStore* const extras = Extras(m_store);
    if (!extras || extras->Rehearse())
        return;
    FailForGood();
    Fail("REFRESH_BUSY", "Another program is writing to the practice");
}

HmrcApiErrorException StoredGrant::Busy() const
{
    std::string workstation, user;
    IGrantStore* const extras = Extras(m_store);
    if (!extras || !extras->GetLockHolder(workstation, user))
        return {"REFRESH_BUSY",
                "The authorisation is being refreshed at another workstation, or another program is writing to the "
                "practice",
                {}};
    return {"REFRESH_BUSY", "The authorisation is being refreshed at workstation " + workstation + " by " + user, {}};
}

} // namespace HmrcApi
