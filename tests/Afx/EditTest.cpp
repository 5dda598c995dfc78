#include "Afx/windows/Edit.h"

#include <tuple>

#include "Afx/windows/MessageBox.h"
#include "support/Test.h"

TEST(CEdit, PutsTypedCharactersInPlaceOfTheSelection)
{
    const std::tuple<const char*, int, int, int, const char*, const char*, const char*> rows[] = {
        {"abc", 1, 1, 0, "XY", "aXYbc", "at the caret, which moves on"},
        {"abc", 1, 2, 0, "X", "aXc", "a selection is replaced"},
        {"abc", 2, 1, 0, "X", "aXc", "selected backwards"},
        {"abc", 0, -1, 0, "X", "X", "all selected"},
        {"abc", 9, 99, 0, "X", "abcX", "beyond the end"},
        {"abc", 1, 3, 0, "\b", "a", "backspace takes the selection"},
        {"abc", 0, 0, 0, "\b", "abc", "nothing before the caret"},
        {"a£", 3, 3, 0, "\b", "a", "a whole character"},
        {"a£", 2, 2, 0, "X", "aX£", "never into a character"},
        {"abc", 3, 3, 0, "\t\r\n\x1B\x01\x7F", "abc", "control characters are no text"},
        {"Unknown", 7, 7, 10, "££££", "Unknown£££", "the limit counts characters"},
        {"abc", 0, 1, 3, "XY", "Xbc", "room for what is replaced"},
        {"abcdef", 6, 6, 3, "X", "abcdef", "a text that is too long stays"},
        {"abcdef", 6, 6, 3, "\b", "abcde", "but can be shortened"},
    };
    for (const auto& [text, start, end, limit, typed, result, why] : rows) {
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
        {0, 1 << 20, 0, true, "a megabyte"},
    };
    for (const auto& [there, pasted, left, isTold, why] : rows) {
        CEdit edit;
        edit.SetWindowText(std::string(there, 'a').c_str());
        edit.SetFocus();
        ::Test::Windows().Clear();
        if (isTold)
            ::Test::Windows().Answer(IDOK);
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
