#pragma once

#include <gtest/gtest.h>

#include "Brix/Brix.h"
#include "Quarry/Quarry.h"
#include "support/Practice.h"

/// An empty practice, current.
class NewPractice : public testing::Test, protected ::Test::Practice
{
protected:
    static void Sql(const char* statements) { Quarry::GetConnection().Script(statements); }
    static Cellar::Value Single(const Cellar::SqlText& query)
    {
        return Quarry::GetConnection().Query(query, {}).rows.at(0).at(0);
    }
};
