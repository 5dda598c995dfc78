#include "Cellar/drivers/sqlite/DatabaseFile.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <system_error>

#include "Afx/system/FilePath.h"
#include "Afx/text/Utf8.h"
#include "Cellar/drivers/sqlite/FileRights.h"
#include "Cellar/drivers/sqlite/NetworkShare.h"

namespace Cellar::Sqlite
{
namespace
{

namespace fs = std::filesystem;

constexpr std::string_view kMagic("SQLite format 3\0", 16);

void RefuseNetworkShare(const std::string& path, const fs::path& folder)
{
    if (const char* const share = ShareName(folder))
        FailOpen(path, std::string("it is on a network share (") + share +
                           "), where a database file gets damaged; copy it to a disk of this computer, or keep the "
                           "practice on a server and open that with odbc:Driver=...;Servername=...");
}

/// The engine's header; shorter when the file is.
std::string ReadHeader(const std::string& path, const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        FailOpen(path, "there is no permission to read it; ask for the right to read and write it");
    std::array<char, 100> header;
    stream.read(header.data(), header.size());
    return {header.data(), static_cast<std::size_t>(stream.gcount())};
}

/// `size` bytes of the header from `at`, the most significant first.
std::uint64_t Number(const std::string& header, std::size_t at, std::size_t size)
{
    std::uint64_t number = 0;
    for (std::size_t i = at; i < at + size && i < header.size(); ++i)
        number = number << 8 | static_cast<unsigned char>(header[i]);
    return number;
}

bool HasJournal(const fs::path& file)
{
    for (const char* const ending : {"-wal", "-journal"}) {
        fs::path journal = file;
        std::error_code none;
        if (const auto size = fs::file_size(journal += ending, none); !none && size > 0)
            return true;
    }
    return false;
}

/// The engine takes a file without its last bytes, or pages, for whole. With a journal it decides itself: a program
/// that was killed while it moved the journal's pages leaves a file that looks short. The order of the looks, and the
/// second one at the header, keep a program that does so now from looking like one.
bool IsCutShort(const std::string& path, const fs::path& file, const std::string& header)
{
    constexpr std::size_t kPageSizeAt = 16, kChangesAt = 24, kPagesAt = 28, kPagesValidForAt = 92;
    if (Number(header, kChangesAt, 4) != Number(header, kPagesValidForAt, 4) || HasJournal(file))
        return false;
    const std::uint64_t pageSize = Number(header, kPageSizeAt, 2);
    const std::uint64_t length = Number(header, kPagesAt, 4) * (pageSize == 1 ? 65536 : pageSize); // 1 stands for it
    std::error_code none;
    return fs::file_size(file, none) < length && !none && ReadHeader(path, file) == header;
}

/// An empty file may become one.
void RefuseNoDatabase(const std::string& path, const fs::path& file)
{
    const std::string header = ReadHeader(path, file);
    if (!header.empty() && !header.starts_with(kMagic))
        FailOpen(path, "it is no database; check the name, or go back to a copy if it was one");
    if (!header.empty() && IsCutShort(path, file, header))
        FailOpen(path, "its end is missing; go back to a copy of it");
}

/// The files that this process has open. Closing any descriptor of such a file would take away the locks that the
/// engine holds on it (POSIX: they belong to the process), and another program would believe that nobody is there.
struct OpenFiles
{
    std::mutex mutex;
    std::multiset<fs::path> paths;
};

OpenFiles& TheOpenFiles()
{
    static auto& files = *new OpenFiles;
    return files;
}

/// Enters the file. `look` is called before that, unless it is open already.
template<class LookAt>
std::shared_ptr<const void> Use(const fs::path& file, LookAt look)
{
    OpenFiles& files = TheOpenFiles();
    const std::lock_guard lock(files.mutex);
    if (!files.paths.contains(file))
        look();
    const auto entry = files.paths.insert(file);
    return {&*entry, [&files, entry](const void*) {
                const std::lock_guard remove(files.mutex);
                files.paths.erase(entry);
            }};
}

} // namespace

void FailOpen(const std::string& path, const std::string& why, DatabaseError::Category category)
{
    constexpr std::size_t kLongest = 300; // bytes of a path in a message
    const std::string_view shown = Afx::CutUtf8(path, kLongest);
    throw DatabaseError(category, "",
                        "cannot open " + std::string(shown) + (shown.size() < path.size() ? "…" : "") + ": " + why, "");
}

DatabaseFile Look(const std::string& path, Create create)
{
    if (path.empty() || path.find('\0') != std::string::npos)
        throw DatabaseError(DatabaseError::Category::CannotOpen, "",
                            "no database is named; name a file, as in sqlite:practice.db", "");
    std::error_code error;
    const fs::path file = fs::absolute(Afx::ToPath(path), error);
    const fs::file_status status = fs::status(file, error);
    if (fs::is_directory(status))
        FailOpen(path, "it is a folder; name the database file in it");
    if (fs::exists(status) && !fs::is_regular_file(status))
        FailOpen(path, "it is not an ordinary file; check the name");
    if (status.type() == fs::file_type::none)
        FailOpen(path, "it cannot be reached (" + error.message() + "); check the name and the rights to its folder");
    const fs::path folder = file.parent_path();
    if (!fs::exists(status) && !fs::is_directory(folder, error))
        FailOpen(path, "its folder does not exist; check the name, or make the folder first");
    RefuseNetworkShare(path, fs::exists(status) ? file : folder);

    const fs::path real = fs::is_symlink(file, error) && fs::exists(status) ? fs::canonical(file, error) : file;
    auto use = Use(fs::weakly_canonical(real, error), [&] {
        if (fs::exists(status))
            RefuseNoDatabase(path, real);
    });
    const bool isNew = !fs::exists(status) || fs::file_size(real, error) == 0;
    if (isNew && create == Create::No)
        FailOpen(path, fs::exists(status) ? "the file is empty; check the name, or create the practice first"
                                          : "there is no such file; check the name, or create the practice first");
    // Before the engine, which would let everybody read it.
    if (isNew && !MakeFile(real, create == Create::ForGroup ? Readers::Group : Readers::Owner))
        FailOpen(path, "the system does not let it be made; check the rights to it and its folder");
    return {Afx::FromPath(file), isNew, real, std::move(use)};
}

} // namespace Cellar::Sqlite
