#pragma once

// How a program takes a practice into use.

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
    if (version.state == Brix::SchemaState::Older)
        Brix::UpgradeSchema(practice);
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
