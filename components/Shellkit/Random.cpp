#include "Shellkit/Random.h"

#include <cstdint>
#include <stdexcept>

#include "Shellkit/cipher/CipherPort.h"
#include "Shellkit/detail/NoCipher.h"

namespace Shellkit
{

Bytes RandomBytes(std::size_t size)
{
    Bytes bytes(size);
    Detail::NeedCipher();
    if (!CipherPort::FillRandom(bytes))
        throw std::runtime_error("The system gives no random numbers.");
    return bytes;
}

} // namespace Shellkit

CRandomDataGen g_RandomGenerator;

long CRandomDataGen::NewRandomPositive()
{
    for (;;) {
        std::uint32_t number = 0;
        for (const std::uint8_t byte : Shellkit::RandomBytes(4))
            number = number << 8 | byte;
        number &= 0x7fffffff;
        if (number != 0)
            return static_cast<long>(number);
    }
}
