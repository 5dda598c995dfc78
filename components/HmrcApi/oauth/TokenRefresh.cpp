#include "HmrcApi/oauth/TokenRefresh.h"

#include <algorithm>
#include <optional>

#include "Afx/system/SignalGuard.h"
#include "Afx/text/TextFold.h"
#include "HmrcApi/transport/Waiting.h"

namespace HmrcApi
{
namespace
{

constexpr int kAttempts = 10;            // at the store's lock, and at a refresh that HMRC is still busy with
constexpr unsigned kLeastToAsk = 10'000; // milliseconds; an answer that comes later than the deadline loses the grant

bool IsInProgress(const TokenAnswer& answer)
{
    return answer.error.code == "INVALID_REQUEST" &&
           Afx::FoldLower(answer.error.message).find("in progress") != std::string::npos;
}

[[noreturn]] void Fail(const char* code, const char* text) { throw HmrcApiErrorException(code, text, {}); }

} // namespace

/// Gives the store's lock back on every way out. While it has it, nothing ends the program.
class TokenRefresh::Lock
{
public:
    explicit Lock(IAuthorisationStore& store) : m_store(store) {}
    ~Lock()
    {
        try {
            if (m_guard)
                m_store.UnlockStore();
        } catch (...) { // a lock that cannot be given back is cleared by whoever meets it
        }
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    bool Take()
    {
        m_guard.emplace();
        if (m_store.LockStore())
            return true;
        m_guard.reset();
        return false;
    }

private:
    IAuthorisationStore& m_store;
    std::optional<Afx::SignalGuard> m_guard;
};

void TokenRefresh::Run(HeldTokens& held)
{
    Lock lock(m_grant.Store());
    if (!WaitForLock(lock, held) || TakeReplaced(held))
        return;
    if (held.tokens.refreshToken.empty())
        Fail("NOT_AUTHORISED", "HMRC's authorisation cannot be refreshed and must be given again");
    m_grant.Rehearse();
    AskUntilAnswered(held);
}

/// Takes the store's tokens; true when they are others than those in hand.
bool TokenRefresh::TakeReplaced(HeldTokens& held) const
{
    const HeldTokens stored = m_grant.Read();
    const bool isReplaced = stored.tokens.accessToken != held.tokens.accessToken;
    held = stored;
    return isReplaced;
}

/// True with the lock; false when another workstation has put new tokens there meanwhile.
bool TokenRefresh::WaitForLock(Lock& lock, HeldTokens& held) const
{
    for (int attempt = 1;; ++attempt) {
        if (lock.Take())
            return true;
        m_grant.FailForGood();
        const bool isDatabaseBusy = m_grant.IsBusy(); // the store has waited by itself
        if (TakeReplaced(held))
            return false;
        if (isDatabaseBusy || attempt >= kAttempts || m_deadline.IsOver())
            throw m_grant.Busy();
        if (!WaitUnless(m_cancelled, std::min(m_grant.Store().GetRetryDelay(), m_deadline.Left())))
            Fail("CANCELLED", "The request was cancelled");
    }
}

bool TokenRefresh::HasTimeToAsk() const { return m_deadline.Left() >= kLeastToAsk; }

/// Asks HMRC, with the lock held and the stored tokens in hand.
void TokenRefresh::AskUntilAnswered(HeldTokens& held) const
{
    bool mayRepeat = true;
    for (int busy = 0;;) {
        if (Afx::SignalGuard::IsSignalWaiting())
            Fail("CANCELLED", "The request was cancelled");
        if (!HasTimeToAsk())
            Fail("TIMED_OUT", "The refresh of HMRC's authorisation took too long and was given up");
        const TokenAnswer answer = Ask(held.tokens);
        if (answer.tokens)
            return Keep(answer, held);
        Trace(m_logger, "Refresh", answer);
        if (answer.IsLost() && mayRepeat && HasTimeToAsk()) {
            mayRepeat = false; // once, with the same token: if HMRC had granted the first, it now says so
            continue;
        }
        if (answer.error.code == "INVALID_GRANT")
            return EndGrant(answer, held);
        if (!IsInProgress(answer))
            throw ErrorOf(answer);
        if (++busy >= kAttempts || !HasTimeToAsk())
            Fail("REFRESH_BUSY", "HMRC is still busy with another refresh of this authorisation");
        Afx::Clock::Sleep(std::min(m_grant.Store().GetRetryDelay(), m_deadline.Left()));
        if (TakeReplaced(held))
            return;
    }
}

TokenAnswer TokenRefresh::Ask(const COAuth2Tokens& tokens) const
{
    const FormFields fields{{"grant_type", "refresh_token"}, {"refresh_token", tokens.refreshToken}};
    return RequestTokens(m_transport, m_service, fields, {}, m_deadline.Left());
}

/// Stores first of all. What another has stored meanwhile is newer: by a new consent, or because this one was late.
void TokenRefresh::Keep(const TokenAnswer& answer, HeldTokens& held) const
{
    HeldTokens fresh{*answer.tokens, held.service, held.tokens.refreshToken, false};
    if (fresh.tokens.scope.empty())
        fresh.tokens.scope = held.tokens.scope; // a refresh's answer leaves it out
    held = fresh;
    m_grant.Save(held);
    Trace(m_logger, "Refresh", answer);
}

/// The refresh token is used, revoked or too old: nothing but a new dialogue helps. Unless it is another workstation's
/// doing, which has the new pair.
void TokenRefresh::EndGrant(const TokenAnswer& answer, HeldTokens& held) const
{
    const std::string ended = held.tokens.refreshToken;
    for (int attempt = 0; attempt < kAttempts && !m_grant.End(); ++attempt) {
        held = m_grant.Read();
        if (held.tokens.refreshToken != ended)
            return;
    }
    held = {};
    throw HmrcApiErrorException("INVALID_GRANT", "HMRC's authorisation has ended and must be given again", {},
                                std::to_string(answer.answer.status));
}

} // namespace HmrcApi
