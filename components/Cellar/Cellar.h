#pragma once

// Database access, whole.

#include "Cellar/BufferedRowList.h"
#include "Cellar/Connection.h"
#include "Cellar/ConnectionText.h"
#include "Cellar/DatabaseError.h"
#include "Cellar/Dialect.h"
#include "Cellar/RowCursor.h"
#include "Cellar/RowSet.h"
#include "Cellar/ServerState.h"
#include "Cellar/SqlText.h"
#include "Cellar/Transaction.h"
#include "Cellar/Value.h"
#include "Cellar/ValueTypes.h"
