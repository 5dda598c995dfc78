#include "Shellkit/Bytes.h"

#include "Shellkit/cipher/CipherPort.h"

namespace Shellkit
{

void Wipe(void* data, std::size_t size) noexcept
{
    if (data)
        CipherPort::Wipe({static_cast<std::uint8_t*>(data), size});
}

} // namespace Shellkit
