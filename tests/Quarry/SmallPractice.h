#pragma once

#include "Quarry/Quarry.h"
#include "support/Databases.h"

using Quarry::CDataList;

/// A database with an ordinary table and one with a key of its own.
class SmallPractice : public ::Test::OnDatabase
{
protected:
    static constexpr int kID = 0, kName = 1, kParentID = 2, kDue = 3, kPay = 4, kYear = 6, kSeen = 7, kDone = 110;
    static constexpr Quarry::Column kColumns[] = {
        {kID, "lID", Cellar::ColumnType::Int},
        {kName, "strName", Cellar::ColumnType::Text},
        {kParentID, "lParentID", Cellar::ColumnType::Int},
        {kDue, "dtDue", Cellar::ColumnType::Date},
        {kPay, "amtPay", Cellar::ColumnType::Money},
        {kYear, "nYear", Cellar::ColumnType::SmallInt},
        {kSeen, "dtSeen", Cellar::ColumnType::DateTime},
        {kDone, "bDone", Cellar::ColumnType::Bit, "1"},
    };
    static constexpr Quarry::Table kTask{"CTask", 77, "BRIXTask", kColumns, {}};
    static constexpr Quarry::Column kLinkColumns[] = {
        {0, "SourceID", Cellar::ColumnType::Int},
        {1, "TypeID", Cellar::ColumnType::Int},
        {2, "TrackerID", Cellar::ColumnType::Int},
        {3, "default", Cellar::ColumnType::Bit, "0"},
    };
    static constexpr Quarry::Table kLink{"CLink", 78, "Link", kLinkColumns, {}, "SourceID,TypeID,TrackerID", true};

    void SetUp() override { Quarry::SetConnection(OpenSmall("small.db")); }
    /// A new database of that name.
    static std::unique_ptr<Cellar::CConnection> OpenSmall(const char* name)
    {
        auto connection = Open(name);
        ::Test::Declare(
            *connection,
            connection->GetDialect().CreateSequence("BRIXTask") +
                "CREATE TABLE BRIXTask (lID {Int} PRIMARY KEY, strName {Text}, lParentID {Int}, dtDue {Date}, "
                "amtPay {Money}, nYear {Small}, dtSeen {DateTime}, bDone {Bit} DEFAULT 1, nVersion {Int} DEFAULT 0);"
                "CREATE TABLE Link (SourceID {Int}, TypeID {Int}, TrackerID {Int}, \"default\" {Bit} DEFAULT 0, "
                "nVersion {Int} DEFAULT 0);"
                "CREATE TABLE BRIXNextID (strTable {Text} NOT NULL PRIMARY KEY, lNext {Int});");
        return connection;
    }
    void TearDown() override
    {
        Quarry::RemoveAllListeners();
        Quarry::SetConnection(nullptr);
    }

    /// Another user's connection to the same file.
    static std::unique_ptr<Cellar::CConnection> Open(const std::string& name = "small.db")
    {
        return ::Test::OpenDatabase(name);
    }
    /// Rows that it inserts have ids of their own: a server gives new ones behind them, as after a copy.
    template<class... Args>
    static void Sql(const Cellar::SqlText& statement, const Args&... args)
    {
        auto& connection = Quarry::GetConnection();
        connection.ExecuteDirectf(statement, args...);
        if (::Test::IsOnServer() && statement.View().starts_with("INSERT INTO BRIXTask"))
            connection.Script(connection.GetDialect().MoveSequence("BRIXTask", "lID", 0));
    }
    template<class... Args>
    static long Count(const Cellar::SqlText& from, const Args&... args)
    {
        return Cellar::ToLong(Quarry::GetConnection().Queryf("SELECT COUNT(*) " + from, args...).rows[0][0]);
    }
    using Values = std::initializer_list<std::pair<int, Cellar::Value>>;
    static void Save(CDataList& list, Values values)
    {
        for (const auto& [ordinal, value] : values)
            list.Set(ordinal, value);
        list.Update();
    }
    /// A new row of these values, and the list that stands on it.
    static CDataList Added(Values values, const Quarry::Table& table = kTask)
    {
        CDataList list(table);
        list.AddNew();
        Save(list, values);
        return list;
    }
};
