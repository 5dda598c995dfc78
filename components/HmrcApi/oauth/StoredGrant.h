#pragma once

// A grant as it rests in the store, and what the store may refuse.

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/oauth/Tokens.h"

namespace HmrcApi
{

inline constexpr char kNotSaved[] = "The practice's database cannot keep HMRC's tokens";

/// Tokens in hand, and how they stand to the store's.
struct HeldTokens
{
    COAuth2Tokens tokens;
    std::string service;  // that they are for
    std::string replaced; // not saved: the refresh token that they were given for; empty when by a consent
    bool isSaved = true;
};

/// Reads and writes the tokens of a store for one service, each by one operation that throws HmrcApiErrorException with
/// the cause. Tokens count only for the service that gave them.
class StoredGrant
{
public:
    StoredGrant(IAuthorisationStore& store, std::string service)
        : m_store(store), m_extras(dynamic_cast<IGrantStore*>(&store)), m_service(std::move(service))
    {}

    IAuthorisationStore& Store() const noexcept { return m_store; }

    /// NO_CREDENTIALS (no row), NOT_AUTHORISED, WRONG_SERVICE, NO_PRACTICE_KEY, TOKENS_UNREADABLE; REFRESH_BUSY and
    /// DATABASE_UNREADABLE when the store itself fails.
    HeldTokens Read();
    /// Seconds until the access token that was read last ends; nothing to go by counts as ended.
    HMRCAPI_API double SecondsLeft() const;

    /// Stores tokens that are not saved: a consent's over whatever is there; a refresh's only over the pair that they
    /// replace. When that was replaced by others, these are in `held` afterwards; when it was ended or deleted, none,
    /// and Read's error. Tries up to three times. NO_PRACTICE_KEY, TOKENS_NOT_SAVED.
    void Save(HeldTokens& held);
    /// Status 0 for what was read last. False, and nothing changes, when somebody has replaced it.
    bool End();
    /// Status 0 for whatever is there, before a new consent. TOKENS_NOT_SAVED and Read's errors of the store.
    void Reset();
    /// Takes Reset back, as far as it went, where nobody was asked for a new consent; not what somebody has changed
    /// since.
    void Restore();
    /// What Save needs is there: the key, the right to write, room. NO_PRACTICE_KEY, TOKENS_NOT_SAVED, REFRESH_BUSY.
    void Rehearse() const;

    void NeedKey() const;
    /// Throws TOKENS_NOT_SAVED when the store's last failure is none that passes.
    void FailForGood() const;
    /// The store's last operation failed because another program had the database for as long as the store waits.
    bool IsBusy() const { return m_extras && m_extras->IsBusy(); }
    /// Why the lock is not given.
    HmrcApiErrorException Busy() const;

private:
    using Update = IGrantStore::Update;

    bool Load();
    void Put(const COAuth2Tokens& tokens) const;
    Update UpdateLoaded(const std::function<void()>& put);
    Update Repeated(const std::function<Update()>& update, std::int64_t longest = 0) const;
    [[noreturn]] void FailToSave() const;

    IAuthorisationStore& m_store;
    IGrantStore* m_extras; // null: the store has none
    std::string m_service;
    std::vector<unsigned char> m_loaded; // the refresh token as it was read last
    bool m_isReset = false;              // and was authorised before
};

} // namespace HmrcApi
