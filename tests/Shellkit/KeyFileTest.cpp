#include <filesystem>
#include <set>
#include <string>
#include <tuple>

#include "Shellkit/Bytes.h"
#include "Shellkit/KeyFile.h"
#include "Shellkit/PracticeKey.h"
#include "support/Test.h"

#ifdef _WIN32
#include "Afx/Platform.h"

#include <aclapi.h>
#endif

using Shellkit::Bytes;
using std::filesystem::perms;

namespace
{

const std::string kDigits = "000102030405060708090A0B0C0D0E0F101112131415161718191a1b1c1d1e1f";

std::string OwnFile(const std::string& name, std::string_view text)
{
    const std::string path = ::Test::WriteFile(name, text);
    std::filesystem::permissions(path, perms::owner_read | perms::owner_write);
    return path;
}

#ifdef _WIN32
/// Whether nobody but the file's owner and the system has a right to it.
bool IsForItsOwnerOnly(const std::string& path)
{
    PSID owner = nullptr;
    PACL rights = nullptr;
    PSECURITY_DESCRIPTOR security = nullptr;
    if (GetNamedSecurityInfoA(path.c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION,
                              &owner, nullptr, &rights, nullptr, &security) != ERROR_SUCCESS)
        return false;
    bool only = rights != nullptr; // without a list everybody may do everything
    for (DWORD i = 0; only && i < rights->AceCount; ++i) {
        void* entry = nullptr;
        GetAce(rights, i, &entry);
        PSID const who = &static_cast<ACCESS_ALLOWED_ACE*>(entry)->SidStart;
        only = EqualSid(who, owner) || IsWellKnownSid(who, WinLocalSystemSid) ||
               IsWellKnownSid(who, WinCreatorOwnerRightsSid);
    }
    LocalFree(security);
    return only;
}
#else
bool IsForItsOwnerOnly(const std::string& path)
{
    return std::filesystem::status(path).permissions() == (perms::owner_read | perms::owner_write);
}
#endif

} // namespace

TEST(KeyFile, IsMadeOnceAndForItsOwnerOnly)
{
    const std::string first = ::Test::TempDir() + "/one.key", second = ::Test::TempDir() + "/two.key";
    ASSERT_TRUE(Shellkit::MakeKeyFile(first));
    ASSERT_TRUE(Shellkit::MakeKeyFile(second));
    EXPECT_TRUE(IsForItsOwnerOnly(first));
    EXPECT_FALSE(IsForItsOwnerOnly(::Test::WriteFile("ordinary.txt", "anybody's")));
    EXPECT_EQ(::Test::ReadFile(first).size(), 65u);
    const Bytes key = Shellkit::ReadKeyFile(first).value();
    EXPECT_EQ(key.size(), Shellkit::kKeySize);
    EXPECT_NE(key, Shellkit::ReadKeyFile(second));
    EXPECT_EQ(Shellkit::KeyFileProblem(first), "");
    EXPECT_FALSE(Shellkit::MakeKeyFile(first));
    EXPECT_EQ(Shellkit::ReadKeyFile(first), key) << "never overwritten";
#ifndef _WIN32
    const std::string empty = ::Test::WriteFile("empty.key", "");
    EXPECT_TRUE(Shellkit::MakeKeyFile(empty) && Shellkit::ReadKeyFile(empty)) << "its maker was killed";
#endif
    EXPECT_FALSE(Shellkit::MakeKeyFile(::Test::TempDir() + "/no such folder/practice.key"));
}

TEST(KeyFile, HoldsSixtyFourDigitsAndALineEnd)
{
    for (const auto& [text, isKey, why] : ::Test::Table<const char*, bool>("Shellkit/KeyFile.tsv")) {
        SCOPED_TRACE(why);
        const std::string path = OwnFile("practice.key", text);
        const auto key = Shellkit::ReadKeyFile(path);
        ASSERT_EQ(key.has_value(), isKey);
        EXPECT_EQ(Shellkit::KeyFileProblem(path).empty(), isKey);
        for (std::size_t i = 0; isKey && i < Shellkit::kKeySize; ++i)
            EXPECT_EQ((*key)[i], i);
    }
}

#ifndef _WIN32
TEST(KeyFile, ThatOthersMayReadIsRefused)
{
    const std::string path = OwnFile("practice.key", kDigits);
    for (const perms others : {perms::group_read, perms::others_read, perms::others_write, perms::group_exec}) {
        std::filesystem::permissions(path, perms::owner_read | others);
        EXPECT_FALSE(Shellkit::ReadKeyFile(path));
        EXPECT_NE(Shellkit::KeyFileProblem(path).find("chmod 600"), std::string::npos);
    }
    std::filesystem::permissions(path, perms::owner_read);
    EXPECT_TRUE(Shellkit::ReadKeyFile(path));

    const std::string shared = ::Test::TempDir() + "/shared.key", practice = ::Test::WriteFile("practice.db", "");
    ASSERT_TRUE(Shellkit::MakeKeyFile(shared, Shellkit::KeyReaders::Group));
    const std::tuple<perms, perms, const char*, const char*> rows[] = {
        {perms(0640), perms(0660), "", "the group that shares the practice"},
        {perms(0640), perms(0600), "chmod 600", "a practice that it does not share"},
        {perms(0640), perms(0640), "chmod 600", "nor write to"},
        {perms(0660), perms(0660), "chmod 640", "it may read the key and not change it"},
        {perms(0644), perms(0660), "chmod 640", "everybody"},
    };
    EXPECT_EQ(std::filesystem::status(shared).permissions(), perms(0640));
    for (const auto& [key, file, says, why] : rows) {
        std::filesystem::permissions(shared, key);
        std::filesystem::permissions(practice, file);
        const std::string problem = Shellkit::KeyFileProblem(shared, practice);
        EXPECT_TRUE(*says ? problem.find(says) != problem.npos : problem.empty()) << why << ": " << problem;
    }
}
#endif

TEST(KeyFile, ProblemNamesThePathAndNeverTheKey)
{
    std::set<std::string> problems;
    for (const std::string& path :
         {::Test::TempDir() + "/absent.key", OwnFile("spoilt.key", kDigits + "0"), ::Test::TempDir()}) {
        const std::string problem = Shellkit::KeyFileProblem(path);
        EXPECT_TRUE(problem.find(path) != std::string::npos && problem.find(kDigits) == std::string::npos) << problem;
        EXPECT_EQ(problem.find('\n'), std::string::npos);
        problems.insert(problem.substr(0, problem.find('"')) + problem.substr(problem.rfind('"')));
    }
    EXPECT_EQ(problems.size(), 3u) << "each fault has its own text";
}
