#include "MorvUt/identifiers/BuildingSocietyReferenceEdit.h"

#include <memory>
#include <string_view>

#include "Afx/text/Utf8.h"
#include "support/Test.h"

TEST(CBuildingSocietyReferenceEdit, TakesOnlyCharactersOfReferences)
{
    constexpr std::string_view kTaken = "-/0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    for (unsigned character = 1; character < 0x3000; ++character) {
        std::string typed;
        Afx::AppendUtf8(typed, character);
        CBuildingSocietyReferenceEdit edit;
        edit.DeliverChar(character);
        EXPECT_EQ(::Test::TextOf(edit), kTaken.find(typed) != kTaken.npos ? typed.c_str() : "") << character;
    }
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(CBuildingSocietyReferenceEdit)->CreateObject());
    EXPECT_TRUE(dynamic_cast<CBuildingSocietyReferenceEdit*>(made.get())) << "a dialog makes it by its class";
}

TEST(CBuildingSocietyReferenceEdit, LeavesEditingToTheField)
{
    CBuildingSocietyReferenceEdit edit;
    edit.LimitText(3);
    edit.SetWindowText("A B");
    Afx::HeadlessWindowSystem::Type(edit, " "); // all is selected
    EXPECT_EQ(::Test::TextOf(edit), "A B") << "a text that is set is not looked at";
    Afx::HeadlessWindowSystem::Type(edit, "WX\bYZ-");
    EXPECT_EQ(::Test::TextOf(edit), "WYZ");
}
