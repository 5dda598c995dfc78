#include "Shellkit/detail/NoCipher.h"

#include <stdexcept>

#include "Shellkit/cipher/CipherPort.h"

namespace Shellkit::Detail
{

void ThrowNoCipher()
{
    const std::string problem = CipherPort::Problem();
    throw std::runtime_error("The system's cipher library does not answer" + (problem.empty() ? "." : ": " + problem));
}

void NeedCipher()
{
    if (!CipherPort::Problem().empty())
        ThrowNoCipher();
}

} // namespace Shellkit::Detail
