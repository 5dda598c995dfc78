#include "MorvUt/identifiers/BuildingSocietyReferenceEdit.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

#include "Afx/text/Utf8.h"
#include "support/Case.h"
#include "support/TestSupport.h"

namespace
{

constexpr std::string_view kTaken = "-/0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

} // namespace

TEST(CBuildingSocietyReferenceEdit, TakesOnlyCharactersOfReferences)
{
    for (unsigned character = 32; character < 0x3000; ++character) {
        std::string typed;
        Afx::AppendUtf8(typed, character);
        const bool isTaken = character < 128 && kTaken.find(static_cast<char>(character)) != std::string_view::npos;
        CBuildingSocietyReferenceEdit edit;
        edit.DeliverChar(character);
        EXPECT_EQ(::Test::TextOf(edit), isTaken ? typed.c_str() : "") << character;
    }
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(CBuildingSocietyReferenceEdit)->CreateObject());
    EXPECT_TRUE(dynamic_cast<CBuildingSocietyReferenceEdit*>(made.get())) << "a dialog makes it by its class";
}

TEST(CBuildingSocietyReferenceEdit, LeavesEditingToTheField)
{
    const ::Test::Case<const char*, const char*> rows[] = {
        {"A/12-3 456", "A/12-3456", "blanks are swallowed"},
        {"AB\x01\x03\x16\t\x1F", "AB", "other keys pass and put nothing in"},
    };
    for (const auto& row : rows) {
        CBuildingSocietyReferenceEdit edit;
        Afx::HeadlessWindowSystem::Type(edit, row.in);
        EXPECT_EQ(::Test::TextOf(edit), row.out) << row.why;
    }
    CBuildingSocietyReferenceEdit edit;
    edit.LimitText(3);
    edit.SetWindowText("A B");
    EXPECT_EQ(::Test::TextOf(edit), "A B") << "a text that is set is not looked at";
    Afx::HeadlessWindowSystem::Type(edit, " "); // all is selected
    EXPECT_EQ(::Test::TextOf(edit), "A B");
    Afx::HeadlessWindowSystem::Type(edit, "WXYZ");
    EXPECT_EQ(::Test::TextOf(edit), "WXY");
}
