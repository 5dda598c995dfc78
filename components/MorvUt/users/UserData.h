#pragma once

// Who is logged in, and what that user may do.

#include <span>
#include <vector>

#include "Afx/text/Collections.h"
#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// The user that is built in: never listed, and nobody can be added by that id in any case of its letters.
inline constexpr char kBuiltInAdministrator[] = "AdminMorv";

/// The logged-in user of the process. All state is static; an object is a handle whose construction logs the user out,
/// so the library and its programs use one, `TheUser()`, and never a temporary. For the user-interface thread.
class MORVUT_API CUserData
{
public:
    CUserData() noexcept;
    CUserData(const CUserData&) = delete;
    CUserData& operator=(const CUserData&) = delete;
    virtual ~CUserData();

    // Logging in.

    /// Loads the user with this id (any case): the listed users, the user's groups, permissions and particulars from
    /// the current connection. Always 1; an id that no user has leaves the particulars empty. When the database fails
    /// (Cellar::DatabaseError), everything is left as it was.
    ///
    /// Permissions that the new user's rows do not mention keep their state: whoever changes the user within a process
    /// calls ClearPermissions first.
    static int SetUser(const char* userId);
    /// Forgets all permissions: every query answers no.
    static void ClearPermissions() noexcept;
    int HasUserLoggedIn() const noexcept;
    void SetUserLoggedIn() noexcept;

    // Permissions.

    enum class Permission : int
    {
#define PERMISSION(number, query, enumerator) enumerator = number,
#define RESERVED(number, enumerator) enumerator = number,
#include "MorvUt/users/permissions.def"
#undef PERMISSION
#undef RESERVED
    };

    // One query for each permission: true when the logged-in user has it. A refusal is shown when `showMessage`.
#define PERMISSION(number, query, enumerator) bool query(bool showMessage) const;
#define RESERVED(number, enumerator)
#include "MorvUt/users/permissions.def"
#undef PERMISSION
#undef RESERVED

    /// One permission with its stored number and its query, to list them all.
    struct PermissionQuery
    {
        int number;
        const char* name; // of the query
        bool (CUserData::*query)(bool showMessage) const;
    };
    /// In the order of their numbers; reserved numbers are left out.
    static std::span<const PermissionQuery> GetPermissionQueries() noexcept;

    // What any user may do, read from the database. 1 or 0.
    static int IsTaxExchangeAllowedForUser(CString userId);
    static int UserHasReviewToolUse(CString userId);
    static int UserHasReviewToolViewEventsLog(CString userId);
    static int UserHasReviewToolStartOrCompleteReviewsAssignedToAnotherUser(CString userId);
    static int UserHasReviewToolFinaliseReviews(CString userId);
    static int UserHasReviewToolEditTolerances(CString userId);

    // Groups.

    struct CUserGroupItem
    {
        CUserGroupItem() = default;
        CUserGroupItem(const char* name, int id) : m_strName(name), m_nID(id) {}

        CString m_strName;
        int m_nID = 0;
    };

    /// 1 when the user is in the group of exactly this name.
    int HasGroup(const char* name) const noexcept;
    /// The names as a list of SQL texts: ('Audit', 'Tax'), or () for none. Names are not escaped: do not build
    /// statements with it, bind the names.
    CString GetGroupInList() const;

    // Particulars of the user, empty or 0 for a user that is not in the user table. The pointers hold until the next
    // SetUser.
    const char* GetFullUserName() const noexcept;
    const char* GetEmailAddress() const noexcept;
    const char* GetTelephone() const noexcept;
    const char* GetFBIUserName() const noexcept;
    /// The password for filing by internet, deciphered; empty when it cannot be deciphered.
    const char* GetFBIPassword() const noexcept;
    /// The same as it is stored.
    std::vector<unsigned char> GetEncryptedFBIPassword() const;
    int RememberFBIPassword() const noexcept;
    int FBICanSendImmediately() const noexcept;
    const char* GetGatewayID() const noexcept;
    const char* GetTallywickUserName() const noexcept;
    /// Deciphered after SetUser, enciphered (`Decrypt` gives it back) after SetTallywickUserNameAndPassword: then it
    /// may hold zero bytes, and its length is GetTallywickPasswordLength.
    const char* GetTallywickPassword() const noexcept;
    int GetTallywickPasswordLength() const noexcept;
    /// Keeps both in memory for this run, the password enciphered. Throws std::runtime_error when there is no cipher.
    void SetTallywickUserNameAndPassword(CString user, CString password);

    // Whether data may be changed. None of this is touched by SetUser.

    /// Locked by another user, opened with the read-only PIN, or within a local read-only operation.
    static int IsReadOnly();
    static int IsReadOnlyBecauseLocked() noexcept;
    static int IsReadOnlyPIN(); // every module of the process sees it
    static void SetReadOnly(int readOnly) noexcept;
    static void SetReadOnlyPIN(int readOnly);
    /// Around an operation that must not write; calls nest.
    static void SetLocalReadOnly() noexcept;
    static void ReleaseLocalReadOnly() noexcept; // more often than set: nothing
    /// 1, and the user is told, when IsReadOnly or IsReadOnlyBecauseLocked; otherwise 0 without a word.
    static int CheckForReadOnlyWithError();
    static int IsReadOnlyBecauseLockedWithError();

    static CString m_strUser;               // id, as stored
    static CStringArray m_arrUsers;         // ids of the listed users, ascending, without the built-in administrator
    static CStringArray m_arrUserFullnames; // their names, at the same places
    static CArray<CUserGroupItem> m_UserGroups;
    static int m_bReadOnly;              // another user has locked the current client
    static int m_nLocalReadOnly;         // depth of local read-only operations
    static CString m_strApplicationName; // from MorvUtStartUp, as the next
    static CString m_strKeyBase;         // base of the application's registry keys

private:
    static bool CheckPermission(Permission permission, bool showMessage);
    static int UserHasPermission(CString userId, int permission);
};

/// The one handle of the process.
MORVUT_API CUserData& TheUser() noexcept;
