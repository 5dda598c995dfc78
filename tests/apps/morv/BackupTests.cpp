// Copies of a practice in use.

#include <algorithm>
#include <filesystem>

#include "apps/morv/Program.h"
#include "Cellar/Connection.h"
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

TEST(Backup, OfAPracticeInUseHasWhatWasSaved)
{
    const std::string practice = SamplePractice(), folder = TempDir() + "/copies", file = folder + "/it's a copy.db";
    std::filesystem::create_directory(folder);
    const auto writer = Cellar::CConnection::Open(CString(practice));
    writer->ExecuteDirect("INSERT INTO [BRIXBank] ([strName]) VALUES ('saved')");
    writer->Begin(Cellar::Intent::Write); // all the time
    writer->ExecuteDirect("INSERT INTO [BRIXBank] ([strName]) VALUES ('not saved')");
    const Json made = MorvJson("practice backup " + practice + " \"" + file + "\"");
    EXPECT_EQ(made["practice"], practice);
    EXPECT_EQ(made["file"], file);
    EXPECT_EQ(made["key"], practice + ".key");
    EXPECT_EQ(made["pages"].get<std::uintmax_t>() * 4096, std::filesystem::file_size(file));
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(FilesIn(folder), 1U);

    std::filesystem::copy(practice + ".key", file + ".key");
    EXPECT_EQ(MorvJson("practice check \"" + file + "\"")["ok"], true);
    const auto copy = Cellar::CConnection::Open(CString(file));
    const auto banks = copy->Queryf("SELECT [strName] FROM [BRIXBank] WHERE [strName] = 'saved'").rows;
    EXPECT_TRUE(banks.size() == 1 && Cellar::ToText(banks[0][0]) == "saved");

    std::filesystem::current_path(folder);
    EXPECT_EQ(MorvJson("practice backup " + practice + " file:copy.db")["pages"], made["pages"]) << "no address";
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
