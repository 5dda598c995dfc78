#include <gtest/gtest.h>

#include <map>
#include <string>

#include "MorvUt/res/Strings.h"

TEST(MorvUtResources, EveryTextHasANumberOfItsOwnAndIsFound)
{
    const struct
    {
        unsigned id;
        const char* text;
    } rows[] = {
#define STRING(id, number, text) {id, text},
#include "MorvUt/res/strings.def"
#undef STRING
    };
    std::map<unsigned, std::string> seen;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_TRUE(seen.emplace(row.id, row.text).second) << "number " << row.id << " stands twice";
        const char* found = MorvUtResources().FindString(row.id);
        ASSERT_NE(found, nullptr);
        EXPECT_STREQ(found, row.text);
    }
    EXPECT_EQ(MorvUtResources().FindString(1), nullptr);
}
