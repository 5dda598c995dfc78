#include "Lattice/TabbedText.h"

#include <gtest/gtest.h>

TEST(TabbedText, ComesBackAsItWent)
{
    const Lattice::TextBlock block{{"a", "", "b\tc"}, {"two\nlines", "say \"so\"", "\"quoted\""}, {""}};
    EXPECT_EQ(Lattice::FromTabbedText(Lattice::ToTabbedText(block)), block);
    EXPECT_EQ(Lattice::FromTabbedText("1\t2\n3"), (Lattice::TextBlock{{"1", "2"}, {"3"}})) << "of other programs";
    EXPECT_EQ(Lattice::FromTabbedText("\"open"), (Lattice::TextBlock{{"open"}})) << "a quote that is never closed";
    EXPECT_TRUE(Lattice::FromTabbedText("").empty());
}
