#include "Trailmark/Trailmark.h"

#include "support/Practice.h"

TEST(MTDAudit, IsWrittenOnCallAndInTheEndAllOrNone)
{
    const ::Test::Practice practice;
    auto& connection = Quarry::GetConnection();
    const auto items = [&](long client) {
        std::string text;
        for (const auto& line : Trailmark::ReadAudit(ClientId(client), connection))
            text += line.item.Str() + ' ';
        return text;
    };
    {
        Trailmark::CMTDAuditCache cache(ClientId(3), connection);
        cache.Add("accept", 2018, "ann", "O'Brien%s", "£1", "£2");
        EXPECT_EQ(items(3), "");
        cache.Flush();
        EXPECT_EQ(items(3), "O'Brien%s ");
        {
            const Quarry::CTransaction sheet;
            cache.Add("accept", 2018, "ann", "cancelled", "", "");
            cache.Flush();
        }
        connection.Script("CREATE TRIGGER Full BEFORE INSERT ON MTDAudit WHEN NEW.strItem = 'b' "
                          "BEGIN SELECT RAISE(ABORT, 'full'); END");
        cache.Add("accept", 2018, "ann", "a", "", "");
        cache.Add("accept", 2018, "ann", "b", "", "");
        EXPECT_THROW(cache.Flush(), Cellar::DatabaseError);
        EXPECT_EQ(items(3), "O'Brien%s ") << "all or none, and none is lost";
        connection.Script("DROP TRIGGER Full");
    }
    EXPECT_EQ(items(3), "O'Brien%s a b ");
    EXPECT_EQ(items(0), "") << "another client's";
    const auto line = Trailmark::ReadAudit(ClientId(3), connection).at(0);
    EXPECT_EQ(line.action + '|' + line.user + '|' + line.hmrc + '|' + line.ofReturn, "accept|ann|£1|£2");
    EXPECT_TRUE(line.year == 2018 && line.when.GetStatus() == COleDateTime::valid);
}
