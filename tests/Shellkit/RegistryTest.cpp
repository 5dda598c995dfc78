#include "Shellkit/Registry.h"

#include <climits>
#include <tuple>

#include <gtest/gtest.h>

#include "Afx/system/Settings.h"

TEST(Registry, StandsUnderTheApplicationsKey)
{
    ASSERT_TRUE(CRegistry().SetInt("HMRCEndPoint", 2));
    EXPECT_EQ(CRegistry("Software\\velmara open systems\\Corvane PRO").GetInt("HMRCEndPoint", 0), 2);
    EXPECT_EQ(Afx::Settings::Read("Software\\Velmara Open Systems\\Corvane Pro", "HMRCEndPoint"), CString("2"));
    EXPECT_EQ(CRegistry("Software\\Other").GetInt("HMRCEndPoint", -5), -5);
}

TEST(Registry, ReadsNumbersAndTruthFromTheirTexts)
{
    // text, number with default 7, truth (-1: the default)
    const std::tuple<const char*, int, int, const char*> rows[] = {
        {"0", 0, 0, "zero"},
        {"12", 12, 1, "a number"},
        {"-1", -1, 1, "any number but 0 is true"},
        {" +3 ", 3, 1, "blanks and a plus"},
        {"+-3", 7, -1, "two signs"},
        {"2147483647", INT_MAX, 1, "largest"},
        {"-2147483648", INT_MIN, 1, "smallest"},
        {"2147483648", 7, 1, "too large for 32 bits, yet not 0"},
        {"12x", 7, -1, "no number as a whole"},
        {"1.5", 7, -1, "no whole number"},
        {"", 7, -1, "present and empty"},
        {"True", 7, 1, "word of any case"},
        {"off", 7, 0, "word"},
        {"false", 7, 0, "word"},
        {"maybe", 7, -1, "another word"},
    };
    CRegistry registry;
    for (const auto& [text, number, truth, why] : rows) {
        SCOPED_TRACE(why);
        ASSERT_TRUE(registry.SetString("Value", text));
        EXPECT_EQ(registry.GetInt("Value", 7), number);
        EXPECT_EQ(registry.GetBool("Value", true), truth != 0);
        EXPECT_EQ(registry.GetBool("Value", false), truth == 1);
    }
    ASSERT_TRUE(registry.SetString("Value", nullptr)) << "now absent";
    EXPECT_EQ(registry.GetString("Value", "none"), "none");
    EXPECT_EQ(registry.GetString("Value", nullptr), "");
    EXPECT_EQ(registry.GetInt("Value", 4), 4);
    EXPECT_TRUE(registry.GetBool("Value", true));
}
