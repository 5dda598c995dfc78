#include "Kiln/controls/DateEdit.h"

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "support/Test.h"

namespace
{

using Kiln::CDate;
using Kiln::CDateEdit;

/// Whether the text of `edit` was taken over into `date`.
bool Save(CDateEdit& edit, CDate& date, unsigned flags = 0)
{
    CDataExchange exchange(nullptr, true);
    return !::Test::MessageOf<CUserException>([&] { edit.DDX(&exchange, date, flags); });
}

/// The reason that the user reads when the text of `edit` is not taken over.
CString WhyRefused(CDateEdit& edit, unsigned flags = 0)
{
    ::Test::Windows().Clear();
    ::Test::Windows().Answer(IDOK);
    CDate date(2020, 2, 2);
    EXPECT_FALSE(Save(edit, date, flags));
    EXPECT_EQ(date, CDate(2020, 2, 2)) << "left as it was";
    return ::Test::Windows().Messages().at(0).text;
}

/// A field whose dates lie in 2021, as a screen's own field would do it.
class COwnYearEdit : public CDateEdit
{
protected:
    void OnKillFocus(CWnd* newFocus) override
    {
        const YearHandlerScope scope([](int, int) { return 2021; });
        CDateEdit::OnKillFocus(newFocus);
    }
};

} // namespace

TEST(CDateEdit, ShowsWhatItReadsAgain)
{
    const auto before = CDate::GetParseOrder();
    for (const auto order : {CDate::ParseOrder::DayFirst, CDate::ParseOrder::MonthFirst}) {
        CDate::SetParseOrder(order);
        CDateEdit edit;
        for (const CDate& date : {CDate(100, 1, 1), CDate(9999, 12, 31), CDate(), CDate(2024, 4, 5)}) {
            CDataExchange loading(nullptr, false);
            CDate shown = date, saved(1, 1, 1);
            edit.DDX(&loading, shown, 0);
            EXPECT_TRUE(Save(edit, saved));
            EXPECT_EQ(saved, date) << date.FormatIso();
        }
        EXPECT_EQ(::Test::TextOf(edit), order == CDate::ParseOrder::DayFirst ? "05/04/2024" : "04/05/2024");
        edit.SetDate(CDate::Invalid());
        EXPECT_EQ(::Test::TextOf(edit), "");
    }
    CDate::SetParseOrder(before);
}

TEST(CDateEdit, TakesALaterYearACenturyBack)
{
    ::Test::SetNow(2024, 6, 15);
    CDateEdit edit;
    edit.SetLatest({2024, 6, 15});
    for (const auto& [text, date, why] : ::Test::Table<const char*, const char*>("Kiln/DateEdit.tsv")) {
        edit.SetWindowText(text);
        EXPECT_EQ(edit.GetDate().FormatIso(), date) << why;
    }
    edit.SetLatest({});
    edit.SetWindowText("16/6/24");
    EXPECT_EQ(edit.GetDate(), CDate(2024, 6, 16)) << "no latest day";
}

TEST(CDateEdit, RewritesADateThatIsLeft)
{
    const CDateEdit::YearHandlerScope scope([](int, int) { return 2023; });
    for (const auto& [typed, left, why] : ::Test::Table<const char*, const char*>("Kiln/DateEdit.tsv")) {
        CDateEdit edit;
        Afx::HeadlessWindowSystem::Type(edit, typed);
        EXPECT_EQ(::Test::TextOf(edit), typed) << why;
        Afx::HeadlessWindowSystem::Leave();
        EXPECT_EQ(::Test::TextOf(edit), left) << why;
    }
}

TEST(CDateEdit, RefusesWhatIsNoDateAndSaysWhy)
{
    for (const auto& [text, reason, why] : ::Test::Table<const char*, const char*>("Kiln/DateEdit.tsv")) {
        SCOPED_TRACE(why);
        CDateEdit edit;
        edit.SetLatest({1999, 12, 31});
        edit.SetWindowText(text);
        EXPECT_EQ(WhyRefused(edit, Kiln::kDateRequired), reason);
        EXPECT_EQ(CWnd::GetFocus(), &edit);
        int start = -1, end = -1;
        edit.GetSel(start, end);
        EXPECT_TRUE(start == 0 && end == CString(text).GetLength()) << "all is selected, to be typed over";
    }
}

TEST(CDateEdit, KeepsRefusingWhatItsOwnRuleRefusedAlsoWhenEnterSaves)
{
    const CDateEdit::YearHandlerScope scope([](int, int) { return 2024; }); // which has the day
    for (const bool leavesFirst : {false, true}) {
        COwnYearEdit edit;
        Afx::HeadlessWindowSystem::Type(edit, "29/2");
        if (leavesFirst)
            Afx::HeadlessWindowSystem::Leave();
        EXPECT_EQ(WhyRefused(edit), "29 February 2021 does not exist; February 2021 has 28 days");
        CDate date;
        edit.SetWindowText("29/02/2024");
        EXPECT_TRUE(Save(edit, date)) << "another text is another date";
    }
}

TEST(CDateEdit, AsksTheHandlerOfNowWheneverItIsLeft)
{
    CDateEdit edit;
    for (const CDate::YearHandler handler : {+[](int, int) { return 2023; }, +[](int, int) { return 2024; }}) {
        const CDateEdit::YearHandlerScope scope(handler);
        Afx::HeadlessWindowSystem::Type(edit, "29/2");
        Afx::HeadlessWindowSystem::Leave();
    }
    EXPECT_EQ(::Test::TextOf(edit), "29/02/2024");
}
