#include <gtest/gtest.h>

#include <map>
#include <string>

#include "MorvUt/res/Strings.h"
#include "support/Case.h"

TEST(MorvUtResources, EveryTextHasANumberOfItsOwnAndIsFound)
{
    const ::Test::Case<unsigned, const char*> rows[] = {
#define STRING(id, number, text) {id, text},
#include "MorvUt/res/strings.def"
#undef STRING
    };
    std::map<unsigned, std::string> seen;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.out);
        EXPECT_TRUE(seen.emplace(row.in, row.out).second) << "number " << row.in << " stands twice";
        const char* found = MorvUtResources().FindString(row.in);
        ASSERT_NE(found, nullptr);
        EXPECT_STREQ(found, row.out);
    }
    EXPECT_EQ(MorvUtResources().FindString(1), nullptr);
}
