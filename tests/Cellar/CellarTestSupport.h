#pragma once

// A new database of the running test, and what its statements are refused with.

#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

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

inline long Count(CConnection& connection)
{
    return CBufferedRowList(connection, "SELECT Count(*) FROM Note").GetLong(0);
}

inline void Insert(CConnection& connection, long id)
{
    connection.ExecuteDirectf("INSERT INTO Note (lID, strText) VALUES (%ld, %s)", id, "written");
}
