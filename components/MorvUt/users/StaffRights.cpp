#include "MorvUt/users/StaffRights.h"

#include <map>
#include <stdexcept>

#include "Brix/Records.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/detail/LoggedIn.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"

namespace
{

std::vector<CString> GroupsOf(const CString& userId)
{
    std::vector<CString> groups;
    Brix::CGroupUser members;
    for (members.Open({{Brix::CGroupUser::kUserID, userId}}); !members.IsEOL(); members.MoveNext()) {
        Brix::CGroup group;
        if (group.Open({{0, members.GetGroupID()}}))
            groups.push_back(group.GetName());
    }
    return groups;
}

StaffMember Read(const Brix::CUser& user)
{
    StaffMember member{user.GetUserID(), user.GetFullName(), user.GetRole(), GroupsOf(user.GetUserID()), {}};
    const auto rows = Users::Detail::ReadPermissionRows(member.id, member.role);
    const std::map<int, bool> allowed(rows.rbegin(), rows.rend()); // of two rows the last counts, as when logging in
    for (const auto& permission : CUserData::GetPermissionQueries()) {
        const auto row = allowed.find(permission.number);
        member.rights.push_back({permission.number, permission.name, row != allowed.end() && row->second});
    }
    return member;
}

void AllowAll(const CString& userId)
{
    Brix::CUserPermissions rows;
    for (const auto& permission : CUserData::GetPermissionQueries()) {
        rows.AddNew();
        rows.SetUserID(userId);
        rows.SetPermission(permission.number);
        rows.SetAllowed(true);
        rows.Update();
    }
}

} // namespace

bool FindUser(Brix::CUser& users, const CString& id)
{
    if (users.Open({{Brix::CUser::kUserID, id}}))
        return true;
    users.Open({}, {{Brix::CUser::kUserID}});
    while (!users.IsEOL() && users.GetUserID().CompareNoCase(id) != 0)
        users.MoveNext();
    return !users.IsEOL();
}

std::vector<StaffMember> ListStaff()
{
    std::vector<StaffMember> list;
    Brix::CUser users;
    for (users.Open({}, {{Brix::CUser::kUserID}}); !users.IsEOL(); users.MoveNext())
        if (users.GetListed())
            list.push_back(Read(users));
    return list;
}

std::optional<StaffMember> FindStaff(const CString& id)
{
    Brix::CUser user;
    return FindUser(user, id) ? std::optional(Read(user)) : std::nullopt;
}

CString WhyNotNewStaff(CString id, CString name, const CString& role)
{
    if (id.Trim().IsEmpty() || name.Trim().IsEmpty())
        return LibraryText(IDS_USER_NEEDS_ID_AND_NAME);
    if (id.Find("'") >= 0) // no application could record its login (CUserLockFile::AddLock)
        return LibraryText(IDS_USER_NO_QUOTE);
    if (id.CompareNoCase(kBuiltInAdministrator) == 0)
        return LibraryText(IDS_USER_BUILT_IN);
    if (Brix::CUser user; FindUser(user, id)) // as the login takes an id
        return LibraryText(IDS_USER_EXISTS);
    if (!role.IsEmpty() && !Brix::CUserRole().Open({{Brix::CUserRole::kRole, role}}))
        return LibraryText(IDS_NO_SUCH_ROLE);
    return {};
}

StaffMember AddStaff(CString id, CString name, const CString& role)
{
    id.Trim();
    name.Trim();
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    if (const CString why = WhyNotNewStaff(id, name, role); !why.IsEmpty())
        throw std::invalid_argument(why.Str());
    const bool isFirst = !Brix::CUser().Open();
    Brix::CUser user;
    user.AddNew();
    user.SetUserID(id);
    user.SetFullName(name);
    user.SetRole(role);
    user.SetListed(true);
    user.Update();
    if (isFirst && role.IsEmpty())
        AllowAll(id);
    transaction.Commit();
    return *FindStaff(id);
}
