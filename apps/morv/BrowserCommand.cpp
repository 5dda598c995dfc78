#include "BrowserCommand.h"

#include <sys/wait.h>
#include <unistd.h>

namespace Morv
{

bool BrowserCommand::Start(const std::string& command, const std::string& address)
{
    const std::string line = command + " \"$1\"";
    const pid_t child = fork();
    if (child == 0) {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        execl("/bin/sh", "sh", "-c", line.c_str(), "sh", address.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    m_process = child > 0 ? child : 0;
    return child > 0;
}

bool BrowserCommand::HasFailed()
{
    int status = 0;
    if (m_process != 0 && waitpid(m_process, &status, WNOHANG) == m_process) {
        m_process = 0;
        m_exit = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    return m_exit != 0;
}

} // namespace Morv
