#pragma once

// What every test finds around it: a headless window system, its own settings file and folder, the machine's own clock.
// All of it is made anew before each test and put back after it. Inside a TEST body write ::Test::, because there Test
// alone is the base class of GoogleTest.

#include <functional>
#include <optional>
#include <string>

#include "Afx/Exceptions.h"
#include "Afx/windows/WindowSystem.h"

class CWnd;

namespace Test
{

/// The window system of the running test, or the script that works the windows of its stage. A message box that the
/// test has not scripted fails it.
Afx::HeadlessWindowSystem& Windows();

/// A folder of this test's own, made on first use and removed with all in it afterwards.
std::string TempDir();
/// Writes a file in that folder and answers its path.
std::string WriteFile(const std::string& name, std::string_view bytes);
/// A file's bytes; empty when there is none.
std::string ReadFile(const std::string& path);

/// A whole number of the environment, as of how many rounds to run.
unsigned Setting(const char* name, unsigned otherwise);

/// `text` with each `from` replaced.
std::string ReplacedAll(std::string text, std::string_view from, std::string_view to);
/// A transcript holds commands ("$ ...") and below each what it prints, as `run` must answer it, with "." for an empty
/// line; the file is named as under tests/. With MORVUT_WRITE_TRANSCRIPTS in the environment it is written anew, to be
/// read before it is kept.
void ExpectTranscript(const std::string& file, const std::function<std::string(const std::string& command)>& run);

/// From now on, until the end of the test, this is the local time of Afx::Clock.
void SetNow(int year, int month, int day, int hour = 12, int minute = 0, int second = 0, int milliseconds = 0);

/// What a window shows.
CString TextOf(const CWnd& window);

/// Runs `action` and gives the message of the exception of class E that it throws; nothing when it throws none.
template<class E, class Action>
std::optional<std::string> MessageOf(Action action)
{
    try {
        action();
    } catch (E* exception) {
        std::string message = exception->GetErrorMessage().Str();
        exception->Delete();
        return message;
    }
    return std::nullopt;
}

} // namespace Test
