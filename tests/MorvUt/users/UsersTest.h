#pragma once

// A practice with users, and nobody logged in.

#include "Afx/system/Resources.h"
#include "Brix/Records.h"
#include "MorvUt/users/UserData.h"
#include "support/Practice.h"

class UsersTest : public ::Test::OnDatabase, protected ::Test::Practice
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

    /// What the user is told from here on is added to `shown`, a line each.
    static void TellTo(std::string& shown)
    {
        ::Test::Windows().OnUnexpected([&shown](const Afx::HeadlessWindowSystem::Shown& message) {
            shown += "told: " + message.text + '\n';
            return Afx::SafeAnswer(message.style);
        });
    }

    static void AddUser(const char* id, const char* fullName = "")
    {
        Sql("INSERT INTO BRIXUser (strUserID, strFullName, bListed) VALUES (%s, %s, 1)", id, fullName);
    }
    static void LetUser(const char* user, int permission)
    {
        Sql("INSERT INTO BRIXUserPermissions (strUserID, nPermission, bAllowed) VALUES (%s, %d, 1)", user, permission);
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
};
