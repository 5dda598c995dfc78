#include "Kiln/CAmt.h"

#include <gtest/gtest.h>

using Kiln::CAmt;

TEST(CAmtParse, ReadsPoundsAndPence)
{
    CAmt amount;
    EXPECT_TRUE(amount.Parse("1,234.56"));
    EXPECT_EQ(amount.GetPence(), 123456);
}
