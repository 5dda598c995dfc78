#include "Afx/system/Settings.h"

#include <cstdlib>
#include <filesystem>
#include <thread>
#include <tuple>

#include "Afx/Platform.h"
#include "Afx/system/Application.h"
#include "support/Test.h"

using Afx::Settings;

namespace
{

std::string Read(const char* section, const char* name)
{
    return Settings::Read(section, name).value_or("(none)").Str();
}

} // namespace

TEST(Settings, ReadsWhatPeopleWrite)
{
    Settings::SetPath(::Test::WriteFile(
        "people.ini", "\xEF\xBB\xBF; a comment\r\nOutside=1\r\n[ Preferences ]\r\nthis line is none\r\n=no name\r\n"
                      "  LastYOA =  33  \r\nLastYOA=34\r\n#Hidden=1\r\nEquation=a=b\r\nEmpty=\r\n"
                      "[broken\r\nAfterBroken=1\r\nName=Zo\xEB\r\n[preferences]\r\nSecond=2"));
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("Afx/Settings.tsv"))
        EXPECT_EQ(Read("PREFERENCES", in), out) << why;
    EXPECT_EQ(Read(nullptr, nullptr), "(none)");
}

TEST(Settings, ChangesOneLineAndKeepsTheRest)
{
    for (const auto& [before, section, name, value, after, why] :
         ::Test::Table<const char*, const char*, const char*, const char*, const char*>("Afx/Settings.tsv")) {
        Settings::SetPath(::Test::WriteFile("change.ini", before));
        EXPECT_TRUE(Settings::Write(section, name, value)) << why;
        EXPECT_EQ(::Test::ReadFile(Settings::GetPath().GetString()), after) << why;
    }
}

TEST(Settings, RefusesNamesThatNoFileHolds)
{
    for (const char* const name : {"", " n", "a=b", "a\nb", ";a", "#a", "[a"})
        EXPECT_FALSE(Settings::Write("S", name, "v")) << name;
    for (const char* const section : {"", "a\nb", "a ", "a]"})
        EXPECT_FALSE(Settings::Write(section, "n", "v")) << section;
    EXPECT_FALSE(std::filesystem::exists(Settings::GetPath().GetString()));
    Settings::SetPath(::Test::WriteFile("nameless.ini", "[S]\n=v\n"));
    EXPECT_EQ(Read("S", ""), "(none)");
}

TEST(Settings, NeverLosesAFileItCannotRead)
{
    Settings::SetPath(::Test::TempDir().c_str()); // a folder
    EXPECT_EQ(Read("S", "n"), "(none)");
    EXPECT_FALSE(Settings::Write("S", "n", "v"));
    const std::string large = ::Test::WriteFile("large.ini", std::string(5u << 20, ';'));
    Settings::SetPath(large);
    EXPECT_FALSE(Settings::Write("S", "n", "v"));
    EXPECT_EQ(::Test::ReadFile(large).size(), 5u << 20);
    EXPECT_EQ(Settings::GetProblem(), "has more than 4 MiB");
    for (const std::string& text : {std::string("\xFF\xFE["), std::string("[\0S\0", 4)}) {
        Settings::SetPath(::Test::WriteFile("utf16.ini", text));
        EXPECT_FALSE(Settings::Write("S", "n", "v"));
        EXPECT_FALSE(Settings::GetProblem().IsEmpty());
    }
}

#ifndef _WIN32
TEST(Settings, KeepsLinkAndRightsOfTheFile)
{
    namespace fs = std::filesystem;
    constexpr auto own = fs::perms::owner_read | fs::perms::owner_write, shared = own | fs::perms::group_read;
    const fs::path real = ::Test::WriteFile("real.ini", "[S]\n"), link = ::Test::TempDir() + "/link.ini";
    fs::permissions(real, shared);
    fs::create_symlink(real, link);
    Settings::SetPath(link.string());
    ASSERT_TRUE(Settings::Write("S", "n", "v"));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::status(real).permissions(), shared);
    Settings::SetPath((::Test::TempDir() + "/new/folder/s.ini").c_str());
    ASSERT_TRUE(Settings::Write("S", "n", "v"));
    EXPECT_EQ(fs::status(Settings::GetPath().GetString()).permissions(), own);
}

TEST(Settings, LosesNothingWhenTwoWriteAtOnce)
{
    const auto write = [](const char* names) {
        for (; *names; ++names)
            Settings::Write("S", std::string(1, *names).c_str(), "v");
    };
    std::thread other(write, "abcdefghijklmnopqrst");
    write("0123456789!$%&()*+,-");
    other.join();
    for (const char name : std::string_view("abcdefghijklmnopqrst0123456789!$%&()*+,-"))
        EXPECT_EQ(Read("S", std::string(1, name).c_str()), "v") << name;
}

TEST(Settings, FindsItsFileByTheEnvironment)
{
    const char* const names[] = {"MORVUT_SETTINGS", "XDG_CONFIG_HOME", "HOME"};
    std::optional<std::string> before[3];
    for (int i = 0; i < 3; ++i)
        if (const char* const value = std::getenv(names[i]))
            before[i] = value;
    Settings::SetPath({});
    for (const auto& [settings, config, home, expected] : {
             std::tuple("/own.ini", "/config", "/home", "/own.ini"),
             {"", "/config", "/home", "/config/morvut/settings.ini"},
             {"", "relative", "/home", "/home/.config/morvut/settings.ini"},
             {"", "", "", ""},
         }) {
        ::setenv(names[0], settings, 1);
        ::setenv(names[1], config, 1);
        ::setenv(names[2], home, 1);
        EXPECT_EQ(Settings::GetPath(), expected);
    }
    EXPECT_FALSE(Settings::Write("S", "n", "v")) << "no file at all";
    for (int i = 0; i < 3; ++i)
        before[i] ? ::setenv(names[i], before[i]->c_str(), 1) : ::unsetenv(names[i]);
}
#else
TEST(Settings, StandInTheRegistryWhenNoFileIsChosen)
{
    Settings::SetPath({});
    for (const char* const section : {"MorvUt Tests", "Software\\MorvUt Tests\\Own Key"}) {
        for (const char* const value : {"plain", "", " blanks ", "two\nlines\r\n", "Zoë £5"}) {
            ASSERT_TRUE(Settings::Write(section, "Value", value));
            EXPECT_EQ(Read(section, "value"), value) << section;
        }
        EXPECT_TRUE(Settings::Write(section, "Value", nullptr));
        EXPECT_EQ(Read(section, "Value"), "(none)");
        EXPECT_TRUE(Settings::Write(section, "Value", nullptr)) << "nothing to remove";
    }
    const DWORD number = 0xFFFFFFFF; // as other modules of the suite keep numbers
    ASSERT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, "Software\\MorvUt Tests\\Own Key", "Number", REG_DWORD, &number,
                              sizeof number),
              ERROR_SUCCESS);
    EXPECT_EQ(Read("Software\\MorvUt Tests\\Own Key", "Number"), "-1");
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\MorvUt Tests");
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\MorvUt\\MorvUt Tests");
}
#endif

TEST(CWinApp, KeepsWholeNumbersInItsProfile)
{
    CWinApp app;
    EXPECT_TRUE(app.WriteProfileInt("Preferences", "LastYOA", -2147483647 - 1));
    EXPECT_EQ(app.GetProfileInt("preferences", "lastyoa", 13), -2147483647 - 1);
    for (const char* const text : {"", "x", "5x", "2147483648", "1.5", static_cast<const char*>(nullptr)}) {
        EXPECT_TRUE(app.WriteProfileString("Preferences", "LastYOA", text));
        EXPECT_EQ(app.GetProfileInt("Preferences", "LastYOA", 13), 13) << (text ? text : "removed");
        EXPECT_EQ(app.GetProfileString("Preferences", "LastYOA", "default"), text ? text : "default");
    }
    EXPECT_TRUE(app.WriteProfileString("Preferences", "LastYOA", " +5 "));
    EXPECT_EQ(app.GetProfileInt("Preferences", "LastYOA", 13), 5) << "as people may write it";
}
