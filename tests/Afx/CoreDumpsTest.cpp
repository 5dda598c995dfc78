#include "Afx/system/CoreDumps.h"

#include <sys/resource.h>

#include <gtest/gtest.h>

static void EndAfterSwitchingOff()
{
    Afx::SwitchOffCoreDumps();
    rlimit limit{};
    std::_Exit(getrlimit(RLIMIT_CORE, &limit) == 0 && limit.rlim_max == 0 ? 0 : 1);
}

TEST(SwitchOffCoreDumps, HoldsForTheRestOfTheProcess)
{
    EXPECT_EXIT(EndAfterSwitchingOff(), testing::ExitedWithCode(0), "");
}
