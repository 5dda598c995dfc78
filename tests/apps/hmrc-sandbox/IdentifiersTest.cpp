#include "hmrc-sandbox/Identifiers.h"

#include <gtest/gtest.h>

#include <tuple>

namespace Sandbox
{

TEST(Identifiers, AreWhatTheInterfacesTake)
{
    const std::tuple<bool (*)(std::string_view), const char*, bool, const char*> rows[] = {
        {IsUtr, "2234567890", true, "HMRC's example"},
        {IsUtr, "1111111111", true, "HMRC's example"},
        {IsUtr, "1234567890", false, "check digit wrong"},
        {IsUtr, "223456789", false, "nine digits"},
        {IsUtr, "22345678900", false, "eleven digits"},
        {IsUtr, "22345 6789", false, "blank inside"},
        {IsUtr, "", false, "empty"},
        {IsNino, "AA000001A", true, "HMRC's example"},
        {IsNino, "AA000001", true, "suffix is optional"},
        {IsNino, "AA000001E", false, "suffix beyond D"},
        {IsNino, "QQ123456A", false, "Q never comes first, in HMRC's own prose example too"},
        {IsNino, "AO123456A", false, "O never comes second"},
        {IsNino, "OA123456A", true, "O may come first"},
        {IsNino, "ZZ123456A", false, "prefix never given out"},
        {IsNino, "GA123456A", true, "only the pair GB is excluded"},
        {IsNino, "aa000001a", false, "lower case"},
        {IsNino, "", false, "empty"},
        {IsTaxYear, "2017-18", true, "ordinary"},
        {IsTaxYear, "1999-00", true, "turn of the century"},
        {IsTaxYear, "2017-17", false, "the same year"},
        {IsTaxYear, "2017-2018", false, "second year in full"},
        {IsTaxYear, "2017/18", false, "slash"},
        {IsTaxYear, "2017-1a", false, "letter"},
        {IsTaxYear, "", false, "empty"},
    };
    for (const auto& [isRight, text, expected, why] : rows)
        EXPECT_EQ(isRight(text), expected) << text << ": " << why;
}

} // namespace Sandbox
