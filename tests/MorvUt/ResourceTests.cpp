#include <gtest/gtest.h>

#include <set>

#include "MorvUt/res/Strings.h"

TEST(MorvUtResources, EveryTextHasANumberOfItsOwnAndIsFound)
{
    std::set<unsigned> seen;
    const auto check = [&](unsigned number, const char* text) {
        EXPECT_TRUE(seen.insert(number).second) << "number " << number << " stands twice";
        EXPECT_STREQ(MorvUtResources().FindString(number), text);
    };
#define STRING(id, number, text) check(id, text);
#include "MorvUt/res/strings.def"
#undef STRING
    EXPECT_EQ(MorvUtResources().FindString(1), nullptr);
}
