#pragma once

// A practice with users, and nobody logged in.

#include <gtest/gtest.h>

#include "Afx/Resources.h"
#include "Brix/Records.h"
#include "MorvUt/Practice.h"
#include "MorvUt/users/UserData.h"

class UsersTest : public testing::Test
{
protected:
    UsersTest() { LogOut(); }
    ~UsersTest() override { LogOut(); }

    /// As in a process that has just begun.
    static void LogOut()
    {
        CUserData::ClearPermissions();
        const CUserData loggedOut; // its construction clears the flag
    }

    static void AddUser(const char* id, const char* fullName, bool listed = true, const char* role = "")
    {
        ::Test::Add<Brix::CUser>([&](Brix::CUser& row) {
            row.SetUserID(id);
            row.SetFullName(fullName);
            row.SetListed(listed);
            row.SetRole(role);
        });
    }
    static long AddGroup(const char* name)
    {
        return ::Test::Add<Brix::CGroup>([&](Brix::CGroup& row) { row.SetName(name); });
    }
    static void Join(const char* user, long group)
    {
        ::Test::Add<Brix::CGroupUser>([&](Brix::CGroupUser& row) {
            row.SetUserID(user);
            row.SetGroupID(group);
        });
    }
    static void AddRole(const char* role)
    {
        ::Test::Add<Brix::CUserRole>([&](Brix::CUserRole& row) { row.SetRole(role); });
    }
    static void LetRole(const char* role, int permission, bool allowed = true)
    {
        ::Test::Add<Brix::CUserRolePermissions>([&](Brix::CUserRolePermissions& row) {
            row.SetRole(role);
            row.SetPermission(permission);
            row.SetAllowed(allowed);
        });
    }
    static void LetUser(const char* user, int permission, bool allowed = true)
    {
        ::Test::Add<Brix::CUserPermissions>([&](Brix::CUserPermissions& row) {
            row.SetUserID(user);
            row.SetPermission(permission);
            row.SetAllowed(allowed);
        });
    }

    /// The numbers of what the logged-in user may do.
    static std::vector<int> Allowed()
    {
        std::vector<int> numbers;
        for (const auto& [number, name, query] : CUserData::GetPermissionQueries())
            if ((TheUser().*query)(false))
                numbers.push_back(number);
        return numbers;
    }

private:
    ::Test::Practice m_practice;
};
