#include "Cellar/SqlText.h"

#include <type_traits>
#include <utility>

#include "CellarTestSupport.h"

// What a user typed never becomes statement text.
static_assert(!std::is_constructible_v<SqlText, std::string>);
static_assert(!std::is_constructible_v<SqlText, std::string_view>);
static_assert(!std::is_constructible_v<SqlText, const char*>);
static_assert(!std::is_constructible_v<SqlText, CString>);

TEST(SqlText, StaysWholeWhenCopiedMovedAndJoined)
{
    SqlText table = SqlText::Identifier("MorvUserLocks"); // short enough for a string's own buffer
    SqlText joined = "SELECT Count(*) FROM " + table + " WHERE nYear = " + SqlText::Number(-2024);
    const SqlText copy = joined;
    const SqlText moved = std::move(joined);
    EXPECT_TRUE(joined.IsEmpty()); // NOLINT: what is left of a moved text is promised
    EXPECT_EQ(copy.View(), "SELECT Count(*) FROM MorvUserLocks WHERE nYear = -2024");
    EXPECT_EQ(moved.View(), copy.View());
    const SqlText other = std::move(table);
    EXPECT_EQ(other.View(), "MorvUserLocks");
    SqlText twice = other;
    twice += twice;
    EXPECT_EQ(twice.View(), "MorvUserLocksMorvUserLocks");
}

TEST(SqlTextIdentifier, RefusesWhatCouldEndAName)
{
    using std::string_view_literals::operator""sv;
    for (const std::string_view name : {""sv, "1st"sv, "a b"sv, "a'b"sv, "a\"b"sv, "a]b"sv, "a;b"sv, "a--"sv, "a.b"sv,
                                        "\xc3\xa9"sv, "a\nb"sv, "a\0b"sv})
        EXPECT_EQ(ErrorOf([&] { SqlText::Identifier(name); }).GetCategory(), Category::Syntax) << name;
    EXPECT_EQ(SqlText::Identifier("_BRIXMTD_TaxYear2").View(), "_BRIXMTD_TaxYear2");
}
