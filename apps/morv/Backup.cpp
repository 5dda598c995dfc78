#include "Backup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "Afx/system/Descriptor_posix.h"
#include "CommandError.h"
#include "Output.h"

namespace Morv
{

namespace
{

CommandError Exists(const std::string& file)
{
    return {Exit::CannotOpen, "EXISTS", Quoted(file) + " is there already", "Choose another name for the backup."};
}

CommandError NotWritten(const std::string& file, const std::string& why)
{
    return {Exit::CannotOpen, "NOT_WRITTEN", "the backup " + Quoted(file) + " cannot be written: " + why,
            "Check the folder, its rights and its free space."};
}

std::string Why() { return std::strerror(errno); }

bool IsThere(const std::string& file)
{
    struct stat found;
    return ::lstat(file.c_str(), &found) == 0;
}

/// The copy under a name of its own. It goes when the backup is given up.
class Part
{
public:
    explicit Part(const std::string& file) : m_file(file), m_name(file + "." + std::to_string(::getpid()) + ".part")
    {
        Afx::Descriptor made(m_name, O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
        if (!made)
            throw NotWritten(m_file, Why());
    }
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    ~Part()
    {
        for (const char* const ending : {"", "-journal"}) // the engine leaves its journal on a full disk
            ::unlink((m_name + ending).c_str());
    }

    const std::string& GetName() const noexcept { return m_name; }

    /// Gives the copy its name once it is on the disk. Another file of that name is never replaced.
    void Finish() const
    {
        Afx::Descriptor written(m_name, O_RDWR);
        if (!written || ::fsync(written.Get()) != 0 || !written.Close())
            throw NotWritten(m_file, Why());
        if (::link(m_name.c_str(), m_file.c_str()) != 0) {
            if (errno == EEXIST)
                throw Exists(m_file);
            // A file system of one name a file, such as a memory stick's.
            if (IsThere(m_file))
                throw Exists(m_file);
            if (::rename(m_name.c_str(), m_file.c_str()) != 0)
                throw NotWritten(m_file, Why());
        }
        Afx::SyncFolderOf(m_file);
    }

private:
    const std::string& m_file;
    std::string m_name;
};

} // namespace

std::int64_t BackUp(Cellar::CConnection& practice, const std::string& file)
{
    if (IsThere(file))
        throw Exists(file);
    const Part part(file);
    try {
        practice.CopyTo(part.GetName());
    } catch (const Cellar::DatabaseError& error) {
        if (error.GetCategory() == Cellar::DatabaseError::Category::Busy)
            throw;
        throw NotWritten(file, error.GetReason());
    }
    const auto pageSize = practice.Queryf("PRAGMA page_size").rows.at(0).at(0);
    const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(part.GetName()));
    part.Finish();
    return bytes / Cellar::ToInt64(pageSize);
}

} // namespace Morv
