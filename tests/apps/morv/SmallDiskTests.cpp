// A disk that is full, or can only be read.

#include <algorithm>
#include <filesystem>

#include "apps/morv/Program.h"
#include "support/SmallDisk.h"
#include "support/Test.h"

namespace
{

using namespace ::Test;

void ExpectRefused(const std::string& line, const char* code, const char* says)
{
    const Ended ended = RunMorv(line + " --json");
    EXPECT_EQ(ended.exit, 3) << ended.out;
    EXPECT_EQ(ended.Document()["error"]["code"], code) << ended.out;
    EXPECT_NE(ended.err.find(says), std::string::npos) << ended.err;
    EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << ended.err;
}

std::size_t FilesIn(const std::string& folder)
{
    const std::filesystem::directory_iterator files(folder);
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

TEST(SmallDisk, HoldsNothingHalfWritten)
{
    const SmallDisk disk("2m");
    if (!disk.IsMounted())
        GTEST_SKIP() << "only root may mount a small disk";
    const std::string big = TempDir() + "/big.db", there = disk.Path() + "/practice.db";
    MorvJson("practice create --sample --clients 2000 " + big);
    ExpectRefused("practice backup " + big + " " + disk.Path() + "/copy.db", "NOT_WRITTEN", "the disk is full");
    EXPECT_EQ(FilesIn(disk.Path()), 0U);
    ExpectRefused("practice copy " + big + " " + there, "READ_ONLY", "the disk is full");
    EXPECT_EQ(FilesIn(disk.Path()), 1U) << "a key, which serves again";
    ExpectRefused("practice create --sample --clients 2000 " + there, "READ_ONLY", "the disk is full");
    EXPECT_EQ(FilesIn(disk.Path()), 2U) << "the journal, which fills the disk, is gone";
    EXPECT_EQ(MorvJson("practice create " + there)["clients"], 0) << "completes what was cut short";
    EXPECT_EQ(MorvJson("practice check " + there)["ok"], true);

    std::filesystem::remove(there);
    MorvJson("practice create --sample " + there);
    disk.Leave(100'000);
    const Ended rolled = RunMorv("year roll-forward --year 2019 --json " + there);
    EXPECT_EQ(rolled.exit, 3);
    EXPECT_NE(rolled.err.find("the disk is full; free some space"), std::string::npos) << rolled.err;
    EXPECT_EQ(rolled.Document()["stopped"], "unusable") << rolled.out;
    disk.Free();

    disk.MakeReadOnly();
    const std::string before = ReadFile(there);
    ExpectRefused("practice options " + there + " nDebugLogging=1", "READ_ONLY", "can only be read");
    ExpectRefused("practice backup " + big + " " + disk.Path() + "/copy.db", "NOT_WRITTEN", "Read-only file system");
    EXPECT_EQ(ReadFile(there), before);
}

} // namespace
