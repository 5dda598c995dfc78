#pragma once

// The refresh of tokens that several workstations share.

#include <functional>

#include "HmrcApi/Host.h"
#include "HmrcApi/oauth/Deadline.h"
#include "HmrcApi/oauth/StoredGrant.h"
#include "HmrcApi/oauth/TokenRequest.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

/// One refresh. It takes the store's lock, reads the tokens again (another workstation may have been quicker), tries
/// whether new ones could be stored, asks HMRC, and stores the new pair before anything uses it: a refresh token is
/// good for one use only.
///
/// All of it ends within two minutes, so that others may take a lock older than that for one left behind; who has
/// slept through that time goes on no further. From the lock to the stored pair nothing ends the program.
class TokenRefresh
{
public:
    TokenRefresh(const StoredGrant& grant, ITransport& transport, IClientData& clientData,
                 const std::function<bool()>& cancelled, IChainLogger* logger)
        : m_grant(grant), m_transport(transport), m_clientData(clientData), m_cancelled(cancelled), m_logger(logger)
    {}

    /// `tokens` holds the pair that is over, afterwards the one that counts. With TOKENS_NOT_SAVED that is a new pair
    /// that could not be stored; with INVALID_GRANT none, and the store's status is 0. Throws HmrcApiErrorException.
    void Run(COAuth2Tokens& tokens);

private:
    class Lock;
    bool WaitForLock(Lock& lock, COAuth2Tokens& tokens) const;
    bool TakeReplaced(COAuth2Tokens& tokens) const;
    void AskUntilAnswered(COAuth2Tokens& tokens) const;
    TokenAnswer Ask(const COAuth2Tokens& tokens) const;
    void Keep(const TokenAnswer& answer, COAuth2Tokens& tokens) const;
    void EndGrant(const TokenAnswer& answer, COAuth2Tokens& tokens) const;

    const StoredGrant& m_grant;
    ITransport& m_transport;
    IClientData& m_clientData;
    const std::function<bool()>& m_cancelled;
    IChainLogger* m_logger;
    Deadline m_deadline{120'000};
};

} // namespace HmrcApi
