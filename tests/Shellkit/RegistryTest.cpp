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
    CRegistry registry;
    for (const auto& [text, number, truth, why] : ::Test::Table<const char*, int, int>("Shellkit/Registry.tsv")) {
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
