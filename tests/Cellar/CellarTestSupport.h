#pragma once

// A new database of the running test, and what its statements are refused with.

#include <memory>
#include <string>

#include "Cellar/Cellar.h"
#include "support/Databases.h"

using namespace Cellar;
using Category = DatabaseError::Category;

inline std::string PracticePath() { return ::Test::TempDir() + "/practice.db"; }

inline std::unique_ptr<CConnection> OpenPractice() { return ::Test::OpenDatabase("practice.db"); }

/// The error that `action` throws; fails the test, and gives an empty one of category Other, when there is none.
template<class Action>
DatabaseError ErrorOf(Action action)
{
    try {
        action();
    } catch (const DatabaseError& error) {
        return error;
    }
    ADD_FAILURE() << "no DatabaseError";
    return DatabaseError(Category::Other, "none", "", "");
}

inline const char* NameOf(Category category)
{
    static constexpr const char* kNames[] = {"DuplicateKey", "Busy",       "LostConnection", "Constraint",
                                             "Syntax",       "CannotOpen", "ReadOnly",       "Other"};
    return kNames[static_cast<std::size_t>(category)];
}

inline long Count(CConnection& connection)
{
    return CBufferedRowList(connection, "SELECT Count(*) FROM Note").GetLong(0);
}

inline constexpr Cellar::SqlText kInsertNote("INSERT INTO Note (lID, strText) VALUES (%ld, %s)");
inline void Insert(CConnection& connection, long id) { connection.ExecuteDirectf(kInsertNote, id, "written"); }
inline void InsertLater(CConnection& connection, long id)
{
    const Cellar::Value values[] = {Cellar::Value(id), Cellar::Value("written")};
    connection.ExecuteLater(kInsertNote, values);
}

/// B begins a level, C commits it, R rolls it back; a digit writes that row. There are unsaved writes at '!', none at
/// '.'.
inline void Take(CConnection& connection, const char* steps, void (*insert)(CConnection&, long) = &Insert)
{
    for (const char* step = steps; *step; ++step)
        if (*step == 'B')
            connection.Begin();
        else if (*step == 'C')
            connection.Commit();
        else if (*step == 'R')
            connection.Rollback();
        else if (*step == '!' || *step == '.')
            EXPECT_EQ(connection.HasUnsavedWrites(), *step == '!') << step;
        else
            insert(connection, *step - '0');
}

inline void DeclareNotes(CConnection& connection)
{
    ::Test::Declare(connection, "CREATE TABLE Note(lID {Int} PRIMARY KEY, strText {Text} NOT NULL, nSmall {Small} "
                                "CHECK (nSmall < 100))");
}

/// A new database with notes, and two connections to it; `other` does not wait.
class TwoConnections : public ::Test::OnDatabase
{
protected:
    void SetUp() override
    {
        connection = OpenPractice();
        DeclareNotes(*connection);
        other = OpenPractice();
        other->SetBusyTimeout(0);
    }

    std::unique_ptr<CConnection> connection, other;
};
