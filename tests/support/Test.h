#pragma once

// What nearly every test begins with: the framework, rows of tables, and what a test finds around it.

#include <gtest/gtest.h>

#include "support/Case.h"
#include "support/Table.h"
#include "support/TestSupport.h"
