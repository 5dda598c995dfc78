#include "MorvUt/taxyear/DateExchange.h"

#include <iterator>

#include "Afx/system/Resources.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/MessageBox.h"
#include "support/Test.h"

namespace
{

constexpr unsigned kDateId = 101, kPromptId = 7;

/// A long date, and the text of another date with a prompt of the module's own.
struct CDatesDialog : CDialog
{
    explicit CDatesDialog(long date, int allowUnknownHere = 1) : value(date), allowUnknown(allowUnknownHere)
    {
        edit.Create(this, kDateId + 1); // not the first control, which has the focus anyway
        other.Create(this, kDateId);
    }
    void DoDataExchange(CDataExchange* exchange) override
    {
        DDX_LongDate(exchange, edit, value, flags, allowUnknown);
        DDV_ValidDate(exchange, text, static_cast<int>(kDateId), kPromptId);
    }
    /// Whether the dialog takes over what it shows; otherwise the user is told why, once.
    bool Save(bool isExpected)
    {
        ::Test::Windows().Clear();
        if (!isExpected)
            ::Test::Windows().Answer(IDOK);
        const bool isSaved = UpdateData(true);
        EXPECT_EQ(::Test::Windows().Messages().size(), isSaved ? 0u : 1u);
        return isSaved;
    }

    Kiln::CDateEdit edit;
    CEdit other;
    long value;
    unsigned flags = 0;
    int allowUnknown;
    CString text; // of the other date
};

constexpr Afx::StringResource kStrings[] = {{kPromptId, "Please enter a valid date of birth"}};

} // namespace

TEST(DDX_LongDate, ShowsTheDate)
{
    const ::Test::Case<long, const char*> rows[] = {
        {20240405, "05/04/2024"}, {0, ""}, {99, "Unknown"}, {20230229, ""}, {-1, ""}};
    for (const int allowUnknown : {0, 1})
        for (const auto& row : rows) {
            CDatesDialog dialog(row.in, allowUnknown);
            dialog.edit.SetWindowText("old");
            EXPECT_TRUE(dialog.UpdateData(false));
            EXPECT_EQ(::Test::TextOf(dialog.edit), row.out);
            EXPECT_EQ(dialog.value, row.in);
        }
}

TEST(DDX_LongDate, LimitsTheFieldThatShowsUnknown)
{
    CDatesDialog dialog(99);
    for (const char* const result : {"Unknown123", "1234567890123"}) {
        dialog.UpdateData(false);
        dialog.edit.SetFocus();
        dialog.edit.SetSel(7, 7);
        Afx::HeadlessWindowSystem::Type(dialog.edit, "1234567890123");
        EXPECT_EQ(::Test::TextOf(dialog.edit), result);
        dialog.value = 0; // the limit goes with the word, though it was written over
    }
}

TEST(DDX_LongDate, TakesTheTextOver)
{
    for (const auto& [text, allowUnknown, isRequired, value, why] :
         ::Test::Table<const char*, int, bool, long>("MorvUt/taxyear/DateExchange.tsv")) {
        CDatesDialog dialog(20200202, allowUnknown);
        dialog.flags = isRequired ? Kiln::kDateRequired : 0u;
        dialog.edit.SetWindowText(text);
        const bool isTaken = value != -1;
        EXPECT_EQ(dialog.Save(isTaken), isTaken) << why;
        EXPECT_EQ(dialog.value, isTaken ? value : 20200202) << why;
        EXPECT_EQ(CWnd::GetFocus(), isTaken ? nullptr : &dialog.edit) << why;
    }
}

TEST(DDV_ValidDate, RefusesWhatIsNoDateWithTheCallersPrompt)
{
    const Afx::ResourceContext strings(kStrings, std::size(kStrings));
    const Afx::ResourceContextGuard guard(strings);
    for (const auto& [in, out, why] : ::Test::Table<const char*, bool>("MorvUt/taxyear/DateExchange.tsv")) {
        CDatesDialog dialog(0);
        dialog.text = in;
        EXPECT_TRUE(dialog.UpdateData(false)) << "loading is not checked";
        EXPECT_EQ(dialog.Save(out), out) << why;
        EXPECT_EQ(CWnd::GetFocus(), out ? nullptr : &dialog.other) << why;
        for (const auto& message : ::Test::Windows().Messages())
            EXPECT_TRUE(message.text == kStrings[0].text && message.style == MB_OK) << message.text;
    }
}
