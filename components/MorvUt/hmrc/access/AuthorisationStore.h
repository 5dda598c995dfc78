#pragma once

// Where the OAuth tokens of a Government Gateway ID rest: a row of the practice's database.

#include <string>
#include <vector>

#include "HmrcApi/Host.h"
#include "MorvUt/Export.h"
#include "Shellkit/ProcessMark.h"

namespace Cellar
{
class CBufferedRowList;
}

namespace HmrcApi
{

/// The tokens of one Government Gateway ID (table MTDAuthorisation, key strGatewayID), and the lock row that keeps two
/// workstations from refreshing them at once (table MTDAuthorisationLock, whose primary key is the lock).
///
/// Tokens are held and stored enciphered. The database is touched by the first five operations, GetLockHolder and the
/// two static ones only. Tokens and lock rows are never written while a transaction is open on the current connection:
/// a rollback would take a single-use token with it.
class MORVUT_API CAuthorisationStore : public IAuthorisationStore, public ILockHolder
{
public:
    explicit CAuthorisationStore(const std::string& gatewayId = {});
    CAuthorisationStore(const CAuthorisationStore&) = default; // a copy holds no lock
    CAuthorisationStore& operator=(const CAuthorisationStore&) = default;
    ~CAuthorisationStore() override; // leaves the lock row in place

    /// Reads the row. False without one, for an empty id, and when the database fails.
    bool LoadTokens() override;
    /// Writes the row, which is made when it is not there. The consent's time (dtGranted) becomes the tokens' when
    /// the row was not authorised before. False, with nothing kept for sure, when the database fails.
    bool UpdateTokens() override;
    /// Takes the lock; false when it is held, also by this object. A lock older than 150 seconds was left behind: it is
    /// cleared, which is logged, and the lock tried again.
    bool LockStore() override;
    /// True when this object holds no lock afterwards.
    bool UnlockStore() override;
    /// Asks the database each time. Throws Cellar::DatabaseError.
    bool HasAuthenticatedGatewayID() const override;

    std::vector<unsigned char> GetAccessToken() override { return m_accessToken; }
    void SetAccessToken(const std::vector<unsigned char>& token) override { m_accessToken = token; }
    std::vector<unsigned char> GetRefreshToken() override { return m_refreshToken; }
    void SetRefreshToken(const std::vector<unsigned char>& token) override { m_refreshToken = token; }
    std::int32_t GetExpiresIn() const override { return m_expiresIn; }
    void SetExpiresIn(std::int32_t seconds) override { m_expiresIn = seconds; }
    std::string GetScope() override { return m_scope; }
    void SetScope(const std::string& scope) override { m_scope = scope; }
    std::string GetTokenType() override { return m_tokenType; }
    void SetTokenType(const std::string& type) override { m_tokenType = type; }
    COleDateTime GetAuthenticatedTimestamp() override { return m_authenticated; }
    void SetAuthenticatedTimestamp(const COleDateTime& timestamp) override { m_authenticated = timestamp; }
    void SetAuthorisationStatus(AuthorisationStatus status) override { m_status = status; }
    AuthorisationStatus GetAuthorisationStatus() override { return m_status; }
    std::uint32_t GetRetryDelay() const override { return m_retryDelay; }
    void SetRetryDelay(std::uint32_t milliseconds) override { m_retryDelay = milliseconds; }

    bool GetLockHolder(std::string& workstation, std::string& user) override;
    /// Where a cleared lock is logged; null: with a chain id of its own. Must outlive the store and its copies.
    void SetLogger(IChainLogger* logger) noexcept { m_logger = logger; }

    /// Registers a Government Gateway ID: a row with status 0 and no tokens. False when it is there already, for an
    /// empty id or one that holds a single quote, and when the database fails.
    static bool CreateGatewayID(const std::string& gatewayId);
    /// False when there is no such row, and when the database fails.
    static bool DeleteGatewayId(const std::string& gatewayId);

private:
    /// This object's own hold on the lock; no copy inherits it.
    struct Hold
    {
        Hold() noexcept = default;
        Hold(const Hold&) noexcept {}
        Hold& operator=(const Hold&) noexcept
        {
            isHeld = false;
            mark.Clear();
            return *this;
        }
        bool isHeld = false;
        Shellkit::ProcessMark mark; // others of this computer see by it that the holder lives
    };

    bool FindRowId();
    bool InsertLock();
    bool IsLeftBehind(Cellar::CBufferedRowList& lock) const;
    bool ClearStaleLock() const;
    void LogClearedLock(const std::string& workstation, const std::string& user) const;

    std::string m_gatewayId;
    long m_rowId = 0; // 0: not known yet
    std::int32_t m_expiresIn = 0;
    std::string m_scope;
    std::string m_tokenType;
    Hold m_lock;
    bool m_isLoaded = false;
    AuthorisationStatus m_status = NotAuthorised;
    COleDateTime m_authenticated;
    std::vector<unsigned char> m_accessToken;
    std::vector<unsigned char> m_refreshToken;
    std::uint32_t m_retryDelay = 500;
    IChainLogger* m_logger = nullptr;
};

} // namespace HmrcApi
