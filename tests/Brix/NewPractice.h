#pragma once

#include <gtest/gtest.h>

#include "Brix/Brix.h"
#include "Quarry/Quarry.h"
#include "support/TestSupport.h"

/// An empty practice, current.
class NewPractice : public testing::Test
{
protected:
    void SetUp() override
    {
        Quarry::SetConnection(Open("practice.db"));
        Brix::CreateSchema(Quarry::GetConnection());
    }
    void TearDown() override { Quarry::SetConnection(nullptr); }

    static std::unique_ptr<Cellar::CConnection> Open(const std::string& name)
    {
        return Cellar::CConnection::Open(CString(::Test::TempDir() + "/" + name),
                                         Cellar::CConnection::Create::IfMissing);
    }
    static void Sql(const char* statements) { Quarry::GetConnection().Script(statements); }
    static Cellar::Value Single(const Cellar::SqlText& query)
    {
        return Quarry::GetConnection().Query(query, {}).rows.at(0).at(0);
    }
};
