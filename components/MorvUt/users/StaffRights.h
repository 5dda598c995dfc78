#pragma once

// Who works in the practice and what each may do, for lists. Whoever is logged in: see UserData.h.

#include <optional>
#include <vector>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

namespace Brix
{
class CUser;
}

struct StaffRight
{
    int number = 0;
    const char* name = ""; // of the query in CUserData
    bool isAllowed = false;
};

struct StaffMember
{
    CString id, name;
    CString role; // empty: none
    std::vector<CString> groups;
    std::vector<StaffRight>
        rights; // all of them, in the order of their numbers: the role's, without one the user's own
};

// These read the current connection and throw Cellar::DatabaseError.

/// Moves `users` to the one of this id, listed or not; false when there is none. Letters count alike in both cases, all
/// of them: the embedded database knows the cases of ASCII only. What other tables hold of the user is read by the id
/// as it is stored.
MORVUT_API bool FindUser(Brix::CUser& users, const CString& id);
/// The listed users by id.
MORVUT_API std::vector<StaffMember> ListStaff();
/// Listed or not, by id in any case.
MORVUT_API std::optional<StaffMember> FindStaff(const CString& id);

/// Why there cannot be a new user of these: no id or name, an id that one has already (in any case) or that is built
/// in, a role that the practice has not. Empty when nothing is wrong. Blanks round id and name do not count: nobody
/// sees that they are there.
MORVUT_API CString WhyNotNewStaff(CString id, CString name, const CString& role);
/// Adds a listed user. Without a role the first user of a practice has all rights, since somebody must be able to work,
/// and a later one none. Throws std::invalid_argument with the answer of
/// WhyNotNewStaff, which it asks again within its transaction.
MORVUT_API StaffMember AddStaff(CString id, CString name, const CString& role);
