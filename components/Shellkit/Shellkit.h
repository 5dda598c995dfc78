#pragma once

// Utilities of the process and the machine, whole.

#include "Shellkit/Cipher.h"
#include "Shellkit/Identity.h"
#include "Shellkit/NamedItems.h"
#include "Shellkit/ProcessMark.h"
#include "Shellkit/Random.h"
#include "Shellkit/Registry.h"
