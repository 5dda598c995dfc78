#include "Kiln/controls/DateEdit.h"

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "support/Test.h"

namespace
{

using Kiln::CDate;
using Kiln::CDateEdit;

/// Whether the text of `edit` was taken over into `date`.
bool Save(CDateEdit& edit, CDate& date)
{
    CDataExchange exchange(nullptr, true);
    return !::Test::MessageOf<CUserException>([&] { edit.DDX(&exchange, date, 0); });
}

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
    edit.SetLatest({1999, 12, 31});
    edit.SetWindowText("29/2/00");
    EXPECT_EQ(edit.WhyNot(), "29 February 1900 does not exist; February 1900 has 28 days");
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
