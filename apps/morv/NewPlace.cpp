#include "NewPlace.h"

#include <filesystem>

#include "common/CommandError.h"
#include "Output.h"
#include "Session.h"

namespace Morv
{

void RequireEmptyPlace(Cellar::CConnection& connection, const std::string& practice)
{
    // The connection's own counter of sessions does not count.
    for (const auto& row : connection.Query(connection.GetDialect().TableColumns(), {}).rows)
        if (Cellar::ToText(row[0]) != "CellarSession")
            throw CommandError(Exit::CannotOpen, "EXISTS", Quoted(PracticeName(practice)) + " is there already",
                               PracticePath(practice).empty() ? "Name an empty database of the server."
                                                              : "Choose another name, or remove the file first.");
}

Shellkit::Bytes MakeKey(const std::string& practice, Shellkit::KeyReaders readers)
{
    const std::string path = KeyPath(practice);
    const auto isThere = [&path] {
        std::error_code none;
        const auto size = std::filesystem::file_size(path, none);
        return !none && size > 0; // empty: a creation ended before the key was in it
    };
    if (!isThere() && !Shellkit::MakeKeyFile(path, readers) && !isThere()) // made at the same time by another
        throw CommandError(Exit::CannotOpen, "NO_KEY", "the practice's key file cannot be written: " + Quoted(path),
                           "Check the folder's permissions and free space.");
    const std::string file = PracticePath(practice);
    auto key = Shellkit::ReadKeyFile(path, file);
    if (!key)
        throw CommandError(Exit::CannotOpen, "NO_KEY", Shellkit::KeyFileProblem(path, file), "");
    return *std::move(key);
}

} // namespace Morv
