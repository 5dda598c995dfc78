#include "Afx/text/CString.h"

#include <tuple>

#include "support/Test.h"

TEST(CString, TakesNullAsTheEmptyText)
{
    const char* const null = nullptr;
    CString text(null);
    EXPECT_TRUE(text.IsEmpty());
    text = null;
    text += null;
    EXPECT_EQ(text.Find(null), 0);
    EXPECT_EQ(text.Compare(null), 0);
    EXPECT_EQ(text.Replace(null, "x"), 0);
    EXPECT_TRUE(text == null);
    EXPECT_EQ(CString(null, 3), "");
    EXPECT_EQ(CString("abc", -1), "");
}

TEST(CString, CutsAndTrimsWithinItsBounds)
{
    const ::Test::Case<CString, const char*> rows[] = {
        {CString("Schedule").Left(5), "Sched", "start"},
        {CString("Schedule").Left(99), "Schedule", "more than there is"},
        {CString("Schedule").Left(-1), "", "negative count"},
        {CString("Schedule").Right(3), "ule", "end"},
        {CString("Schedule").Mid(6, 99), "le", "middle, beyond the end"},
        {CString("Schedule").Mid(8), "", "at the end"},
        {CString("Schedule").Mid(-3, 2), "Sc", "before the start"},
        {CString("125").SpanIncluding("0123456789"), "125", "nothing else"},
        {CString(" \t a b\r\n").Trim(), "a b", "blanks on both sides"},
        {CString(" \t ").Trim(), "", "nothing but blanks"},
        {CString("007.50").TrimLeft('0').TrimRight("05."), "7", "characters of a set"},
        {CString("000").TrimLeft('0'), "", "nothing but what goes"},
        {CString(" a ").Trim(static_cast<const char*>(nullptr)), " a ", "no set"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.in, row.out) << row.why;
}

TEST(CString, ChangesOnlyWhatIsInside)
{
    CString text("abc");
    EXPECT_EQ(text.GetAt(-1), '\0');
    EXPECT_EQ(text[3], '\0');
    text.SetAt(1, 'X');
    text.SetAt(3, 'Y');
    text.SetAt(-1, 'Z');
    EXPECT_EQ(text, "aXc");
    text = "12345";
    EXPECT_EQ(text.Insert(2, ','), 6);
    EXPECT_EQ(text.Insert(99, text.GetString()), 12);
    EXPECT_EQ(text, "12,34512,345");
    EXPECT_EQ(text.Remove(','), 2);
    EXPECT_EQ(text.Delete(5, 99), 5);
    EXPECT_EQ(text.Delete(-1), 4);
    EXPECT_EQ(text.Replace('3', '/'), 1);
    EXPECT_EQ(text, "2/45");
}

TEST(CString, ReplacesAllPlacesOnce)
{
    const std::tuple<const char*, const char*, const char*, int, const char*> rows[] = {
        {"1,234,567", ",", "", 2, "1234567"}, {"aaa", "aa", "b", 1, "ba"},
        {"a.b", ".", "..", 1, "a..b"}, // what is put in is not searched again
        {"abc", "x", "y", 0, "abc"},          {"abc", "", "y", 0, "abc"},
    };
    for (const auto& [before, from, to, count, after] : rows) {
        CString text(before);
        EXPECT_EQ(text.Replace(from, to), count) << before;
        EXPECT_EQ(text, after);
    }
}

TEST(CString, FindsAndTokenizesFromAPlaceOn)
{
    const CString text("a-b-c");
    EXPECT_EQ(text.Find('-'), 1);
    EXPECT_EQ(text.Find('-', 2), 3);
    EXPECT_EQ(text.Find("-c", -5), 3);
    EXPECT_EQ(text.Find("b", 99), -1);
    EXPECT_EQ(text.ReverseFind('-'), 3);

    const CString list(",Name,120;Date,80;");
    std::string found;
    int start = 0;
    for (CString token = list.Tokenize(",;", start); start != -1; token = list.Tokenize(",;", start))
        found += "[" + token.Str() + "]";
    EXPECT_EQ(found, "[Name][120][Date][80]");
    EXPECT_EQ(list.Tokenize(",;", start), "") << "stays at the end";
}

TEST(CString, ComparesWithCharactersOnEitherSide)
{
    const CString a("abc"), b("abd");
    EXPECT_TRUE(a < b && a < "abd" && "abc" < b && a <= "abc" && "abc" >= a && "abc" == a && a != b);
    EXPECT_TRUE(CString("\xC3\xA9") > "z") << "bytes compare unsigned";
    const char* const null = nullptr;
    EXPECT_TRUE(a > null && null < a && null <= CString() && CString() >= null) << "null is the empty text";
    EXPECT_TRUE(a < std::string("abd") && std::string("abc") == a && a >= std::string_view("abc"));
    EXPECT_TRUE(std::pair(a, 2) < std::pair(b, 1) && std::pair(b, 1) > std::pair(a, 2))
        << "texts, not places in memory";
}
