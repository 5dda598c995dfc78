// A practice on another computer's disk: the system is made to say so.

#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

#include "NewPractice.h"

static unsigned fileSystem = 0; // 0: as it is

extern "C" __attribute__((visibility("default"))) int statfs(const char* path, struct statfs* answer) noexcept
{
    const auto result = static_cast<int>(syscall(SYS_statfs, path, answer));
    if (fileSystem != 0)
        answer->f_type = static_cast<decltype(answer->f_type)>(fileSystem);
    return result;
}

namespace
{

TEST(NetworkShare, IsRefusedAndLeftAsItIs)
{
    const ::Test::Practice practice;
    for (const unsigned type : {0x6969U, 0xFF534D42U, 0xFE534D42U}) { // NFS, CIFS, SMB 2
        fileSystem = type;
        for (const char* const name : {"practice.db", "new.db"})
            try {
                ::Test::Practice::Open(name);
                ADD_FAILURE() << name << " was opened on " << type;
            } catch (const Cellar::DatabaseError& error) {
                EXPECT_NE(error.GetReason().find("it is on a network share ("), std::string::npos) << error.what();
            }
        fileSystem = 0;
        EXPECT_TRUE(::Test::ReadFile(::Test::TempDir() + "/new.db").empty());
        EXPECT_NO_THROW(::Test::Practice::Open());
    }
}

} // namespace
