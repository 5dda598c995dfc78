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
#include "support/Table.h"
#include "support/TestSupport.h"

using Kiln::CDate;

static constexpr char kRows[] = "MorvUt/ui/ScreenRules.tsv";

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
    for (const auto& [beside, day, month, after, before, why] : ::Test::Table<const char*, int, int, int, int>(kRows)) {
        CDate partner;
        partner.ParseDate(beside);
        EXPECT_EQ(YearBeside(day, month, partner, true, 2024), after) << why;
        EXPECT_EQ(YearBeside(day, month, partner, false, 2024), before) << why;
    }
    EXPECT_TRUE(UnderwritingYear(5, 4, 2024, true) == 2023 && UnderwritingYear(5, 4, 2024, false) == 2024);
}

TEST(TextLines, EndAtLineFeedsAndFillTabsUp)
{
    for (const auto& [text, expected, why] : ::Test::Table<const char*, const char*>(kRows)) {
        std::string lines;
        for (const std::string& line : TextLines(text))
            lines += line + '|';
        EXPECT_EQ(lines, expected) << why;
    }
}

TEST(LongProcess, TellsRoundedTimeInWords)
{
    for (auto [seconds, rounded, text, why] : ::Test::Table<int, int, const char*>(kRows)) {
        EXPECT_EQ(CLongProcess::FormatTimeRemaining(seconds), CString("Estimated Time Remaining:") + text) << why;
        CLongProcess::RoundSecondsToGo(seconds);
        EXPECT_EQ(seconds, rounded) << text;
    }
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
    for (const auto& [second, done, total, texts, completions, end, why] :
         ::Test::Table<int, int, int, int, int, const char*>(kRows)) {
        ::Test::SetNow(2024, 1, 15, 10, 1, second);
        process.UpdateTimes(done, total);
        EXPECT_EQ(std::pair(remaining.written, completion.written), std::pair(texts, completions)) << why;
        EXPECT_EQ(completion.Text(), end) << why;
    }
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
    for (const auto& [typed, year, why] : ::Test::Table<const char*, const char*>(kRows))
        EXPECT_EQ(ExpandAvoidanceYear(typed), year) << why;
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
