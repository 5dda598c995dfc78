#include "support/TestSupport.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "Afx/system/Computer.h"
#include "Afx/system/Settings.h"
#include "Afx/time/Clock.h"
#include "Afx/windows/Wnd.h"
#include "support/Stage.h"

namespace Test
{
namespace
{

std::unique_ptr<Afx::HeadlessWindowSystem> g_script; // on a stage
std::string g_folder;                                // of the running test; empty before its first use

void RemoveTempDir()
{
    std::error_code ignored;
    if (!g_folder.empty())
        std::filesystem::remove_all(g_folder, ignored);
    g_folder.clear();
}

} // namespace

Afx::HeadlessWindowSystem& Windows()
{
    if (g_script)
        return *g_script;
    auto* const windows = dynamic_cast<Afx::HeadlessWindowSystem*>(Afx::WindowSystem::Current());
    if (!windows)
        throw std::logic_error("the test has replaced the headless window system");
    return *windows;
}

std::string TempDir()
{
    while (g_folder.empty()) {
        const auto name = "morvut-test-" + std::to_string(std::random_device{}());
        const auto folder = std::filesystem::temp_directory_path() / name;
        if (std::filesystem::create_directory(folder)) // false: somebody else's
            g_folder = folder.string();
    }
    return g_folder;
}

std::string WriteFile(const std::string& name, std::string_view bytes)
{
    const std::string path = TempDir() + "/" + name;
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write " + path);
    return path;
}

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

unsigned Setting(const char* name, unsigned otherwise)
{
    const char* const text = std::getenv(name);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

std::string ReplacedAll(std::string text, std::string_view from, std::string_view to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

void ExpectTranscript(const std::string& file, const std::function<std::string(const std::string& command)>& run)
{
    const std::string path = MORVUT_TESTS + file;
    const std::string kept = ReadFile(path);
    EXPECT_NE(kept, "") << "there is no transcript " << path;
    std::string told;
    std::istringstream lines(kept);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("$ "))
            told += line + '\n' + ReplacedAll(run(line.substr(2)), "\n\n", "\n.\n");
        else if (line.empty() || line.starts_with("# "))
            told += line + '\n';
    if (std::getenv("MORVUT_WRITE_TRANSCRIPTS"))
        std::ofstream(path) << told;
    EXPECT_EQ(told, kept);
}

void SetNow(int year, int month, int day, int hour, int minute, int second, int milliseconds)
{
    const std::int64_t wanted = Afx::ToUnixMilliseconds({year, month, day, hour, minute, second, milliseconds});
    std::int64_t utc = wanted;
    for (int i = 0; i < 2; ++i) { // the second time beside a change of the clocks
        Afx::Clock::Set([utc] { return utc; });
        utc += wanted - Afx::ToUnixMilliseconds(Afx::Clock::Local());
    }
    Afx::Clock::Set([utc] { return utc; });
}

namespace
{

class Surroundings : public testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo&) override
    {
        Reset();
        auto windows = std::make_unique<Afx::HeadlessWindowSystem>();
        windows->OnUnexpected([](const Afx::HeadlessWindowSystem::Shown& shown) {
            ADD_FAILURE() << "message box or dialog without a script that it takes: " << shown.text;
            return Afx::SafeAnswer(shown.style);
        });
        if (Stage* const stage = TheStage()) {
            g_script = std::move(windows);
            Afx::WindowSystem::Install(stage->MakeSystem(*g_script));
        } else {
            Afx::WindowSystem::Install(std::move(windows));
        }
        Afx::Settings::SetPath((TempDir() + "/settings.ini").c_str());
    }
    void OnTestEnd(const testing::TestInfo&) override
    {
        Reset();
        const auto* const headless = dynamic_cast<Afx::HeadlessWindowSystem*>(Afx::WindowSystem::Current());
        if (const auto* const windows = g_script ? g_script.get() : headless) {
            EXPECT_EQ(windows->AnswersLeft(), 0u) << "message boxes that the test has scripted, but that never came";
            EXPECT_EQ(windows->ScriptsLeft(), 0u) << "dialogs that the test has scripted, but that never opened";
        }
        Afx::WindowSystem::Install(nullptr);
        g_script.reset();
        RemoveTempDir();
    }
    static void Reset()
    {
        Afx::Clock::Set({});
        Afx::Clock::SetSleep({});
        Afx::SetComputerName({});
    }
};

} // namespace

CString TextOf(const CWnd& window)
{
    CString text;
    window.GetWindowText(text);
    return text;
}

} // namespace Test

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new Test::Surroundings);
    Test::Stage* const stage = GTEST_FLAG_GET(list_tests) ? nullptr : Test::TheStage();
    return stage ? stage->Run([] { return RUN_ALL_TESTS(); }) : RUN_ALL_TESTS();
}
