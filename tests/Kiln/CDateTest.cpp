#include "Kiln/CDate.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

using Kiln::CDate;

TEST(CDateParseDate, ReadsTheUsualForm)
{
    CDate date;
    EXPECT_TRUE(date.ParseDate("05/04/2024"));
    EXPECT_EQ(date, CDate(2024, 4, 5));
}
