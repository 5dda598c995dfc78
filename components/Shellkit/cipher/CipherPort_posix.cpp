// The library's side: the module is loaded when something is to be enciphered.

#include "Shellkit/cipher/CipherPort.h"

#include <cstring>

#include "Shellkit/cipher/CipherModule.h"

namespace Shellkit::CipherPort
{
namespace
{

using CipherModule = Afx::ModuleFunctions<CipherFunctions>;

#ifdef MORVUT_MODULE_CIPHER
CipherModule Load()
{
    static const char own = 0;
    return Afx::LoadFunctionsBeside<CipherFunctions>(&own, MORVUT_MODULE_CIPHER, "MorvUtCiphers");
}
#else
CipherModule Load() { return {MorvUtCiphers(), {}}; }
#endif

/// Never destroyed: what is enciphered in memory may be opened until the process ends.
const CipherModule& TheModule()
{
    static const auto& module = *new const CipherModule(Load());
    return module;
}

const CipherFunctions* Functions() { return TheModule().functions; }

} // namespace

std::string Problem() { return TheModule().problem; }

bool FillRandom(Output out) noexcept { return Functions() && Functions()->fillRandom(out); }

bool GcmSeal(const GcmParameters& with, Input plain, Output text, std::span<std::uint8_t, kTagSize> tag) noexcept
{
    return Functions() && Functions()->gcmSeal(with, plain, text, tag);
}

bool GcmOpen(const GcmParameters& with, Input text, std::span<const std::uint8_t, kTagSize> tag, Output plain) noexcept
{
    return Functions() && Functions()->gcmOpen(with, text, tag, plain);
}

bool Sha256(Input data, std::span<std::uint8_t, kDigestSize> digest) noexcept
{
    return Functions() && Functions()->sha256(data, digest);
}

bool Pbkdf2(Input password, Input salt, unsigned rounds, Output key) noexcept
{
    return Functions() && Functions()->pbkdf2(password, salt, rounds, key);
}

void Wipe(Output data) noexcept
{
    if (!data.empty())
        explicit_bzero(data.data(), data.size());
}

} // namespace Shellkit::CipherPort
