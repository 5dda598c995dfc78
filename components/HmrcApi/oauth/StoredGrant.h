#pragma once

// A grant as it rests in the store, and what the store may refuse.

#include <string>

#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/oauth/Tokens.h"

namespace HmrcApi
{

/// Reads and writes the tokens of a store, each by one operation that throws HmrcApiErrorException with the cause.
/// Tokens count only for the service that gave them.
class StoredGrant
{
public:
    StoredGrant(IAuthorisationStore& store, IClientData& clientData) : m_store(store), m_clientData(clientData) {}

    IAuthorisationStore& Store() const noexcept { return m_store; }

    /// NO_CREDENTIALS (no row), NOT_AUTHORISED, WRONG_SERVICE, NO_PRACTICE_KEY or TOKENS_UNREADABLE.
    COAuth2Tokens Read() const;
    /// Seconds until the access token that was read last ends; nothing to go by counts as ended.
    double SecondsLeft() const;
    /// False when somebody has replaced these tokens; true also when the store cannot be read.
    bool Holds(const COAuth2Tokens& tokens) const;

    /// With status 1, the time and the service; tries up to three times. NO_PRACTICE_KEY, TOKENS_NOT_SAVED.
    void Save(const COAuth2Tokens& tokens) const;
    /// Status 0; the tokens stay as they are. False when the store cannot be written.
    bool End() const;
    /// What Save needs is there: the key, the right to write, room. NO_PRACTICE_KEY, TOKENS_NOT_SAVED, REFRESH_BUSY.
    void Rehearse() const;

    void NeedKey() const;
    /// Throws TOKENS_NOT_SAVED when the store's last failure is none that passes.
    void FailForGood() const;
    /// Why the lock is not given.
    HmrcApiErrorException Busy() const;

private:
    bool Update() const;

    IAuthorisationStore& m_store;
    IClientData& m_clientData;
};

/// Throws NO_CREDENTIALS_FILE in a build without credentials, from which nothing may leave the machine.
void NeedCredentials(IClientData& clientData);

/// The service behind a base address, as grants keep it: without a slash at the end and without the scheme's own port.
std::string ServiceOf(const std::string& base);

} // namespace HmrcApi
