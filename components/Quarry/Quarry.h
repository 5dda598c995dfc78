#pragma once

// Data services, whole.

#include "Quarry/DataCursor.h"
#include "Quarry/DataList.h"
#include "Quarry/Keys.h"
#include "Quarry/Listeners.h"
#include "Quarry/NewId.h"
#include "Quarry/Row.h"
#include "Quarry/Session.h"
#include "Quarry/Table.h"
#include "Quarry/Where.h"
