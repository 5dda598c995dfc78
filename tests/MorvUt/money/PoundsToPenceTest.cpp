#include <string>

#include "Amounts.h"
#include "MorvUt/money/Pence.h"
#include "support/Test.h"

TEST(PoundsToPence, ReadsTheNumberAtTheStart)
{
    const ::Test::Case<const char*, __int64> rows[] = {
        {"1,234.567", 123457}, {"-0.01", -1}, {"+0.01", 1}, {" \t12", 1200}, {"", 0},
        {nullptr, 0},          {".", 0},      {".5", 50},   {"5.", 500},     {"1.2.3", 120},
        {",,1,2,", 1200},      {", 5", 500},  {"- 5", 0},   {"abc", 0},      {"1e2", 10000},
        {"1E2", 10000},        {"1e", 100},   {".e5", 0},   {"0x10", 0},     {"inf", 0},
        {"1e400", 0},          {"1e-400", 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PoundsToPence(row.in), row.out) << (row.in ? row.in : "null");
}

TEST(PoundsToPence, RoundsAsTheDoubleIsPrinted)
{
    const ::Test::Case<const char*, __int64> rows[] = {
        {"0.125", 12, "a tie that the double holds goes to the even penny"},
        {"0.375", 38, "here up"},
        {"1.005", 100, "its double lies below the tie"},
        {"-8.345", -835, "its double lies above, by magnitude"},
        {"18742904.384999999", 1874290438, "seventeen digits, just below the tie"},
        {"0.00500000000000000000001", 1, "above the tie by its last digit"},
        {"0.00000000000000000001", 0, "twenty decimals"},
        {".5e2", 5000, "begins with the point"},
        {"1e300", ::Test::kMaxPence, "beyond 64 bits"},
        {"999999999999.99", 99999999999999, "the last amount whose pence stand in their place"},
        {"1000000000000.25", 100000000000000, "the pence are a point too early: .25 reads as 0"},
        {"1000000000000.5", 100000000000000, "with fewer digits, too"},
        {"12345678901234.56", 1234567890123404, "and here 4.56 reads as 4"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(PoundsToPence(row.in), row.out) << row.why;
    EXPECT_EQ(PoundsToPence(std::string(1'000'000, '9').c_str()), 0) << "a megabyte of nines is infinity";
    EXPECT_EQ(PoundsToPence((std::string(1'000'000, '0') + "1.25").c_str()), 125) << "a megabyte of zeros";
}
