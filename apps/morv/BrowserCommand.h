#pragma once

// The command that opens an address in a browser.

#include <string>

namespace Morv
{

/// Runs in the background; its output goes to standard error. It may go on after this program has ended.
class BrowserCommand
{
public:
    /// `command` with the address as its last argument, by the shell. False: it could not be started.
    bool Start(const std::string& command, const std::string& address);
    /// It has ended, and not with 0.
    bool HasFailed();
    int GetExit() const noexcept { return m_exit; } // of the shell, 128 and more for a signal; 0 while it runs

private:
    int m_process = 0; // 0: none, or ended
    int m_exit = 0;
};

} // namespace Morv
