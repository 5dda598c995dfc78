#include "HmrcApi/oauth/StoredGrant.h"

#include <algorithm>

#include "Afx/time/Clock.h"
#include "HmrcApi/oauth/Deadline.h"

namespace HmrcApi
{
namespace
{

constexpr int kStoreAttempts = 3;
constexpr std::int64_t kLongestSaving = 60'000; // milliseconds for which a new pair waits for a busy database
constexpr unsigned kLongestWait = 1000; // milliseconds between two; others take a lock over soon after its two minutes
constexpr double kSecondsADay = 86'400;
constexpr char kOtherWrites[] = "Another program is writing to the practice, or reads it for long";

[[noreturn]] void Fail(const char* code, std::string text) { throw HmrcApiErrorException(code, std::move(text), {}); }

std::string HostOf(const std::string& service)
{
    const std::size_t scheme = service.find("://");
    const std::size_t host = scheme == std::string::npos ? 0 : scheme + 3;
    return service.substr(host, service.find('/', host) - host);
}

} // namespace

/// False when there is no row.
bool StoredGrant::Load()
{
    if (m_store.LoadTokens()) {
        m_loaded = m_store.GetRefreshToken();
        return true;
    }
    if (IsBusy())
        Fail("REFRESH_BUSY", kOtherWrites);
    if (const std::string problem = m_extras ? m_extras->GetProblem() : std::string(); !problem.empty())
        Fail("DATABASE_UNREADABLE", "The practice's database cannot be read: " + problem);
    return false;
}

HeldTokens StoredGrant::Read()
{
    if (!Load())
        Fail("NO_CREDENTIALS", "Unable to load user's HMRC credentials");
    if (m_store.GetAuthorisationStatus() != IAuthorisationStore::Authorised || m_store.GetAccessToken().empty())
        Fail("NOT_AUTHORISED", "HMRC has not been authorised for this Government Gateway user ID");
    std::string stored = m_extras ? m_extras->GetService() : std::string();
    if (stored.empty())
        stored = kProductionService;
    if (stored != m_service)
        Fail("WRONG_SERVICE", "The authority of this Government Gateway user ID is for " + HostOf(stored) +
                                  ", not for " + HostOf(m_service) + ": authorise for this service");
    HeldTokens held{{}, m_service, {}, true};
    held.tokens.accessToken = OpenToken(m_store.GetAccessToken());
    held.tokens.refreshToken = OpenToken(m_store.GetRefreshToken());
    held.tokens.tokenType = m_store.GetTokenType();
    held.tokens.scope = m_store.GetScope();
    held.tokens.expiresIn = m_store.GetExpiresIn();
    if (held.tokens.accessToken.empty()) {
        NeedKey();
        Fail("TOKENS_UNREADABLE", "The stored HMRC tokens cannot be read with this practice's key");
    }
    return held;
}

double StoredGrant::SecondsLeft() const
{
    const COleDateTime since = m_store.GetAuthenticatedTimestamp();
    if (since.GetStatus() != COleDateTime::valid)
        return 0;
    const double age = COleDateTime::GetCurrentUtcTime().GetOleDate() - since.GetOleDate();
    return m_store.GetExpiresIn() - age * kSecondsADay;
}

void StoredGrant::NeedKey() const
{
    if (!SealToken("key"))
        Fail("NO_PRACTICE_KEY", "The practice's key is missing, so HMRC's tokens can neither be read nor stored");
}

void StoredGrant::FailForGood() const
{
    if (const std::string problem = m_extras ? m_extras->GetProblem() : std::string(); !problem.empty())
        Fail("TOKENS_NOT_SAVED", std::string(kNotSaved) + ": " + problem);
}

void StoredGrant::FailToSave() const
{
    FailForGood();
    Fail("TOKENS_NOT_SAVED", kNotSaved);
}

/// In the store's memory, with status 1, the time and the service.
void StoredGrant::Put(const COAuth2Tokens& tokens) const
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
    if (m_extras)
        m_extras->SetService(m_service);
}

/// Writes what `put` puts over what was read last. A store that cannot do that in one step is asked just before.
StoredGrant::Update StoredGrant::UpdateLoaded(const std::function<void()>& put)
{
    if (m_extras) {
        put();
        return m_extras->UpdateLoaded();
    }
    if (!m_store.HasAuthenticatedGatewayID() || (m_store.LoadTokens() && m_store.GetRefreshToken() != m_loaded))
        return Update::Replaced;
    put();
    return m_store.UpdateTokens() ? Update::Done : Update::Failed;
}

/// A few times, and while the database is only busy for up to `longest` milliseconds.
StoredGrant::Update StoredGrant::Repeated(const std::function<Update()>& update, std::int64_t longest) const
{
    const Deadline deadline(longest);
    for (int attempt = 1;; ++attempt) {
        const Update result = update();
        const bool mayGoOn = attempt < kStoreAttempts || (IsBusy() && !deadline.IsOver());
        if (result != Update::Failed || !mayGoOn)
            return result;
        Afx::Clock::Sleep(std::min(m_store.GetRetryDelay(), kLongestWait));
    }
}

void StoredGrant::Save(HeldTokens& held)
{
    const HeldTokens ours = held;
    for (int attempt = 0; attempt < kStoreAttempts; ++attempt) {
        const Update result = Repeated(
            [&] {
                if (!ours.replaced.empty())
                    return UpdateLoaded([&] { Put(ours.tokens); });
                Put(ours.tokens);
                return (m_extras ? m_extras->UpdateConsent() : m_store.UpdateTokens()) ? Update::Done : Update::Failed;
            },
            kLongestSaving);
        if (result == Update::Done)
            held.isSaved = true;
        if (result != Update::Replaced)
            break;
        held = {}; // another's count now, or none
        held = Read();
        if (held.tokens.refreshToken != ours.replaced)
            return;
        held = ours; // the old pair is still there, only written anew
    }
    if (!held.isSaved)
        FailToSave();
}

bool StoredGrant::End()
{
    const auto put = [this] { m_store.SetAuthorisationStatus(IAuthorisationStore::NotAuthorised); };
    return Repeated([&] { return UpdateLoaded(put); }) != Update::Replaced;
}

void StoredGrant::Reset()
{
    const auto put = [this] { m_store.SetAuthorisationStatus(IAuthorisationStore::NotAuthorised); };
    for (int attempt = 0; attempt < kStoreAttempts; ++attempt) {
        if (!Load())
            return; // nothing to end; the consent makes the row
        if (!m_extras) {
            put();
            if (m_store.UpdateTokens())
                return;
            break;
        }
        m_isReset = m_store.GetAuthorisationStatus() == IAuthorisationStore::Authorised;
        const Update result = UpdateLoaded(put);
        if (result == Update::Done)
            return;
        if (result == Update::Failed)
            break;
    }
    FailToSave();
}

void StoredGrant::Restore()
{
    if (m_isReset)
        Repeated([this] {
            return UpdateLoaded([this] { m_store.SetAuthorisationStatus(IAuthorisationStore::Authorised); });
        });
}

void StoredGrant::Rehearse() const
{
    NeedKey();
    if (!m_extras || m_extras->Rehearse())
        return;
    FailForGood();
    Fail("REFRESH_BUSY", kOtherWrites);
}

HmrcApiErrorException StoredGrant::Busy() const
{
    std::string workstation, user;
    if (!m_extras || !m_extras->GetLockHolder(workstation, user))
        return {"REFRESH_BUSY",
                "The authorisation is being refreshed at another workstation, or another program is writing to the "
                "practice",
                {}};
    return {"REFRESH_BUSY", "The authorisation is being refreshed at workstation " + workstation + " by " + user, {}};
}

} // namespace HmrcApi
