// Lists, edits, progress and sheets.

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <utility>

#include "Afx/system/Application.h"
#include "Afx/windows/Static.h"
#include "MorvUt/ui/edits/TextLines.h"
#include "MorvUt/ui/edits/YearRules.h"
#include "MorvUt/ui/lists/ListFile.h"
#include "MorvUt/ui/progress/LongProcess.h"
#include "MorvUt/ui/sheets/AvoidanceNotes.h"
#include "MorvUt/ui/sheets/Furniture.h"
#include "MorvUt/ui/sheets/NotesKinds.h"
#include "support/Case.h"
#include "support/TestSupport.h"

using Kiln::CDate;

TEST(ListFile, GivesItsLinesCleanWhateverWroteIt)
{
    CWinApp app;
    app.WriteProfileString("Preferences", "DataDirectory", (::Test::TempDir() + "//").c_str());
    ::Test::WriteFile("CharList.txt", "Abbey  \r\n\r\n\t Soci\xE9t\xE9\r\n \nZeta & Co"); // Windows-1252
    EXPECT_EQ(ReadListFile("charlist.TXT"), (std::vector<CString>{"Abbey", "Soci\xC3\xA9t\xC3\xA9", "Zeta & Co"}));
    ::Test::WriteFile("Empty.txt", "");
    EXPECT_EQ(ReadListFile("Empty.txt")->size(), 0U) << "read, and nothing in it";
    for (const char* const name : {"Missing.txt", "", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(ReadListFile(name));
}

TEST(YearRules, PutADayBesideItsPartnerElseIntoTheTaxYear)
{
    const CDate june(2023, 6, 1);
    // partner, day, month; after it, before it
    const ::Test::Row<CDate, int, int, int, int> rows[] = {
        {june, 1, 6, 2023, 2023, "on both sides"},   {june, 2, 6, 2023, 2022, "a day later"},
        {june, 31, 5, 2024, 2023, "a day earlier"},  {june, 29, 2, 2024, 2023, "there is such a day after it"},
        {{}, 5, 4, 2024, 2024, "the last day"},      {CDate::Invalid(), 6, 4, 2023, 2023, "the first"},
        {{}, 31, 12, 2023, 2023, "end of the year"}, {{}, 1, 1, 2024, 2024, "its start"},
    };
    for (const auto& [partner, day, month, after, before, why] : rows) {
        EXPECT_EQ(YearBeside(day, month, partner, true, 2024), after) << why;
        EXPECT_EQ(YearBeside(day, month, partner, false, 2024), before) << why;
    }
    EXPECT_TRUE(UnderwritingYear(5, 4, 2024, true) == 2023 && UnderwritingYear(5, 4, 2024, false) == 2024);
}

TEST(TextLines, EndAtLineFeedsAndFillTabsUp)
{
    const ::Test::Row<std::string, std::vector<std::string>> rows[] = {
        {"", {""}, "one empty line"},
        {"abc\r\nde\r\n", {"abc", "de", ""}, "a line feed at the end begins a line, CR has no width"},
        {"1234567\tx\n12345678\tx", {"1234567 x", "12345678        x"}, "a tab has one blank at least"},
        {"\xC3\xA9\xE2\x82\xAC\t|", {"\xC3\xA9\xE2\x82\xAC      |"}, "characters, not bytes"},
    };
    for (const auto& [text, lines, why] : rows)
        EXPECT_EQ(TextLines(text), lines) << why;
}

TEST(LongProcess, TellsRoundedTimeInWords)
{
    const std::pair<int, int> rounded[] = {
        {59, 59},     {67, 60},       {68, 75},       {134, 120},     {135, 150},
        {359, 360},   {389, 360},     {3599, 3600},   {4050, 4500},   {7199, 7200},
        {8099, 7200}, {21599, 21600}, {21600, 21600}, {23399, 21600}, {INT_MAX, 2147482800},
    };
    for (auto [seconds, expected] : rounded) {
        CLongProcess::RoundSecondsToGo(seconds);
        EXPECT_EQ(seconds, expected);
    }
    const std::pair<int, const char*> told[] = {
        {0, ""},
        {61, " 1 minute 1 second"},
        {3725, " 1 hour 2 minutes 5 seconds"},
        {2 * 86'400 - 1, " 1 days 23 hours 59 minutes 59 seconds"},
    };
    for (const auto& [seconds, text] : told)
        EXPECT_EQ(CLongProcess::FormatTimeRemaining(seconds), CString("Estimated Time Remaining:") + text);
}

TEST(LongProcess, RewritesATextOnlyWhenItChanges)
{
    struct CountingText : CStatic
    {
        void OnSetText(const char* text) override
        {
            ++written;
            CStatic::OnSetText(text);
        }
        int written = 0;
    } remaining, completion;
    CLongProcess process(remaining, completion, 10);
    ::Test::SetNow(2024, 1, 15, 10, 0, 0);
    process.SetStartTime(CTime::GetCurrentTime());
    const auto update = [&](int second, int done, int total) {
        ::Test::SetNow(2024, 1, 15, 10, 1, second);
        process.UpdateTimes(done, total);
        return std::pair(remaining.written, completion.written);
    };
    EXPECT_EQ(update(7, 0, 10), std::pair(0, 0)) << "nothing is done yet";
    EXPECT_EQ(update(7, 5, 10), std::pair(1, 1));
    EXPECT_EQ(::Test::TextOf(completion), "Estimated Completion Time: 10:02:14");
    EXPECT_EQ(update(6, 1, 2), std::pair(1, 2)) << "another end, the same minute";
    EXPECT_EQ(update(6, 1, 2), std::pair(1, 2));
    EXPECT_EQ(update(8, 2, 2), std::pair(2, 3)) << "all is done";
    EXPECT_EQ(::Test::TextOf(remaining), "Estimated Time Remaining:");
    EXPECT_TRUE(SecondsToGo(1LL << 40, 1, INT_MAX) == INT_MAX && SecondsToGo(-(1LL << 40), 1, INT_MAX) == INT_MIN);
}

TEST(NotesKinds, HaveTheirPagesInOneOrder)
{
    for (const auto& [rows, kinds] : std::initializer_list<std::pair<NotesRows, unsigned>>{
             {{}, 0}, {{0}, 1}, {{-1, 5}, 2}, {{-1, -1, 0}, 4}, {{-1, -1, -1, 9}, 8}, {{1, 2, 3, 4}, 15}})
        EXPECT_TRUE(NotesKindsOf(true, rows) == kinds && NotesKindsOf(false, rows) == 0) << kinds;
    EXPECT_EQ(FirstNotesPage(NotesPagesOf(NotesAvoidance | NotesEstimate), NotesReturn), 0U) << "which is none of them";
    EXPECT_EQ(NotesPanelLabel(15, "Loans"), "Audit, Return, Est., Avoidance, Loans");
}

TEST(AvoidanceNotes, ExpandAShortYearAndAreRefusedByItFirst)
{
    for (const auto& [typed, year] : std::initializer_list<std::pair<const char*, const char*>>{
             {"", ""}, {"9", "2009"}, {"45", "2045"}, {"999", "2999"}, {"1000", "1000"}, {" 19 ", "2019"}, {"x", "x"}})
        EXPECT_EQ(ExpandAvoidanceYear(typed), year);
    AvoidanceEntry entry{true, 2023, ""};
    EXPECT_EQ(CheckAvoidance(entry, 2024, "")->message, "The tax year cannot be earlier than the current tax year.");
    EXPECT_EQ(CheckAvoidance(entry, 2024, "Not before the scheme.")->message, "Not before the scheme.");
    entry.hasYear = false;
    EXPECT_EQ(CheckAvoidance(entry, 2024, "Not before the scheme.")->field, AvoidanceField::Reference);
    EXPECT_FALSE(CheckAvoidance({true, 2024, "12345678"}, 2024, ""));
}

TEST(Furniture, TakesNoShareThatIsNoNumber)
{
    EXPECT_TRUE(IsValidClientShare(-0.0));
    EXPECT_FALSE(IsValidClientShare(std::numeric_limits<double>::quiet_NaN()));
}
