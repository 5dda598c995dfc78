#include "Quarry/DataCursor.h"

#include "SmallPractice.h"

namespace
{

class DataCursor : public SmallPractice
{
protected:
    class CTask : public CDataList
    {
    public:
        CTask() noexcept : CDataList(kTask) {}
        static const Quarry::Table& Declaration() noexcept { return kTask; }
        CString GetName() const { return Current().GetText(kName); }
    };
};

ON_BOTH_DATABASES(DataCursor);

TEST_P(DataCursor, WalksOverWhatAListWouldLoad)
{
    Sql("INSERT INTO BRIXTask (lID, strName, dtDue, amtPay) VALUES (1, 'a long name, which needs memory', NULL, %m), "
        "(2, 'b', '2024-04-05T00:00:00', NULL), (3, 'c', NULL, %m)",
        Kiln::CAmt(1), Kiln::CAmt(3));
    std::string names;
    for (Quarry::CCursor<CTask> task({Quarry::Where::AtLeast(kID, 1)}, {{kName, true}}); task.Next();)
        names += (task->GetName() + " " + task->Current().GetDate(kDue).FormatIso() + ";").Str();
    EXPECT_EQ(names, "c ;b 2024-04-05;a long name, which needs memory ;") << "in the form that a list gives values";

    Quarry::CDataCursor cursor(kTask, {{kName, "b"}}, {}, {.columns = {kDue}});
    EXPECT_THROW(cursor.GetLong(kID), std::logic_error) << "before the first row";
    ASSERT_TRUE(cursor.Next());
    EXPECT_EQ(cursor.GetDate(kDue), Kiln::CDate(2024, 4, 5));
    EXPECT_TRUE(cursor.IsNull(kID)) << "not chosen";
    EXPECT_FALSE(cursor.Next());
    EXPECT_THROW(cursor.GetLong(kID), std::logic_error) << "behind the last row";
}

} // namespace
