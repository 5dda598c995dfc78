#include "Afx/Object.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "Afx/text/Collections.h"
#include "Afx/text/Numbers.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/Edit.h"

TEST(CRuntimeClass, MakesWhatCanBeMadeAndKnowsItsBases)
{
    EXPECT_EQ(RUNTIME_CLASS(CDialog)->CreateObject(), nullptr) << "dynamic only";
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(CEdit)->CreateObject());
    ASSERT_TRUE(made);
    EXPECT_STREQ(made->GetRuntimeClass()->m_lpszClassName, "CEdit");
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CEdit)) && made->IsKindOf(RUNTIME_CLASS(CWnd)) &&
                made->IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(CWnd().IsKindOf(RUNTIME_CLASS(CEdit)) || made->IsKindOf(nullptr));
}

TEST(CArray, ChecksEveryIndex)
{
    CStringArray names;
    names.Add("a");
    EXPECT_EQ(names.Add("b"), 1);
    for (const int index : {-1, 2, std::numeric_limits<int>::min()}) {
        EXPECT_THROW(names.GetAt(index), std::out_of_range);
        EXPECT_THROW(names[index], std::out_of_range);
        EXPECT_THROW(names.RemoveAt(index), std::out_of_range);
    }
    names.RemoveAt(0);
    EXPECT_EQ(names.GetSize(), 1);
    EXPECT_EQ(names[0], "b");
}

TEST(ToInt64, TruncatesAndRefuses)
{
    EXPECT_EQ(Afx::ToInt64(-1.9), -1);
    EXPECT_EQ(Afx::ToInt64(-9223372036854775808.0), std::numeric_limits<std::int64_t>::min());
    for (const double refused : {9223372036854775808.0, -9223372036854777856.0, std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(Afx::ToInt64(refused), std::nullopt);
}
