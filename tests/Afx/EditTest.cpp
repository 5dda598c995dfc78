#include "Afx/windows/Edit.h"

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

TEST(CEdit, HoldsWholeCharactersOfALineHoweverTheyCame)
{
    constexpr auto kMost = static_cast<std::size_t>(CEdit::kLongestLine);
    CEdit line, lines;
    lines.SetMultiLine(true);
    std::string text(kMost - 1, 'x');
    text += "££";
    for (CEdit* const edit : {&line, &lines})
        edit->SetWindowText(text.c_str());
    EXPECT_EQ(line.Text().View(), text.substr(0, kMost + 1));
    EXPECT_EQ(lines.Text().View(), text);
}
