#pragma once

// What the cipher module, which holds the adapter of OpenSSL, has to give.

#include "Afx/system/LoadedModule.h"
#include "Shellkit/cipher/CipherPort.h"

namespace Shellkit
{

/// The functions behind the port.
struct CipherFunctions
{
    decltype(&CipherPort::FillRandom) fillRandom;
    decltype(&CipherPort::GcmSeal) gcmSeal;
    decltype(&CipherPort::GcmOpen) gcmOpen;
    decltype(&CipherPort::Sha256) sha256;
    decltype(&CipherPort::Pbkdf2) pbkdf2;
};

} // namespace Shellkit

/// The module's one symbol.
extern "C" AFX_MODULE_ENTRY const Shellkit::CipherFunctions* MorvUtCiphers();
