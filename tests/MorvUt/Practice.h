#pragma once

// A practice for a test.

#include "Brix/Schema.h"
#include "Quarry/Listeners.h"
#include "Quarry/Session.h"
#include "support/TestSupport.h"

namespace Test
{

/// An empty practice in the test's own folder; its connection is the current one while it lives.
class Practice
{
public:
    Practice()
    {
        const std::string path = "sqlite:" + TempDir() + "/practice.db";
        auto connection = Cellar::CConnection::Open(path, Cellar::CConnection::Create::IfMissing);
        Brix::CreateSchema(*connection);
        Quarry::SetConnection(std::move(connection));
    }
    Practice(const Practice&) = delete;
    Practice& operator=(const Practice&) = delete;
    ~Practice()
    {
        Quarry::RemoveAllListeners();
        Quarry::SetConnection(nullptr);
    }
};

/// Adds a row to the table of the record class; `fill` sets its values. Answers its id.
template<class Record, class Fill>
long Add(Fill fill)
{
    Record rows;
    rows.AddNew();
    fill(rows);
    rows.Update();
    return rows.GetID();
}

} // namespace Test
