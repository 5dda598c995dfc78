#include "MorvUt/taxyear/CurrentTaxYear.h"

#include <optional>
#include <thread>

#include "Afx/system/Application.h"
#include "MorvUt/taxyear/PFileYearOffsetter.h"
#include "MorvUt/taxyear/TaxYearHelpers.h"
#include "support/Test.h"

namespace
{

/// A process that has just begun.
class CurrentTaxYear : public testing::Test
{
protected:
    CurrentTaxYear() { CCurrentTaxYearSingleton::Destroy(); }
    ~CurrentTaxYear() override { CCurrentTaxYearSingleton::Destroy(); }
};

} // namespace

TEST_F(CurrentTaxYear, NeedsNoApplication)
{
    EXPECT_EQ(GetCurrentTaxYear(), 33);
    EXPECT_EQ(GetCurrentRealTaxYear(), 2024);
    EXPECT_EQ(TaxYearHelpers::GetCurrentTaxYear(), TaxYear(2024));
    SetCurrentTaxYear(20);
    EXPECT_EQ(TaxYearHelpers::GetCurrentTaxYear(), TaxYear(2011));
    EXPECT_EQ(TaxYearHelpers::GetDefaultTaxYear(), TaxYear(2024));
}

TEST_F(CurrentTaxYear, ComesFromTheProfileWhenTheUserWantsThat)
{
    CWinApp app;
    for (const auto& [remember, last, real, why] :
         ::Test::Table<int, std::optional<int>, short>("MorvUt/taxyear/CurrentTaxYear.tsv")) {
        if (remember)
            app.WriteProfileInt("Preferences", "RememberYOA", remember);
        app.WriteProfileString("Preferences", "LastYOA", last ? std::to_string(*last).c_str() : "");
        CCurrentTaxYearSingleton::Destroy();
        EXPECT_EQ(GetCurrentRealTaxYear(), real) << why;
    }
    app.WriteProfileInt("Preferences", "LastYOA", 30);
    EXPECT_EQ(GetCurrentTaxYear(), 20) << "it is read once";
}

TEST_F(CurrentTaxYear, IsRememberedWhenTheUserWantsThat)
{
    CWinApp app;
    SetCurrentTaxYear(20);
    EXPECT_EQ(GetCurrentRealTaxYear(), 2011);
    EXPECT_EQ(app.GetProfileInt("Preferences", "LastYOA", -7), -7) << "not asked for";

    app.WriteProfileInt("Preferences", "RememberYOA", 1);
    SetCurrentTaxYear(20);
    EXPECT_EQ(app.GetProfileInt("Preferences", "LastYOA", -7), 20);
    TaxYearHelpers::SetCurrentTaxYear(TaxYear(1990));
    EXPECT_EQ(GetCurrentRealTaxYear(), 1990) << "no check of the range";
    EXPECT_EQ(app.GetProfileInt("Preferences", "LastYOA", -7), -1);
}

TEST_F(CurrentTaxYear, IsOffsetOnOneThreadUntilTheInnerGuardEnds)
{
    SetCurrentTaxYear(29);
    const CPFileYearOffsetter outer(-1);
    EXPECT_EQ(GetCurrentRealTaxYear_WithPFileYearOffset(), 2019);
    EXPECT_EQ(GetCurrentRealTaxYear(), 2020);
    short elsewhere = 0;
    std::thread([&] { elsewhere = GetCurrentRealTaxYear_WithPFileYearOffset(); }).join();
    EXPECT_EQ(elsewhere, 2020);
    {
        const CPFileYearOffsetter inner(3);
        EXPECT_EQ(GetCurrentRealTaxYear_WithPFileYearOffset(), 2023);
    }
    EXPECT_EQ(GetCurrentRealTaxYear_WithPFileYearOffset(), 2020) << "guards do not nest";
}
