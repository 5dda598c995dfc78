#include "MorvUt/taxyear/DateExchange.h"

#include <gtest/gtest.h>

#include <iterator>

#include "Afx/Dialog.h"
#include "Afx/MessageBox.h"
#include "Afx/Resources.h"
#include "support/Case.h"
#include "support/TestSupport.h"

namespace
{

constexpr unsigned kDateId = 101, kPromptId = 7;

/// A long date, and the text of another date with a prompt of the module's own.
class CDatesDialog : public CDialog
{
public:
    explicit CDatesDialog(long date, int allowUnknown = 1) : value(date), m_allowUnknown(allowUnknown)
    {
        edit.Create(this, kDateId + 1); // not the first control, which has the focus anyway
        other.Create(this, kDateId);
    }
    Kiln::CDateEdit edit;
    CEdit other;
    long value;
    CString text; // of the other date

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        DDX_LongDate(exchange, edit, value, 0, m_allowUnknown);
        DDV_ValidDate(exchange, text, static_cast<int>(kDateId), kPromptId);
    }

private:
    int m_allowUnknown;
};

constexpr Afx::StringResource kStrings[] = {{kPromptId, "Please enter a valid date of birth"}};

} // namespace

TEST(DDX_LongDate, ShowsTheDate)
{
    const ::Test::Case<long, const char*> rows[] = {
        {20240405, "05/04/2024"}, {0, ""}, {99, "Unknown"}, {20230229, ""}, {-1, ""}};
    for (const int allowUnknown : {0, 1})
        for (const auto& row : rows) {
            SCOPED_TRACE(row.in);
            CDatesDialog dialog(row.in, allowUnknown);
            dialog.edit.SetWindowText("old");
            EXPECT_TRUE(dialog.UpdateData(false));
            EXPECT_EQ(::Test::TextOf(dialog.edit), row.out);
            EXPECT_EQ(dialog.value, row.in);
        }
}

TEST(DDX_LongDate, LimitsTheFieldThatShowsUnknown)
{
    for (const auto& [value, typed, result] :
         {std::tuple{99L, "1234567890123", "Unknown123"}, {0L, "1234567890123", "1234567890123"}}) {
        CDatesDialog dialog(value);
        dialog.UpdateData(false);
        dialog.edit.SetFocus();
        dialog.edit.SetSel(7, 7);
        Afx::HeadlessWindowSystem::Type(dialog.edit, typed);
        EXPECT_EQ(::Test::TextOf(dialog.edit), result);
    }
}

TEST(DDX_LongDate, TakesTheTextOver)
{
    const struct
    {
        const char* text;
        int allowUnknown;
        long value; // -1: refused
        const char* why;
    } rows[] = {
        {"5/4/2024", 0, 20240405, "a date"},
        {"", 1, 0, "null"},
        {"Unknown", 1, 99, "as it is shown"},
        {"UNKNOWN  \t", 1, 99, "in capitals, blanks behind it"},
        {" Unknown", 1, -1, "a blank before it"},
        {"Unknown.", 1, -1, "more than the word"},
        {"99", 1, -1, "the number"},
        {"Unknown", 0, -1, "not allowed here"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        CDatesDialog dialog(20200202, row.allowUnknown);
        dialog.edit.SetWindowText(row.text);
        ::Test::Windows().Clear();
        if (row.value == -1)
            ::Test::Windows().Answer(IDOK);
        EXPECT_EQ(dialog.UpdateData(true), row.value != -1);
        EXPECT_EQ(dialog.value, row.value == -1 ? 20200202 : row.value);
        EXPECT_EQ(CWnd::GetFocus(), row.value == -1 ? &dialog.edit : nullptr);
    }
}

TEST(DDX_LongDate, PassesTheFlagsOn)
{
    CDatesDialog dialog(20200202);
    ::Test::Windows().Answer(IDOK);
    CDataExchange saving(&dialog, true);
    EXPECT_TRUE(::Test::MessageOf<CUserException>(
        [&] { DDX_LongDate(&saving, dialog.edit, dialog.value, Kiln::kDateRequired, 1); }));
    EXPECT_EQ(dialog.value, 20200202);
}

TEST(DDV_ValidDate, RefusesWhatIsNoDateWithTheCallersPrompt)
{
    const Afx::ResourceContext strings(kStrings, std::size(kStrings));
    const Afx::ResourceContextGuard guard(strings);
    const ::Test::Case<const char*, bool> rows[] = {
        {"5/4/2024", true, "a date"},
        {"", true, "null"},
        {"Unknown", true, "Unknown"},
        {"X", true, "Unknown in one letter"},
        {"unknown", false, "small letters are read as a date"},
        {"29/2/2023", false, "no such day"},
        {"29/2/1900", false, "a leap year for the record, but not for who reads it"},
        {"  ", false, "blank is neither empty nor a date"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        CDatesDialog dialog(0);
        dialog.text = row.in;
        ::Test::Windows().Clear();
        EXPECT_TRUE(dialog.UpdateData(false)) << "loading is not checked";
        if (!row.out)
            ::Test::Windows().Answer(IDOK);
        EXPECT_EQ(dialog.UpdateData(true), row.out);
        EXPECT_EQ(CWnd::GetFocus(), row.out ? nullptr : &dialog.other);
        ASSERT_EQ(::Test::Windows().Messages().size(), row.out ? 0u : 1u);
        if (!row.out) {
            EXPECT_EQ(::Test::Windows().Messages()[0].text, kStrings[0].text);
            EXPECT_EQ(::Test::Windows().Messages()[0].style, MB_OK);
        }
    }
}
