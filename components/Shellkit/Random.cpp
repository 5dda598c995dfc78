#include "Shellkit/Random.h"

#include <cstdint>

#include "Shellkit/Cipher.h"

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
