#pragma once

// HMRC plumbing, whole.

#include "HmrcApi/Endpoints.h"
#include "HmrcApi/Errors.h"
#include "HmrcApi/Interfaces.h"
#include "HmrcApi/oauth/Authorisation.h"
#include "HmrcApi/Responses.h"
#include "HmrcApi/transport/Transport.h"
