#include "Cellar/drivers/odbc/OdbcModule.h"

const Cellar::Odbc::OdbcFunctions* MorvUtOdbc()
{
    static constexpr Cellar::Odbc::OdbcFunctions kFunctions{&Cellar::Odbc::Open, &Cellar::Odbc::InstalledDrivers};
    return &kFunctions;
}
