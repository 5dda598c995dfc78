#pragma once

// HMRC plumbing, whole.

#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/interfaces/Endpoints.h"
#include "HmrcApi/oauth/Authorisation.h"
#include "HmrcApi/records/Responses.h"
#include "HmrcApi/transport/Transport.h"
