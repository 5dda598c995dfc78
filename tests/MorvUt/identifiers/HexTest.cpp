#include "MorvUt/identifiers/Hex.h"

#include <memory>
#include <string>

#include "fuzz/Targets.h"
#include "support/Test.h"

namespace
{

struct Digits : BinaryToHex
{
    using BinaryToHex::NibbleToChar;
};

} // namespace

TEST(Hex, ComesBackOrNamesTheFirstBadCharacter)
{
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    const CString text = BinaryToHex::Convert(reinterpret_cast<const unsigned char*>(all.data()), 256);
    EXPECT_EQ(text.Left(6) + text.Mid(0xAB * 2, 2) + text.Right(2), "000102ABFF");
    Fuzz::HexText(all);
    Fuzz::HexText(text.View());
    for (const char* const neighbour : {"ab", "0g", "00/:", "00:/", "@0", "0G", "00\xE9\xE9"})
        Fuzz::HexText(neighbour);
}

TEST(Hex, HasNothingForNothing)
{
    const unsigned char byte = 1;
    unsigned size = 99;
    EXPECT_TRUE(BinaryToHex::Convert(&byte, 0).IsEmpty() && BinaryToHex::Convert(nullptr, 5).IsEmpty());
    EXPECT_TRUE(std::unique_ptr<unsigned char[]>(HexToBinary::Convert("", &size))) << "an array for no bytes too";
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { BinaryToHex::Convert(&byte, 1u << 30); }))
        << "more than a text can hold";
}

TEST(Hex, KeepsARefusedTextOutOfTheMessage)
{
    unsigned size = 0;
    try {
        HexToBinary::Convert("0AB", &size);
        FAIL() << "three characters were taken";
    } catch (InvalidHexStringException* exception) {
        EXPECT_EQ(exception->GetText(), "0AB");
        EXPECT_EQ(exception->GetErrorMessage().Find("0AB"), -1) << "it may be a secret";
        exception->Delete();
    }
}

TEST(Hex, TakesTheLowerFourBitsOfANibble)
{
    EXPECT_EQ(Digits::NibbleToChar(0x1F), 'F') << "used to read behind the table";
}
