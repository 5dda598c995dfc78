#pragma once

#include <gtest/gtest.h>

#include "Quarry/Quarry.h"
#include "support/TestSupport.h"

using Quarry::CDataList;

/// A database with an ordinary table and one with a key of its own.
class SmallPractice : public testing::Test
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
        connection->Script(
            "CREATE TABLE BRIXTask (lID INTEGER PRIMARY KEY, strName TEXT COLLATE NOCASE, lParentID INTEGER, "
            "dtDue TEXT, amtPay INTEGER, nYear INTEGER, dtSeen TEXT, bDone INTEGER DEFAULT 1, nVersion INTEGER "
            "DEFAULT 0);"
            "CREATE TABLE Link (SourceID INTEGER, TypeID INTEGER, TrackerID INTEGER, [default] INTEGER DEFAULT 0, "
            "nVersion INTEGER DEFAULT 0);"
            "CREATE TABLE BRIXNextID (strTable TEXT COLLATE NOCASE NOT NULL PRIMARY KEY, lNext INTEGER);");
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
        return Cellar::CConnection::Open(CString(::Test::TempDir() + "/" + name),
                                         Cellar::CConnection::Create::IfMissing);
    }
    static void Sql(const Cellar::SqlText& statement) { Quarry::GetConnection().ExecuteDirect(statement); }
    static long Count(const Cellar::SqlText& from)
    {
        return Cellar::ToLong(Quarry::GetConnection().Query(Cellar::SqlText("SELECT COUNT(*) ") + from, {}).rows[0][0]);
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
