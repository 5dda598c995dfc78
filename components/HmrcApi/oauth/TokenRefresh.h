#pragma once

// The refresh of tokens that several workstations share.

#include <functional>

#include "HmrcApi/Host.h"
#include "HmrcApi/oauth/Deadline.h"
#include "HmrcApi/oauth/Service.h"
#include "HmrcApi/oauth/StoredGrant.h"
#include "HmrcApi/oauth/TokenRequest.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

/// One refresh. It takes the store's lock, reads the tokens again (another workstation may have been quicker), tries
/// whether new ones could be stored, asks HMRC, and stores the new pair before anything uses it: a refresh token is
/// good for one use only.
///
/// Waiting and asking end within two minutes, and the saving soon after, so that others may take an older lock for one
/// left behind; who has slept through that time asks no further. From the lock to the stored pair nothing ends the
/// program.
class TokenRefresh
{
public:
    TokenRefresh(StoredGrant& grant, ITransport& transport, const Service& service,
                 const std::function<bool()>& cancelled, IChainLogger* logger)
        : m_grant(grant), m_transport(transport), m_service(service), m_cancelled(cancelled), m_logger(logger)
    {}

    /// `held` is the pair that is over, afterwards the one that counts: with TOKENS_NOT_SAVED a new pair that is not
    /// saved; with INVALID_GRANT none, and the store's status is 0. Throws HmrcApiErrorException.
    void Run(HeldTokens& held);

private:
    class Lock;
    bool WaitForLock(Lock& lock, HeldTokens& held) const;
    bool TakeReplaced(HeldTokens& held) const;
    void AskUntilAnswered(HeldTokens& held) const;
    bool HasTimeToAsk() const;
    TokenAnswer Ask(const COAuth2Tokens& tokens) const;
    void Keep(const TokenAnswer& answer, HeldTokens& held) const;
    void EndGrant(const TokenAnswer& answer, HeldTokens& held) const;

    StoredGrant& m_grant;
    ITransport& m_transport;
    const Service& m_service;
    const std::function<bool()>& m_cancelled;
    IChainLogger* m_logger;
    Deadline m_deadline{120'000};
};

} // namespace HmrcApi
