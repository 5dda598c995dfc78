#pragma once

#include "Brix/Brix.h"
#include "Quarry/Quarry.h"
#include "support/Practice.h"

/// An empty practice, current.
class NewPractice : public ::Test::OnDatabase, protected ::Test::Practice
{
protected:
    /// Rows that it inserts have ids of their own.
    static void Sql(const std::string& statements)
    {
        Quarry::GetConnection().Script(statements);
        if (statements.find("INSERT") != std::string::npos)
            Brix::PutIdsBehindRows(Quarry::GetConnection());
    }
    static Cellar::Value Single(const Cellar::SqlText& query)
    {
        return Quarry::GetConnection().Query(query, {}).rows.at(0).at(0);
    }
};
