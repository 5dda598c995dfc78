#pragma once

// What answers a request, by the part of the platform that is asked.

#include "Http.h"
#include "State.h"

namespace Sandbox
{

/// What has just been answered, and whether the request's token or credentials were good.
struct Handled
{
    Answer answer;
    bool authorised = false;
};

/// The record interfaces: the checks in the platform's order, the first failure wins.
Handled HandleApi(State& state, const Options& options, const Call& call);

/// The paths that prime data, below "…-test-support".
Handled HandleSupport(State& state, const Call& call);

/// /create-test-user/individuals: a person of whom nothing is primed yet. No token is needed.
Handled HandleTestUser(State& state, const Call& call);

/// /oauth/authorize and /oauth/token.
Handled HandleOAuth(State& state, const Call& call);

/// The server's own switches below /sandbox; throws ControlError for what cannot be done.
Answer HandleControl(State& state, const Options& options, const Call& call);

/// Whether an Authorization header brings a token that holds.
const Tokens::Access* FindBearer(const Tokens& tokens, const std::string& authorization);

} // namespace Sandbox
