#include "common/OpenPractice.h"

#include <cstdio>

#include "Afx/text/TextFold.h"
#include "Afx/text/Utf8.h"
#include "Brix/PracticeKey.h"
#include "Brix/Schema.h"
#include "Cellar/Connection.h"
#include "Cellar/ConnectionText.h"
#include "common/Words.h"
#include "MorvUt/context/DateFormat.h"
#include "MorvUt/context/TrackerTypes.h"
#include "Quarry/Session.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/KeyFile.h"
#include "Shellkit/PracticeKey.h"

namespace Morv
{

namespace
{

void Upgrade()
{
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    Brix::UpgradeSchema(Quarry::GetConnection());
    SeedTrackerTypes(); // practices were made without them
    transaction.Commit();
}

Brix::SchemaVersion CheckSchema(const std::string& practice)
{
    auto version = Brix::ReadSchemaVersion(Quarry::GetConnection());
    switch (version.state) {
    case Brix::SchemaState::Current:
        break;
    case Brix::SchemaState::Older:
        Upgrade();
        break;
    case Brix::SchemaState::NotAPractice:
        throw CommandError(Exit::CannotOpen, "NOT_A_PRACTICE",
                           Quoted(PracticeName(practice)) + " is a database, but not a practice",
                           "Name a practice, or make one with morv practice create.");
    case Brix::SchemaState::Newer:
        throw CommandError(Exit::CannotOpen, "NEWER_SCHEMA",
                           Quoted(PracticeName(practice)) + " has schema " + std::to_string(version.version) +
                               ", this program reads up to " + std::to_string(Brix::kSchemaVersion),
                           "Update this program.");
    }
    return version;
}

void KeepPrivate()
{
    if (const std::string note = Quarry::GetConnection().KeepPrivate(); !note.empty())
        std::fprintf(stderr, "morv: %s.\n", Printable(note).c_str());
}

/// Takes the key into use, or says why not.
std::optional<CommandError> LoadKey(const std::string& practice, const Brix::SchemaVersion& version)
try {
    const std::string path = KeyPath(practice), file = PracticePath(practice);
    const auto key = Shellkit::ReadKeyFile(path, file);
    if (!key || !Shellkit::SetPracticeKey(*key))
        return CommandError(Exit::CannotOpen, "NO_PRACTICE_KEY", Shellkit::KeyFileProblem(path, file), "");
    if (Brix::IsPracticeKey(Quarry::GetConnection(), version))
        return std::nullopt;
    Shellkit::SetPracticeKey({});
    return CommandError(Exit::CannotOpen, "WRONG_PRACTICE_KEY",
                        (file.empty() ? "the key that is named is not the practice's own: "
                                      : "the key beside the practice is not its own: ") +
                            Quoted(path),
                        file.empty() ? "Name the key file that was made with the practice."
                                     : "Put the key file that was made with the practice beside it.");
} catch (const CommandError& error) { // no key file is named
    return error;
}

} // namespace

void NeedCiphers()
{
    if (const std::string problem = Shellkit::CipherProblem(); !problem.empty())
        throw CommandError(Exit::CannotOpen, "NO_CIPHER_MODULE", "a part of this program cannot be loaded: " + problem,
                           kInstallAgain);
}

void CheckPracticeText(const std::string& practice)
{
    if (HasControlCharacters(practice))
        throw CommandError(Exit::BadInput, "BAD_ARGUMENTS",
                           "practice: the name " + Quoted(PracticeName(practice)) + " holds control characters",
                           "Name the practice's file.");
    if (!Afx::IsUtf8(practice))
        throw CommandError(Exit::BadInput, "BAD_ARGUMENTS",
                           "practice: the name " + Quoted(PracticeName(practice)) + " is not UTF-8",
                           "Rename the file first.");
}

std::string PracticePath(const std::string& practice)
{
    constexpr std::string_view kEmbedded = "sqlite:";
    if (Cellar::ServerText::Is(practice))
        return {};
    const bool isNamed = Afx::EqualNoCase(std::string_view(practice).substr(0, kEmbedded.size()), kEmbedded);
    return isNamed ? practice.substr(kEmbedded.size()) : practice;
}

std::string PracticeName(const std::string& practice)
{
    return Cellar::ServerText::Is(practice) ? Cellar::ServerText(practice).GetShown() : practice;
}

std::string KeyPath(const std::string& practice)
{
    if (!Cellar::ServerText::Is(practice))
        return PracticePath(practice) + ".key";
    std::string path = Cellar::ServerText(practice).GetKeyFile();
    if (path.empty())
        throw CommandError(Exit::CannotOpen, "NO_PRACTICE_KEY", "no key file is named for the practice on the server",
                           "Add KeyFile=PATH to its text, or set MORVUT_KEY_FILE.");
    return path;
}

CommandError FromDatabaseError(const std::exception& error)
{
    using Category = Cellar::DatabaseError::Category;
    const auto* database = dynamic_cast<const Cellar::DatabaseError*>(&error);
    if (!database)
        return CommandError(Exit::Refused, "CHANGED_BY_ANOTHER_USER", error.what(), "Run the command again.");
    const std::string& reason = database->GetReason(); // the statement says nothing to who gave the command
    switch (database->GetCategory()) {
    case Category::Busy:
        return CommandError(Exit::CannotOpen, kBusy, reason, ""); // which says to try again
    case Category::ReadOnly:
        return CommandError(Exit::CannotOpen, kReadOnly, reason, "");
    case Category::CannotOpen:
    case Category::LostConnection:
        return CommandError(Exit::CannotOpen, "CANNOT_OPEN", reason, "");
    default:
        return CommandError(Exit::CannotOpen, "DATABASE_ERROR", reason,
                            "morv practice check says what is wrong with the practice.");
    }
}

std::optional<CommandError> OpenPractice(const std::string& practice)
{
    CheckPracticeText(practice);
    NeedCiphers();
    try {
        Quarry::SetConnection(Cellar::CConnection::Open(CString(practice)));
        const Brix::SchemaVersion version = CheckSchema(practice);
        KeepPrivate();
        std::optional<CommandError> keyProblem = LoadKey(practice, version);
        FollowDateFormat();
        return keyProblem;
    } catch (const Cellar::DatabaseError& error) {
        Quarry::SetConnection(nullptr);
        throw FromDatabaseError(error);
    } catch (...) {
        Quarry::SetConnection(nullptr);
        throw;
    }
}

} // namespace Morv
