#pragma once

// What programs that use a practice have alike.

#include <exception>
#include <iostream>
#include <string>

#include "MorvUt/MorvUt.h"

/// Opens the practice in the file `path` for this process, with the key beside it, and logs `user` in. Empty, or why it
/// cannot be used, for the user. Throws Cellar::DatabaseError.
inline std::string OpenPractice(const std::string& path, const char* user)
{
    Quarry::SetConnection(Cellar::CConnection::Open(path));
    Cellar::CConnection& practice = Quarry::GetConnection();
    const Brix::SchemaVersion version = Brix::ReadSchemaVersion(practice);
    if (version.state == Brix::SchemaState::NotAPractice || version.state == Brix::SchemaState::Newer)
        return path + " is no practice that this program reads";
    if (version.state == Brix::SchemaState::Older) {
        Quarry::CTransaction transaction(Cellar::Intent::Write);
        Brix::UpgradeSchema(practice);
        SeedTrackerTypes();
        transaction.Commit();
    }
    if (const std::string note = practice.KeepPrivate(); !note.empty())
        std::cerr << note << '\n';
    const auto key = Shellkit::ReadKeyFile(path + ".key", path);
    if (!key || !Shellkit::SetPracticeKey(*key))
        return Shellkit::KeyFileProblem(path + ".key", path);
    if (!Brix::IsPracticeKey(practice, version))
        return path + ".key is not the key of this practice";
    FollowDateFormat();
    CUserData::ClearPermissions();
    CUserData::SetUser(user);
    return {};
}

/// Brackets a program's life by the library's; `work` gives its exit code. An exception is told, and 2.
template<class Work>
int RunExample(Work work)
{
    Afx::SwitchOffCoreDumps(); // key and tokens will be in memory
    MorvUtStartUp("Example", "Software\\Example");
    int result = 2;
    try {
        result = work();
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    }
    MorvUtShutDown();
    return result;
}

/// Tells how the program is called; its exit code.
inline int Usage(const char* line)
{
    std::cerr << line << '\n';
    return 2;
}
