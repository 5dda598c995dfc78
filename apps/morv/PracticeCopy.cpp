#include "PracticeCopy.h"

#include <cstdio>
#include <optional>

#include "Afx/system/SignalGuard.h"
#include "Brix/Copy.h"
#include "NewPlace.h"
#include "Output.h"
#include "PartFile.h"
#include "Progress.h"
#include "Quarry/Session.h"

namespace Morv
{

namespace
{

/// A file has its name when it is whole; a server has no such thing, and one transaction.
Brix::Copied CopyTo(const std::string& to, Shellkit::Bytes& oldKey, const Brix::CopyProgress& progress)
{
    const std::string path = PracticePath(to);
    std::optional<PartFile> part;
    if (!path.empty())
        part.emplace(path, "copy");
    auto connection =
        Cellar::CConnection::Open(CString(part ? "sqlite:" + part->GetName() : to), Cellar::Create::IfMissing);
    RequireEmptyPlace(*connection, to);
    auto newKey = MakeKey(to, Shellkit::KeyReaders::Owner);
    const auto copied = Brix::CopyPractice({Quarry::GetConnection(), oldKey}, {*connection, newKey}, progress);
    for (Shellkit::Bytes* const key : {&oldKey, &newKey})
        Shellkit::Wipe(key->data(), key->size());
    connection.reset(); // what is in the journal gets into the file
    if (part)
        part->Finish();
    return copied;
}

Brix::Copied Copy(const std::string& from, const std::string& to, const CommonOptions& options)
{
    auto oldKey = Shellkit::ReadKeyFile(KeyPath(from), PracticePath(from));
    if (!oldKey)
        throw CommandError(Exit::CannotOpen, "NO_PRACTICE_KEY", "the practice's key is gone", "Put it back.");
    std::optional<Progress> progress;
    std::int64_t shown = 0;
    return CopyTo(to, *oldKey, [&](std::int64_t done, std::int64_t all) {
        if (!progress)
            progress.emplace(options, static_cast<std::size_t>(all));
        for (; shown < done; ++shown)
            progress->Next();
        return !Afx::SignalGuard::IsSignalWaiting();
    });
}

} // namespace

void CopyPractice(const std::string& from, const std::string& to, const CommonOptions& options)
{
    CheckPracticeText(to);
    const PracticeSession session(from, options, Login::IfGiven);
    Brix::Copied copied;
    try {
        copied = Copy(from, to, options);
    } catch (const Cellar::DatabaseError& error) {
        throw FromDatabaseError(error);
    }
    if (copied.unopened > 0)
        std::fprintf(stderr, "morv: %d secrets do not open with the practice's key and were copied as they are.\n",
                     copied.unopened);
    if (options.json)
        PrintJson({{"rows", copied.rows}, {"tables", copied.tables}, {"verified", true}});
    else
        PrintLine(
            "Copied %s to %s: %ld rows of %d tables, compared row by row. Its key is in %s: keep the two together.",
            PracticeName(from), PracticeName(to), static_cast<long>(copied.rows), copied.tables, KeyPath(to));
}

} // namespace Morv
