#include <iterator>

#include "Afx/windows/MessageBox.h"
#include "Brix/Records.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/detail/LoggedIn.h"
#include "MorvUt/users/StaffRights.h"
#include "MorvUt/users/UserData.h"

namespace
{

constexpr int kNumbers[] = {
#define PERMISSION(number, query, enumerator) number,
#define RESERVED(number, enumerator) number,
#include "MorvUt/users/permissions.def"
#undef PERMISSION
#undef RESERVED
};

constexpr bool CountsFromOne()
{
    for (int i = 0; i < static_cast<int>(std::size(kNumbers)); ++i)
        if (kNumbers[i] != i + 1)
            return false;
    return true;
}
static_assert(CountsFromOne() && std::size(kNumbers) + 1 == Users::Detail::kPermissionEnd);

template<class Rows>
std::vector<Users::Detail::PermissionRow> ReadRows(int ownerColumn, const CString& owner)
{
    std::vector<Users::Detail::PermissionRow> found;
    Rows rows;
    for (rows.Open({{ownerColumn, owner}}); !rows.IsEOL(); rows.MoveNext())
        found.emplace_back(rows.GetPermission(), rows.GetAllowed());
    return found;
}

template<class Rows>
bool IsRowAllowed(int ownerColumn, const CString& owner, int permission)
{
    Rows rows;
    return rows.Open({{ownerColumn, owner}, {Rows::kPermission, permission}}) && rows.GetAllowed();
}

} // namespace

std::vector<Users::Detail::PermissionRow> Users::Detail::ReadPermissionRows(const CString& userId, const CString& role)
{
    return role.IsEmpty() ? ReadRows<Brix::CUserPermissions>(Brix::CUserPermissions::kUserID, userId)
                          : ReadRows<Brix::CUserRolePermissions>(Brix::CUserRolePermissions::kRole, role);
}

bool CUserData::CheckPermission(Permission permission, bool showMessage)
{
    const bool allowed = Users::Detail::Current().allowed[static_cast<std::size_t>(permission)];
    if (!allowed && showMessage) {
        const Afx::ResourceContextGuard resources(MorvUtResources());
        AfxMessageBox(IDS_NO_PERMISSION);
    }
    return allowed;
}

void CUserData::ClearPermissions() noexcept { Users::Detail::Current().allowed.reset(); }

#define PERMISSION(number, query, enumerator)                                                                          \
    bool CUserData::query(bool showMessage) const { return CheckPermission(Permission::enumerator, showMessage); }
#define RESERVED(number, enumerator)
#include "MorvUt/users/permissions.def"
#undef PERMISSION

std::span<const CUserData::PermissionQuery> CUserData::GetPermissionQueries() noexcept
{
    static constexpr PermissionQuery kQueries[] = {
#define PERMISSION(number, query, enumerator) {number, #query, &CUserData::query},
#include "MorvUt/users/permissions.def"
#undef PERMISSION
#undef RESERVED
    };
    return kQueries;
}

int CUserData::UserHasPermission(CString userId, int permission)
{
    CString role;
    if (Brix::CUser user; FindUser(user, userId)) {
        userId = user.GetUserID();
        role = user.GetRole();
    }
    if (role.IsEmpty())
        return IsRowAllowed<Brix::CUserPermissions>(Brix::CUserPermissions::kUserID, userId, permission);
    return IsRowAllowed<Brix::CUserRolePermissions>(Brix::CUserRolePermissions::kRole, role, permission);
}

int CUserData::IsTaxExchangeAllowedForUser(CString userId)
{
    return UserHasPermission(userId, static_cast<int>(Permission::TaxExchange));
}

int CUserData::UserHasReviewToolUse(CString userId)
{
    return UserHasPermission(userId, static_cast<int>(Permission::ReviewToolUse));
}

int CUserData::UserHasReviewToolViewEventsLog(CString userId)
{
    return UserHasPermission(userId, static_cast<int>(Permission::ReviewToolViewEventsLog));
}

int CUserData::UserHasReviewToolStartOrCompleteReviewsAssignedToAnotherUser(CString userId)
{
    return UserHasPermission(userId,
                             static_cast<int>(Permission::ReviewToolStartOrCompleteReviewsAssignedToAnotherUser));
}

int CUserData::UserHasReviewToolFinaliseReviews(CString userId)
{
    return UserHasPermission(userId, static_cast<int>(Permission::ReviewToolFinaliseReviews));
}

int CUserData::UserHasReviewToolEditTolerances(CString userId)
{
    return UserHasPermission(userId, static_cast<int>(Permission::ReviewToolEditTolerances));
}
