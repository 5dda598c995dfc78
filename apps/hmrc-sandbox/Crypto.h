#pragma once

// Random texts and hashes of the sign-in.

#include <string>
#include <string_view>

namespace Sandbox
{

/// An unguessable text of 40 hexadecimal digits, for codes and tokens.
std::string RandomText();

/// BASE64URL(SHA-256(verifier)) without padding: what a code challenge of method S256 must be.
std::string S256Challenge(std::string_view verifier);

} // namespace Sandbox
