#include "PartFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "Afx/system/Descriptor_posix.h"
#include "common/CommandError.h"
#include "Output.h"

namespace Morv
{

PartFile::PartFile(const std::string& file, const char* what)
    : m_file(file), m_name(file + "." + std::to_string(::getpid()) + ".part"), m_what(what)
{
    if (IsNameTaken())
        ThrowExists();
    Afx::Descriptor made(m_name, O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (!made)
        ThrowNotWritten(std::strerror(errno));
}

PartFile::~PartFile()
{
    for (const char* const ending : {"", "-journal", "-wal", "-shm"}) // the engine leaves them on a full disk
        ::unlink((m_name + ending).c_str());
}

void PartFile::Finish() const
{
    Afx::Descriptor written(m_name, O_RDWR);
    if (!written || ::fsync(written.Get()) != 0 || !written.Close())
        ThrowNotWritten(std::strerror(errno));
    if (::link(m_name.c_str(), m_file.c_str()) != 0) {
        // Not every file system gives a file two names, a memory stick's does not.
        if (errno == EEXIST || IsNameTaken())
            ThrowExists();
        if (::rename(m_name.c_str(), m_file.c_str()) != 0)
            ThrowNotWritten(std::strerror(errno));
    }
    Afx::SyncFolderOf(m_file);
}

void PartFile::ThrowNotWritten(const std::string& why) const
{
    throw CommandError(Exit::CannotOpen, "NOT_WRITTEN",
                       std::string("the ") + m_what + " " + Quoted(m_file) + " cannot be written: " + why,
                       "Check the folder, its rights and its free space.");
}

void PartFile::ThrowExists() const
{
    throw CommandError(Exit::CannotOpen, "EXISTS", Quoted(m_file) + " is there already",
                       std::string("Choose another name for the ") + m_what + ".");
}

bool PartFile::IsNameTaken() const
{
    struct stat found;
    return ::lstat(m_file.c_str(), &found) == 0;
}

} // namespace Morv
