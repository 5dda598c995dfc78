#include "Afx/system/Application.h"
#include "Afx/text/TextFold.h"
#include "Afx/windows/WindowSystem.h"
#include "Brix/Records.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/detail/LoggedIn.h"
#include "MorvUt/users/UserData.h"
#include "Shellkit/Bytes.h"
#include "Shellkit/Envelope.h"

namespace
{

constexpr char kAllStaff[] = "All Staff"; // its members are in every group

/// What SetUser reads; put in place only when all of it has been read.
struct Login
{
    CString user;
    CString storedId; // the same as the user table has it, by which other tables name the user
    CString role;
    CStringArray users, fullNames;
    CArray<CUserData::CUserGroupItem> groups;
    Users::Detail::Particulars particulars;
    std::vector<Users::Detail::PermissionRow> permissions;
};

Users::Detail::Secret OpenSecret(const Cellar::Bytes& envelope)
{
    auto plain = Shellkit::OpenText(envelope);
    if (!plain)
        return {};
    Users::Detail::Secret secret(*plain);
    Shellkit::Wipe(plain->data(), plain->size());
    return secret;
}

Users::Detail::Particulars ReadParticulars(const Brix::CUser& row)
{
    Users::Detail::Particulars read;
    read.fullName = row.GetFullName();
    read.email = row.GetEmail();
    read.telephone = row.GetTelephone();
    read.gatewayId = row.GetGatewayID();
    read.fbiUserName = row.GetFBIUserName();
    read.storedFBIPassword = row.GetFBIPassword();
    read.fbiPassword = OpenSecret(read.storedFBIPassword);
    read.rememberFBIPassword = row.GetRememberFBIPassword();
    read.fbiSendImmediately = row.GetFBISendImmediately();
    read.tallywickUserName = row.GetTallywickUserName();
    read.tallywickPassword = OpenSecret(row.GetTallywickPassword());
    return read;
}

/// The listed users; and of the row of the user who logs in, listed or not, role and particulars.
void ReadUsers(Login& login)
{
    Brix::CUser row;
    for (row.Open({}, {{Brix::CUser::kUserID}}); !row.IsEOL(); row.MoveNext()) {
        const CString id = row.GetUserID();
        const bool logsIn = Afx::EqualNoCase(id.View(), login.user.View());
        if (logsIn) {
            login.storedId = id;
            login.role = row.GetRole();
            login.particulars = ReadParticulars(row);
        }
        if (!row.GetListed() || Afx::EqualNoCase(id.View(), kBuiltInAdministrator))
            continue;
        if (logsIn)
            login.user = id;
        login.users.Add(id);
        login.fullNames.Add(row.GetFullName());
    }
}

CUserData::CUserGroupItem ToItem(const Brix::CGroup& row) { return {row.GetName(), static_cast<int>(row.GetID())}; }

/// The user's groups; for a member of All Staff that one first, then the whole table of groups.
CArray<CUserData::CUserGroupItem> ReadGroups(const CString& user)
{
    CArray<CUserData::CUserGroupItem> groups;
    Brix::CGroupUser membership;
    Brix::CGroup group;
    for (membership.Open({{Brix::CGroupUser::kUserID, user}}); !membership.IsEOL(); membership.MoveNext()) {
        if (!group.Open({{0, membership.GetGroupID()}}))
            continue;
        if (group.GetName() != kAllStaff) {
            groups.Add(ToItem(group));
            continue;
        }
        groups.RemoveAll();
        groups.Add(ToItem(group));
        for (group.Open(); !group.IsEOL(); group.MoveNext())
            groups.Add(ToItem(group));
        break;
    }
    return groups;
}

Login ReadLogin(const char* userId)
{
    Login login;
    login.user = login.storedId = userId;
    ReadUsers(login);
    login.groups = ReadGroups(login.storedId);
    login.permissions = Users::Detail::ReadPermissionRows(login.storedId, login.role);
    return login;
}

} // namespace

int CUserData::SetUser(const char* userId)
{
    const Afx::ResourceContextGuard resources(MorvUtResources());
    const CWaitCursor wait;
    Login login = ReadLogin(userId);

    m_strUser = login.user;
    m_arrUsers = login.users;
    m_arrUserFullnames = login.fullNames;
    m_UserGroups = login.groups;
    Users::Detail::LoggedIn& current = Users::Detail::Current();
    for (const auto& [permission, allowed] : login.permissions)
        if (permission > 0 && permission < Users::Detail::kPermissionEnd)
            current.allowed[static_cast<std::size_t>(permission)] = allowed;
    current.particulars = std::move(login.particulars);
    TheUser().SetUserLoggedIn(); // made now at the latest: later its construction would log this user out
    if (CWinApp* const app = AfxGetApp())
        app->OnUserChanged();
    return 1;
}
