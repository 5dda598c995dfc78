#pragma once

// Utilities of the process and the machine, whole.

#include "Shellkit/Base64Url.h"
#include "Shellkit/Bytes.h"
#include "Shellkit/Digest.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/Identity.h"
#include "Shellkit/KeyFile.h"
#include "Shellkit/MemoryCipher.h"
#include "Shellkit/NamedItems.h"
#include "Shellkit/PracticeKey.h"
#include "Shellkit/ProcessMark.h"
#include "Shellkit/Random.h"
#include "Shellkit/Registry.h"
