#include "Shellkit/PracticeKey.h"

#include "Shellkit/detail/HeldKey.h"

namespace Shellkit
{
namespace
{

static_assert(kKeySize == CipherPort::kKeySize);

Detail::HeldKey g_practice;

} // namespace

Detail::HeldKey& Detail::PracticeKey() noexcept { return g_practice; }

bool SetPracticeKey(std::span<const std::uint8_t> key)
{
    if (!key.empty() && key.size() != kKeySize)
        return false;
    g_practice.Set(key);
    return true;
}

bool HasPracticeKey() noexcept { return g_practice.IsSet(); }

} // namespace Shellkit
