#pragma once

// What the process keeps of a user's record.

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"
#include "MorvUt/taxyear/Singleton.h"

class MORVUT_API CUserSingletonData
{
public:
    virtual ~CUserSingletonData();
    /// Nothing is held.
    CUserSingletonData() = default;
    /// Reads the current connection; throws Cellar::DatabaseError. Null is the empty name.
    explicit CUserSingletonData(const char* name);
    CUserSingletonData(const CUserSingletonData&) = default;
    CUserSingletonData& operator=(const CUserSingletonData&) = default;

    CString userName;  // as it was asked for
    CString userText;  // full name; empty when there is no such user
    int userValue = 0; // nUserValue of the record
};

class CUserSingleton;
extern template class MORVUT_API CSingleton<CUserSingletonData, CUserSingleton>;

/// The cache. It goes when a transaction is rolled back and when another practice is opened; no record is watched.
class MORVUT_API CUserSingleton : public CSingleton<CUserSingletonData, CUserSingleton>
{
public:
    /// Of the user of that name, in any case. The reference holds until another user is asked for or the singleton
    /// ends. Throws Cellar::DatabaseError.
    static const CUserSingletonData& Data(const char* userName);

private:
    friend class CSingleton<CUserSingletonData, CUserSingleton>;
    CUserSingleton();
};
