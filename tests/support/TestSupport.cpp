#include "support/TestSupport.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

#include "Afx/time/Clock.h"
#include "Afx/windows/Wnd.h"

namespace Test
{
namespace
{

std::string g_folder; // of the running test; empty before its first use

} // namespace

Afx::HeadlessWindowSystem& Windows()
{
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

void RemoveTempDir()
{
    std::error_code ignored;
    if (!g_folder.empty())
        std::filesystem::remove_all(g_folder, ignored);
    g_folder.clear();
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

CString TextOf(const CWnd& window)
{
    CString text;
    window.GetWindowText(text);
    return text;
}

} // namespace Test
