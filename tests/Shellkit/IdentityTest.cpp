#include "Shellkit/Identity.h"

#include <set>

#include <gtest/gtest.h>

#include "Shellkit/Random.h"

TEST(Guid, IsRandomAndSaysSoInUpperCase)
{
    const GUID id{0x00abcdef, 0x0123, 0x4567, {0x89, 0xab, 0xcd, 0xef, 0x01, 0x23, 0x45, 0x67}};
    EXPECT_EQ(Shellkit::FormatGuid(id), "00ABCDEF-0123-4567-89AB-CDEF01234567");
    std::set<std::string> seen;
    for (int i = 0; i < 200; ++i) {
        const std::string text = *seen.insert(Shellkit::FormatGuid(Shellkit::NewGuid())).first;
        EXPECT_EQ(text[14], '4') << text;
        EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << text;
    }
    EXPECT_EQ(seen.size(), 200u);
}

TEST(RandomGenerator, GivesPositiveNumbersFromTheWholeRange)
{
    std::set<long> seen;
    long every = 0;
    for (int i = 0; i < 500; ++i) {
        const long number = g_RandomGenerator.NewRandomPositive();
        ASSERT_GE(number, 1);
        ASSERT_LE(number, 2147483647);
        seen.insert(number);
        every |= number;
    }
    EXPECT_GT(seen.size(), 490u); // one pair among 500 comes once in 17,000 runs
    EXPECT_EQ(every, 2147483647); // each bit was set at least once
}
