#include "Afx/windows/Edit.h"

#include <tuple>

#include "Afx/windows/MessageBox.h"
#include "support/Test.h"

TEST(CEdit, PutsTypedCharactersInPlaceOfTheSelection)
{
    for (const auto& [text, start, end, limit, typed, result, why] :
         ::Test::Table<const char*, int, int, int, const char*, const char*>("Afx/Edit.tsv")) {
        CEdit edit;
        edit.LimitText(limit);
        edit.SetWindowText(text);
        edit.SetFocus();
        edit.SetSel(start, end);
        Afx::HeadlessWindowSystem::Type(edit, typed);
        EXPECT_EQ(::Test::TextOf(edit), result) << why;
    }
}

TEST(CEdit, RepeatsACharacterThatIsHeldDown)
{
    CEdit edit;
    edit.LimitText(4);
    edit.DeliverChar('a', 9);
    edit.DeliverChar('\b', 3);
    EXPECT_EQ(::Test::TextOf(edit), "a") << "of four";
    edit.SetWindowText("b");
    edit.DeliverChar('a');
    EXPECT_EQ(::Test::TextOf(edit), "ab") << "a text that is set has the caret before it";
    edit.SetSel(0, -1);
    for (const unsigned noCharacter : {0xD800u, 0xDFFFu, 0x110000u})
        edit.DeliverChar(noCharacter);
    EXPECT_EQ(::Test::TextOf(edit), "ab") << "half a surrogate pair and numbers beyond Unicode replace nothing";
}

TEST(CEdit, RefusesWholeWhatIsTooLongForALine)
{
    constexpr auto kMost = static_cast<std::size_t>(CEdit::kLongestLine);
    const std::tuple<std::size_t, std::size_t, std::size_t, bool, const char*> rows[] = {
        {0, kMost, kMost, false, "as much as there can be"},
        {0, kMost + 1, 0, true, "one more"},
        {10, kMost - 9, 10, true, "beside what is there"},
    };
    for (const auto& [there, pasted, left, isTold, why] : rows) {
        CEdit edit;
        edit.SetWindowText(std::string(there, 'a').c_str());
        edit.SetFocus();
        ::Test::Windows().Clear();
        ::Test::Windows().OnUnexpected([](const auto&) { return IDOK; });
        ::Test::Windows().SetClipboard(std::string(pasted, 'x'));
        Afx::UserActs::Key(edit, 'V', Afx::kControl);
        EXPECT_EQ(static_cast<std::size_t>(edit.Text().GetLength()), left) << why;
        EXPECT_EQ(::Test::Windows().Messages().size(), isTold ? 1u : 0u) << why;
    }
    CEdit line, lines;
    lines.SetMultiLine(true);
    std::string text(kMost - 1, 'x');
    text += "££";
    for (CEdit* const edit : {&line, &lines})
        edit->SetWindowText(text.c_str());
    EXPECT_EQ(line.Text().View(), text.substr(0, kMost + 1)) << "whole characters, however they came";
    EXPECT_EQ(lines.Text().View(), text);
}
