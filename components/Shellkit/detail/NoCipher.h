#pragma once

// What is thrown where there is no cipher.

namespace Shellkit::Detail
{

/// Throws std::runtime_error, with the module's problem if that is it.
[[noreturn]] void ThrowNoCipher();
/// The same where the module is not there: each key would pass for a wrong one.
void NeedCipher();

} // namespace Shellkit::Detail
