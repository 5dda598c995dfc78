#pragma once

// Texts enciphered while they are held in memory.

#include "Shellkit/Export.h"

/// Enciphers, and deciphers, a text held in memory in place with this process's own key; the length stays the same.
/// For memory only: the key goes with the process, equal texts look equal, and damage goes unseen. What is stored uses
/// Shellkit::Seal. Throws std::runtime_error, and the text is as it was, when there is no cipher.
SHELLKIT_API void Encrypt(unsigned char* buffer, unsigned length);
SHELLKIT_API void Decrypt(unsigned char* buffer, unsigned length);
