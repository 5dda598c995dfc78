// Lists and ids in stories: acts, and below each what it shows.

#include "Quarry/Listeners.h"
#include "Quarry/NewId.h"

#include <functional>
#include <map>
#include <sstream>

#include "SmallPractice.h"

namespace
{

std::string g_told;
std::function<void()> g_then; // what the next one that is told something does besides

/// "lID=1 strName=a": what is not null; money in ten-thousandths.
std::string Shown(const Quarry::Row& row)
{
    std::string text;
    for (const Quarry::Column& column : row.GetTable().columns)
        if (const Cellar::Value& value = row.Get(column.ordinal); !value.IsNull())
            text += (text.empty() ? "" : " ") + std::string(column.name) + '=' +
                    (column.type == Cellar::ColumnType::Money ? std::to_string(value.GetInteger())
                                                              : Cellar::ToText(value).Str());
    return text;
}

template<char Practice>
void Tell(const Quarry::DataChange& change)
{
    g_told += std::string(1, Practice) + "> " + (change.oldRow ? Shown(*change.oldRow) : "none") + " -> " +
              (change.newRow ? Shown(*change.newRow) : "none") + '\n';
    if (const auto then = std::exchange(g_then, {}))
        then();
}

/// A list of tasks or links of the practice, another user's connection ("other"), and another practice ("there"), which
/// is called OTHER. What they are told here and there begins with H and T.
class Stories : public SmallPractice
{
protected:
    void TearDown() override
    {
        Forget();
        SmallPractice::TearDown();
    }
    /// What it gives or is refused with, the row that the list stands on when that is another now, and what listeners
    /// were told.
    std::string Act(const std::string& line)
    {
        m_words = std::istringstream(line);
        m_shown = g_told = "";
        std::string word = Word();
        if (word == "there" && !m_there)
            m_there = OpenSmall(("there" + std::to_string(++m_practices)).c_str());
        m_connection = word == "there" ? m_there.get() : word == "other" ? m_other.get() : &Quarry::GetConnection();
        const auto& act = m_acts.at(word == "there" || word == "other" ? Word() : word);
        try {
            act();
        } catch (const Quarry::ChangedByAnotherUser&) {
            m_shown = "changed by another user\n";
        } catch (const std::logic_error&) {
            m_shown = "not allowed\n";
        } catch (const Cellar::DatabaseError& error) {
            m_shown = "refused: " + error.GetReason() + '\n';
        }
        std::string place =
            "row " + std::to_string(m_list.GetPosition() + 1) + " of " + std::to_string(m_list.GetCount()) + ": ";
        if (m_list.IsEOL())
            place += "none\n";
        else
            place += Shown(m_list.Current()) + (m_list.IsNew() ? " (new)\n" : m_list.IsDirty() ? " (changed)\n" : "\n");
        if (place != std::exchange(m_place, place))
            m_shown += place;
        return m_shown + g_told;
    }

private:
    void Forget()
    {
        g_then = {};
        Quarry::RemoveAllListeners();
        for (const int listener : std::exchange(m_reloading, {}))
            Quarry::RemoveRollbackListener(listener);
    }
    std::string Word()
    {
        std::string word;
        m_words >> word;
        return word;
    }
    int Number() { return std::stoi(Word()); }
    std::string Rest() { return m_words.str().substr(static_cast<std::size_t>(m_words.tellg())); }

    /// "strName=a", whose value is a text, "null", or several numbers with "|" between them.
    static int SplitValue(const Quarry::Table& table, std::string& text)
    {
        const std::size_t equals = text.find('=');
        const int ordinal = table.Find(text.substr(0, equals))->ordinal;
        text.erase(0, equals + 1);
        return ordinal;
    }
    void Set()
    {
        for (std::string text = Word(); !text.empty(); text = Word()) {
            const int ordinal = SplitValue(m_list.GetTable(), text);
            m_list.Set(ordinal, text == "null" ? Cellar::Value() : Cellar::Value(text));
        }
    }
    /// "strName=a", "nYear<2" (also <=, >, >=), "nYear=1..2", "lID=1|2", "strName!=null".
    Quarry::Where Condition(const std::string& text) const
    {
        using Quarry::Where;
        const std::size_t sign = text.find_first_of("<>=!"), start = text.find_first_not_of("<>=!", sign);
        const int ordinal = m_list.GetTable().Find(text.substr(0, sign))->ordinal;
        const std::string compare = text.substr(sign, start - sign), given = text.substr(start);
        const Cellar::Value value = given == "null" ? Cellar::Value() : Cellar::Value(given);
        if (const std::size_t dots = given.find(".."); dots != given.npos)
            return Where::Between(ordinal, given.substr(0, dots), given.substr(dots + 2));
        if (const std::size_t bar = given.find('|'); bar != given.npos)
            return Where::In(ordinal, {std::stol(given), std::stol(given.substr(bar + 1))});
        return compare == "<"    ? Where::Less(ordinal, value)
               : compare == "<=" ? Where::AtMost(ordinal, value)
               : compare == ">"  ? Where::Greater(ordinal, value)
               : compare == ">=" ? Where::AtLeast(ordinal, value)
               : compare == "!=" ? Where::NotNull(ordinal)
                                 : Where(ordinal, value);
    }
    template<class T, class Use>
    static void WithAll(const std::vector<T>& all, Use use)
    {
        using List = std::initializer_list<T>;
        if (all.size() > 1)
            use(all.size() > 2 ? List{all[0], all[1], all[2]} : List{all[0], all[1]});
        else
            use(all.empty() ? List{} : List{all[0]});
    }
    /// Conditions, then the order: "nYear>1 by nYear- strName", the first one descending.
    void OpenList()
    {
        std::vector<Quarry::Where> where;
        std::vector<Quarry::Sort> sort;
        std::string text = Word();
        for (; !text.empty() && text != "by"; text = Word())
            where.push_back(Condition(text));
        for (text = Word(); !text.empty(); text = Word())
            sort.push_back({m_list.GetTable().Find(text.substr(0, text.find('-')))->ordinal, text.ends_with('-')});
        WithAll(where, [&](auto conditions) {
            WithAll(sort, [&](auto order) { m_list.Open(conditions, order); });
            EXPECT_EQ(m_list.Count(conditions), m_list.GetCount());
        });
    }
    /// The ids of the rows in their order.
    void Find()
    {
        OpenList();
        for (const int count = m_list.GetCount(); m_list.GetPosition() < count; m_list.MoveNext())
            m_shown += (m_shown.empty() ? "" : " ") + std::to_string(m_list.GetID());
        m_shown += m_list.MoveFirst() ? "\n" : "none\n";
    }
    void ShowRows(const Cellar::SqlText& select)
    {
        const Cellar::RowSet set = m_connection->Query(select, {});
        for (const auto& row : set.rows) {
            for (std::size_t i = 0; i < row.size(); ++i)
                m_shown += (i == 0 ? "" : "|") + (set.columns[i].starts_with("amt") ? Cellar::ToAmount(row[i]).Format()
                                                                                    : Cellar::ToText(row[i]))
                                                     .Str();
            m_shown += '\n';
        }
    }
    void ShowIds()
    {
        m_sent = 0;
        m_connection->OnSent([this](std::string_view) { ++m_sent; });
        long last = 0;
        for (int i = 0, count = Number(); i < count; ++i) {
            const long id = Quarry::NewId(kTask, *m_connection);
            if (i == 0 || id != last + 1)
                m_shown += (i == 0 ? "" : ".." + std::to_string(last) + ' ') + std::to_string(id);
            last = id;
        }
        m_connection->OnSent(nullptr);
        m_shown += ".." + std::to_string(last) + (Word() == "sent" ? ", sent " + std::to_string(m_sent) : "") + '\n';
    }
    /// Acts with semicolons between, within another.
    void Also(const std::string& acts)
    {
        std::istringstream each(acts);
        for (std::string act; std::getline(each, act, ';');) {
            m_words = std::istringstream(act);
            m_acts.at(Word())();
        }
    }
    /// "hear A insert 77 BRIX"; what is heard no longer is of insertions.
    void Hear(bool begins)
    {
        static const std::map<std::string, Quarry::DataChangedListener> kListeners{
            {"A", Tell<'A'>}, {"B", Tell<'B'>}, {"C", Tell<'C'>}};
        const auto listener = kListeners.at(Word());
        const bool isInsert = Word() == "insert";
        const int table = Number();
        const std::string practice = Word();
        (begins ? isInsert ? Quarry::AddDataChangedListenerForInsert : Quarry::AddDataChangedListenerForUpdate
                : Quarry::RemoveDataChangedListenerForInsert)(table, practice.c_str(), listener);
    }
    void Run()
    {
        m_connection->Script(::Test::WithAmounts(Rest()));
        if (::Test::IsOnServer() && Rest().find("INSERT INTO BRIXTask") != std::string::npos)
            m_connection->Script(m_connection->GetDialect().MoveSequence("BRIXTask", "lID", 0));
    }
    const std::map<std::string, std::function<void()>> m_acts{
        {"new",
         [this] {
             Forget();
             Quarry::SetConnection(Open());
             m_other = Open();
             m_there.reset();
             m_list = CDataList(kTask);
             m_other->Script("DELETE FROM BRIXTask; DELETE FROM Link; DELETE FROM BRIXNextID");
             if (::Test::IsOnServer())
                 m_other->Script("ALTER SEQUENCE BRIXTask_ids RESTART");
         }},
        {"listen",
         [this] {
             Quarry::AddDataChangedListenerForInsert(kTask.number, "BRIX", Tell<'H'>);
             Quarry::AddDataChangedListenerForUpdate(kTask.number, "BRIX", Tell<'H'>);
             Quarry::AddDataChangedListenerForDelete(kTask.number, "BRIX", Tell<'H'>);
             Quarry::AddDataChangedListenerForInsert(kTask.number, "OTHER", Tell<'T'>);
             m_reloading = {Quarry::AddRollbackListener([] { g_told += "H> reload\n"; }),
                            Quarry::AddRollbackListener([] { g_told += "T> reload\n"; }, "OTHER")};
         }},
        {"hear", [this] { Hear(true); }},
        {"hear-not", [this] { Hear(false); }},
        {"forget", [] { Quarry::RemoveAllListeners(); }},
        {"then", [this] { g_then = [this, acts = Rest()] { Also(acts); }; }},
        {"added",
         [this] {
             Added({{kName, Word()}});
         }},
        {"name", [this] { Quarry::SetDatabase(*m_connection, "OTHER"); }},
        {"become-current", [this] { Quarry::SetConnection(std::move(m_there)); }},
        {"close", [this] { m_there.reset(); }},
        {"use",
         [this] {
             m_list = CDataList(kTask);
             m_list.Use(*m_connection);
         }},
        {"links", [this] { m_list = CDataList(kLink); }},
        {"open", [this] { OpenList(); }},
        {"find", [this] { Find(); }},
        {"choose", [this] { m_list.Open({}, {}, {.columns = {kTask.Find(Word())->ordinal}}); }},
        {"add", [this] { m_list.AddNew(); }},
        {"copy", [this] { m_list.CopyRow(); }},
        {"set", [this] { Set(); }},
        {"save", [this] { Set(), m_list.Update(); }},
        {"save-all", [this] { Set(), m_list.UpdateAll(); }},
        {"delete", [this] { m_list.Delete(); }},
        {"next", [this] { m_shown = m_list.MoveNext() ? "" : "no\n"; }},
        {"to", [this] { m_shown = m_list.MoveTo(Number()) ? "" : "no\n"; }},
        {"to-id", [this] { m_shown = m_list.MoveToId(Number()) ? "" : "no\n"; }},
        {"sql", [this] { Run(); }},
        {"direct-links", [this] { m_connection->ExecuteDirect("INSERT INTO Link (SourceID) VALUES (1)"); }},
        {"direct-tasks", [this] { m_connection->ExecuteDirect("insert into brixtask (lid) values (90)"); }},
        {"direct-no-tasks", [this] { m_connection->ExecuteDirect("UPDATE BRIXTask SET nYear = 1 WHERE lID = 99"); }},
        {"direct-but-quiet",
         [this] {
             const Quarry::CIgnoreDirectSQL quiet(*m_connection);
             m_connection->ExecuteDirect("DELETE FROM BRIXTask");
         }},
        {"tasks",
         [this] { ShowRows("SELECT lID, strName, lParentID, nYear, amtPay, nVersion FROM BRIXTask ORDER BY lID"); }},
        {"link-rows",
         [this] {
             ShowRows(
                 "SELECT SourceID, TypeID, TrackerID, [default], nVersion FROM Link ORDER BY COALESCE(TrackerID, 0)");
         }},
        {"counter", [this] { ShowRows("SELECT lNext FROM BRIXNextID"); }},
        {"begin", [this] { m_connection->Begin(); }},
        {"write", [this] { m_connection->Begin(Cellar::Intent::Write); }},
        {"commit", [this] { m_connection->Commit(); }},
        {"rollback", [this] { m_connection->Rollback(); }},
        {"connect", [] { Quarry::SetConnection(Open()); }},
        {"ids", [this] { ShowIds(); }},
        {"reserve", [this] { Quarry::ReserveIds(kTask, Number(), *m_connection); }},
    };
    CDataList m_list{kTask};
    std::unique_ptr<Cellar::CConnection> m_other, m_there;
    Cellar::CConnection* m_connection = nullptr; // of the act
    std::vector<int> m_reloading;
    std::istringstream m_words; // of the act
    std::string m_shown, m_place;
    int m_practices = 0, m_sent = 0;
};

ON_BOTH_DATABASES(Stories);

TEST_P(Stories, GoAsTold)
{
    for (const char* const file : {"both", ::Test::IsOnServer() ? "server" : "embedded", "listeners", "conditions"})
        ::Test::ExpectTranscript(std::string("Quarry/stories/") + file + ".txt",
                                 [this](const std::string& act) { return Act(act); });
}

} // namespace
