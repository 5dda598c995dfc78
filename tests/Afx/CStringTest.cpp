#include "Afx/CString.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

TEST(CStringFormat, WritesWithFlagsWidthAndPrecision)
{
    CString text;
    text.Format("%02d/%02d/%04d", 5, 4, 2024);
    EXPECT_EQ(text, "05/04/2024");
}
