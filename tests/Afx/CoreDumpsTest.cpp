#include "Afx/CoreDumps.h"

#include <sys/resource.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

TEST(SwitchOffCoreDumps, LeavesNoImageOfAProgramThatBreaksDown)
{
    const pid_t child = fork();
    if (child == 0) {
        Afx::SwitchOffCoreDumps();
        rlimit limit{};
        const bool isNone = getrlimit(RLIMIT_CORE, &limit) == 0 && limit.rlim_max == 0;
#ifdef __linux__
        const bool isShut = prctl(PR_GET_DUMPABLE) == 0;
#else
        const bool isShut = true;
#endif
        _exit(isNone && isShut ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}
