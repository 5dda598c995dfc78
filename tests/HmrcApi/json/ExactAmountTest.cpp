#include "HmrcApi/json/ExactAmount.h"

#include "support/Test.h"

using HmrcApi::ExactTenThousandths;

TEST(ExactTenThousandths, ReadsEveryFormOfAJsonNumberExactly)
{
    const ::Test::Case<const char*, std::int64_t> rows[] = {
        {"22551.05", 225510500, "pence"},
        {"44", 440000, "no decimals"},
        {"0.0001", 1, "the smallest step"},
        {"-12.5", -125000, "a refund"},
        {"-0", 0, "minus nothing"},
        {"0.07", 700, "no binary fraction"},
        {"1.5e2", 1500000, "exponent"},
        {"1e-4", 1, "the last exponent that fits"},
        {"1.00000000", 10000, "zeros beyond the fourth decimal"},
        {"100000e-9", 1, "zeros that an exponent pushes beyond it"},
        {"0.0e-999999999999", 0, "nothing, divided"},
        {"922337203685477.5807", INT64_MAX, "the largest amount"},
        {"-922337203685477.5808", INT64_MIN, "the smallest amount"},
        {"0.00009223372036854775807e19", 9223372036854775807, "many zeros in front"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ExactTenThousandths(row.in), row.out) << row.why;
}

TEST(ExactTenThousandths, RefusesWhatItCannotKeep)
{
    const char* const texts[] = {// a fifth decimal
                                 "0.00001", "1.23456", "1e-5", "1e-999999999999",
                                 // too large
                                 "922337203685477.5808", "-922337203685477.5809", "1e15", "1e999999999999",
                                 "99999999999999999999",
                                 // no number of JSON
                                 "", "-", ".5", "5.", "01", "+1", "1e", "1e+", "1,5", "NaN", "0x10", " 1"};
    for (const char* text : texts)
        EXPECT_EQ(ExactTenThousandths(text), std::nullopt) << text;
}
