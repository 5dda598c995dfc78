#include "Cellar/drivers/sqlite/SqliteModule.h"

const Cellar::Sqlite::SqliteFunctions* MorvUtSqlite()
{
    static constexpr Cellar::Sqlite::SqliteFunctions kFunctions{&Cellar::Sqlite::Open};
    return &kFunctions;
}
