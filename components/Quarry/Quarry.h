#pragma once

// Data services, whole.

#include "Quarry/DataList.h"
#include "Quarry/Listeners.h"
#include "Quarry/NewId.h"
#include "Quarry/Session.h"
#include "Quarry/Table.h"
