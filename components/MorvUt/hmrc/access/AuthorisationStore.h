#pragma once

// Where the OAuth tokens of a Government Gateway user ID rest: a row of the practice's database.

#include <optional>
#include <string>
#include <vector>

#include "HmrcApi/Host.h"
#include "MorvUt/Export.h"
#include "MorvUt/users/locks/LockRow.h"

namespace HmrcApi
{

/// The tokens of one Government Gateway user ID (table MTDAuthorisation, key strGatewayID), and the lock row that keeps
/// two workstations from refreshing them at once (table MTDAuthorisationLock, whose primary key is the lock).
///
/// Tokens are held and stored enciphered. The database is touched by the first five operations, the two further
/// updates, Rehearse, GetLockHolder and the two static ones only. Tokens and lock rows are written aside from open
/// transactions, so that no rollback takes a single-use token; where one has begun already, writing them is refused.
class MORVUT_API CAuthorisationStore : public IAuthorisationStore, public IGrantStore
{
public:
    explicit CAuthorisationStore(const std::string& gatewayId = {});
    CAuthorisationStore(const CAuthorisationStore&) = default; // a copy holds no lock
    CAuthorisationStore& operator=(const CAuthorisationStore&) = default;
    ~CAuthorisationStore() override; // leaves the lock row in place

    /// Reads the row. False without one, for an empty id, and when the database fails.
    bool LoadTokens() override;
    /// Writes the row, which is made when it is not there. The consent's time (dtGranted) becomes the tokens' when
    /// the row was not authorised before, or for another service than the one set here. False, with nothing kept for
    /// sure, on any exception.
    bool UpdateTokens() override;
    /// Takes the lock; false when it is held, also by this object unless it gave it up before. A lock that was left
    /// behind is cleared, which is logged, and the lock tried again: at once when its program of this workstation no
    /// longer runs, never while that runs, after 150 seconds when nobody can be asked.
    bool LockStore() override;
    /// True when this object holds no lock afterwards. False when its row could not be removed; LockStore does it then.
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

    std::string GetService() override { return m_service; }
    void SetService(const std::string& service) override { m_service = service; }
    Update UpdateLoaded() override;
    bool UpdateConsent() override;
    /// Makes the row larger than new tokens make it, and as it was again.
    bool Rehearse() override;
    std::string GetProblem() override { return m_problem; }
    bool IsBusy() override { return m_isBusy; }
    bool GetLockHolder(std::string& workstation, std::string& user) override;
    /// Where a cleared lock is logged; null: with a chain id of its own. Must outlive the store and its copies.
    void SetLogger(IChainLogger* logger) noexcept { m_logger = logger; }

    /// Registers a Government Gateway user ID: a row with status 0 and no tokens. False when it is there already, for
    /// one that holds a single quote, and when the database fails.
    static bool CreateGatewayID(const std::string& gatewayId);
    /// False when there is no such row, and when the database fails.
    static bool DeleteGatewayId(const std::string& gatewayId);

protected:
    /// The row as another store of the same gateway has read or written it last, in place of LoadTokens.
    void TakeRow(const CAuthorisationStore& other);

private:
    template<class Work>
    bool Try(Work work);
    template<class Work>
    bool TryAside(Work work);
    bool FindRowId(Cellar::CConnection& connection);
    template<class Work>
    bool TryInOneStep(Work work);
    bool IsNewConsent(Cellar::CConnection& connection) const;
    template<class IsConsent>
    bool UpdateRow(IsConsent isConsent);
    void Write(Cellar::CConnection& connection, bool isConsent);
    void Remember();
    void LogClearedLock(const LockHolder& holder) const;

    std::string m_gatewayId;
    long m_rowId = 0; // 0: not known yet
    std::int32_t m_expiresIn = 0;
    std::string m_scope;
    std::string m_tokenType;
    std::string m_service;
    std::string m_problem;
    LockRow m_lock;
    bool m_isBusy = false;
    AuthorisationStatus m_status = NotAuthorised;
    COleDateTime m_authenticated;
    std::vector<unsigned char> m_accessToken;
    std::vector<unsigned char> m_refreshToken;
    std::uint32_t m_retryDelay = 500;
    IChainLogger* m_logger = nullptr;

    struct Row
    {
        AuthorisationStatus status;
        std::vector<unsigned char> accessToken, refreshToken;
    };
    std::optional<Row> m_row; // as it was read or written last
};

} // namespace HmrcApi
