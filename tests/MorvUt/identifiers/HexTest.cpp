#include "MorvUt/identifiers/Hex.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/Case.h"
#include "support/TestSupport.h"

namespace
{

struct Digits : BinaryToHex
{
    using BinaryToHex::NibbleToChar;
};

std::string Bytes(const CString& text)
{
    unsigned size = 99;
    const std::unique_ptr<unsigned char[]> bytes(HexToBinary::Convert(text, &size));
    EXPECT_TRUE(bytes) << "an array for no bytes too";
    return std::string(reinterpret_cast<const char*>(bytes.get()), size);
}

} // namespace

TEST(Hex, WritesEveryByteAndReadsItBack)
{
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    const CString text = BinaryToHex::Convert(reinterpret_cast<const unsigned char*>(all.data()), 256);
    EXPECT_EQ(text.Left(6), "000102");
    EXPECT_EQ(text.Mid(0xAB * 2, 2), "AB");
    EXPECT_EQ(text.Right(2), "FF");
    EXPECT_EQ(Bytes(text), all);
}

TEST(Hex, HasNothingForNothing)
{
    const unsigned char byte = 1;
    EXPECT_EQ(BinaryToHex::Convert(&byte, 0), "");
    EXPECT_EQ(BinaryToHex::Convert(nullptr, 5), "");
    EXPECT_EQ(Bytes(""), "");
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { BinaryToHex::Convert(&byte, 1u << 30); }))
        << "more than a text can hold";
}

TEST(Hex, RefusesAnOddLength)
{
    try {
        Bytes("0AB");
        FAIL() << "three characters were taken";
    } catch (InvalidHexStringException* exception) {
        EXPECT_EQ(exception->GetReason(), 2);
        EXPECT_TRUE(exception->GetText() == "0AB" && exception->GetLength() == 3);
        EXPECT_TRUE(exception->IsKindOf(RUNTIME_CLASS(InvalidHexStringException)));
        EXPECT_EQ(exception->GetErrorMessage().Find("0AB"), -1) << "it may be a secret";
        exception->Delete();
    }
}

TEST(Hex, NamesTheFirstBadCharacter)
{
    const ::Test::Case<const char*, unsigned char> rows[] = {
        {"ab", 'a', "lower case"},         {"0g", 'g', "second of its pair"}, {"00/:", '/', "before 0"},
        {"00:/", ':', "behind 9"},         {"@0", '@', "before A"},           {"0G", 'G', "behind F"},
        {"00\xE9\xE9", 0xE9, "above 127"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        try {
            Bytes(row.in);
            FAIL() << "was taken";
        } catch (InvalidHexCharacterException* exception) {
            const std::unique_ptr<InvalidHexCharacterException> owned(exception); // as good as Delete
            EXPECT_EQ(exception->GetCharacter(), row.out);
            EXPECT_TRUE(exception->IsKindOf(RUNTIME_CLASS(CException)));
        }
    }
}

TEST(Hex, TakesTheLowerFourBitsOfANibble)
{
    EXPECT_EQ(Digits::NibbleToChar(0x1F), 'F') << "used to read behind the table";
}
