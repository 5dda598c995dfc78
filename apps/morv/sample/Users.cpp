#include "Users.h"

#include <array>

#include "Rows.h"

namespace Morv::Sample
{

namespace
{

constexpr int kLastPermission = 99;
bool IsHmrcPermission(int number) { return number >= 87 && number <= 89; }

void AddUser(const char* id, const char* fullName, bool isListed, const char* role)
{
    Brix::CUser user;
    user.AddNew();
    user.SetUserID(id);
    user.SetFullName(fullName);
    user.SetListed(isListed);
    user.SetRole(role);
    user.Update();
}

void AddPermissions(const char* id, bool withHmrc)
{
    Brix::CUserPermissions permissions;
    for (int number = 1; number <= kLastPermission; ++number) {
        permissions.AddNew();
        permissions.SetUserID(id);
        permissions.SetPermission(number);
        permissions.SetAllowed(withHmrc || !IsHmrcPermission(number));
        permissions.Update();
    }
}

/// `most`: the last permission that the role has.
void AddRole(const char* role, int most = kLastPermission)
{
    Brix::CUserRole roles;
    roles.AddNew();
    roles.SetRole(role);
    roles.Update();
    Brix::CUserRolePermissions permissions;
    for (int number = 1; number <= kLastPermission; ++number) {
        permissions.AddNew();
        permissions.SetRole(role);
        permissions.SetPermission(number);
        // They see and change everything but the practice's own settings (49 to 55).
        permissions.SetAllowed(number <= most && (number < 49 || number > 55));
        permissions.Update();
    }
}

long AddGroup(const char* name)
{
    Brix::CGroup group;
    group.AddNew();
    group.SetName(name);
    group.Update();
    return group.GetID();
}

void AddToGroup(const char* user, long group)
{
    Brix::CGroupUser member;
    member.AddNew();
    member.SetUserID(user);
    member.SetGroupID(group);
    member.Update();
}

struct Colleague
{
    const char *id, *name, *role;
    bool isListed;
};
constexpr std::array kColleagues{
    Colleague{"dilys", "Dilys Penry", "Senior", true},
    Colleague{"emeka", "Emeka Lowther", "Senior", true},
    Colleague{"farah", "Farah Brightwell", "Manager", true},
    Colleague{"gus", "Gus Hollander", "Trainee", true},
    Colleague{"hester", "Hester Vane", "Trainee", true},
    Colleague{"ivor", "Ivor Kestrel", "Senior", false}, // has left
};

void AddColleagues(long everyone, long tax, long audit)
{
    AddRole("Senior", 89);
    AddRole("Trainee", 40);
    for (std::size_t i = 0; i < kColleagues.size(); ++i) {
        const Colleague& colleague = kColleagues[i];
        AddUser(colleague.id, colleague.name, colleague.isListed, colleague.role);
        if (colleague.isListed)
            AddToGroup(colleague.id, everyone);
        AddToGroup(colleague.id, i % 2 == 0 ? tax : audit);
    }
}

} // namespace

void AddUsers(bool isBigPractice)
{
    const long everyone = AddGroup("All Staff");
    const long tax = AddGroup("Tax");
    const long audit = AddGroup("Audit");
    AddUser("alice", "Alice Thornbury", true, "");
    AddPermissions("alice", true);
    AddToGroup("alice", everyone);
    AddUser("ben", "Ben Castellan", true, "");
    AddPermissions("ben", false);
    AddToGroup("ben", tax);
    AddRole("Manager");
    AddUser("cara", "Cara Whitlock", true, "Manager");
    AddToGroup("cara", tax);
    if (isBigPractice)
        AddColleagues(everyone, tax, audit);
    Add<Brix::CClientEnquirySettings>([](Brix::CClientEnquirySettings& settings) {
        settings.SetUserID("alice");
        settings.SetHideCompleted(true);
    });
}

const char* AssignedTo(int number)
{
    constexpr std::array kFirst{"alice", "ben", "cara"};
    const auto at = static_cast<std::size_t>(number);
    return number <= 12 || at % 3 == 0 ? kFirst[at % kFirst.size()] : kColleagues[at % (kColleagues.size() - 1)].id;
}

} // namespace Morv::Sample
