#include "Shellkit/detail/Keys.h"

#include <mutex>

namespace Shellkit
{
namespace
{

/// A key of the process. Nothing here needs destruction.
struct HeldKey
{
    std::mutex mutex;
    std::array<std::uint8_t, kKeySize> bytes{};
    bool set = false;
};

HeldKey g_practice;
HeldKey g_memory;

/// The application key is the digest of this. It is the same in every copy of the program, so it hides what it
/// enciphers from a casual reader of the program's file and from nobody else: nothing of a practice may rest under it.
constexpr std::uint8_t kApplicationSeed[] = {
    0x5d, 0x1f, 0xc2, 0x88, 0x3e, 0x97, 0x04, 0xb6, 0xe9, 0x70, 0x2b, 0xdd, 0x41, 0xa5, 0x16, 0xf8, //
    0x8c, 0x63, 0xfa, 0x35, 0x0e, 0xd7, 0x92, 0x49, 0xb1, 0x2c, 0x7e, 0xc4, 0x58, 0x9b, 0xe3, 0x06};

std::optional<Detail::SecretKey> ApplicationKey()
{
    Detail::SecretKey key;
    if (!CipherPort::Sha256(kApplicationSeed, key.Bytes()))
        return std::nullopt;
    return key;
}

} // namespace

std::optional<Detail::SecretKey> Detail::KeyOf(KeyId id)
{
    if (id == KeyId::Application)
        return ApplicationKey();
    if (id != KeyId::Practice)
        return std::nullopt;
    const std::lock_guard lock(g_practice.mutex);
    return g_practice.set ? std::optional(SecretKey(g_practice.bytes)) : std::nullopt;
}

std::optional<Detail::SecretKey> Detail::MemoryKey()
{
    const std::lock_guard lock(g_memory.mutex);
    if (!g_memory.set)
        g_memory.set = CipherPort::FillRandom(g_memory.bytes);
    return g_memory.set ? std::optional(SecretKey(g_memory.bytes)) : std::nullopt;
}

bool SetPracticeKey(std::span<const std::uint8_t> key)
{
    if (!key.empty() && key.size() != kKeySize)
        return false;
    const std::lock_guard lock(g_practice.mutex);
    CipherPort::Wipe(g_practice.bytes);
    std::copy(key.begin(), key.end(), g_practice.bytes.begin());
    g_practice.set = !key.empty();
    return true;
}

bool HasPracticeKey() noexcept
{
    const std::lock_guard lock(g_practice.mutex);
    return g_practice.set;
}

} // namespace Shellkit
