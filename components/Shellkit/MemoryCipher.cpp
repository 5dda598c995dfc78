#include "Shellkit/MemoryCipher.h"

#include <algorithm>
#include <span>
#include <stdexcept>

#include "Shellkit/Bytes.h"
#include "Shellkit/cipher/CipherPort.h"
#include "Shellkit/detail/HeldKey.h"
#include "Shellkit/detail/NoCipher.h"

// The length stays, so there is no room for a nonce or a tag, and a plain key stream would be the same for every text:
// two of them laid over each other would give both away. Hence a Feistel network over the two halves of the text, in
// which every byte depends on every other. Equal texts still look equal, damage goes unseen, and a single byte is
// merely masked.

namespace
{

constexpr int kRounds = 8;

Shellkit::Detail::HeldKey g_key; // random, made on first use, gone with the process

/// XORs `target` with a stream that depends on key, round, length of the whole text, and `source`.
void Mix(const Shellkit::Detail::SecretKey& key, int round, unsigned length, std::span<const std::uint8_t> source,
         std::span<std::uint8_t> target)
{
    if (target.empty())
        return;
    Shellkit::Bytes input{static_cast<std::uint8_t>(round)};
    for (unsigned shift = 0; shift < 32; shift += 8)
        input.push_back(static_cast<std::uint8_t>(length >> shift));
    input.insert(input.end(), source.begin(), source.end());
    Shellkit::Bytes stream(target.size());
    // One round of PBKDF2 is HMAC-SHA256 over input and counter, for as many bytes as are wanted.
    const bool done = Shellkit::CipherPort::Pbkdf2(key.Bytes(), input, 1, stream);
    for (std::size_t i = 0; i < target.size() && done; ++i)
        target[i] = static_cast<std::uint8_t>(target[i] ^ stream[i]);
    Shellkit::CipherPort::Wipe(input);
    Shellkit::CipherPort::Wipe(stream);
    if (!done)
        Shellkit::Detail::ThrowNoCipher();
}

/// Runs the rounds on a copy, so that a failure leaves the text as it was.
void Run(unsigned char* buffer, unsigned length, bool forward)
{
    if (!buffer || length == 0)
        return;
    const auto key = g_key.GetOrMake();
    if (!key)
        Shellkit::Detail::ThrowNoCipher();
    Shellkit::Bytes text(buffer, buffer + length);
    const std::span<std::uint8_t> left(text.data(), length / 2), right(text.data() + length / 2, length - length / 2);
    try {
        for (int i = 0; i < kRounds; ++i) {
            const int round = forward ? i : kRounds - 1 - i;
            if (round % 2 == 0)
                Mix(*key, round, length, left, right);
            else
                Mix(*key, round, length, right, left);
        }
    } catch (...) {
        Shellkit::CipherPort::Wipe(text);
        throw;
    }
    std::copy(text.begin(), text.end(), buffer);
    Shellkit::CipherPort::Wipe(text);
}

} // namespace

void Encrypt(unsigned char* buffer, unsigned length) { Run(buffer, length, true); }

void Decrypt(unsigned char* buffer, unsigned length) { Run(buffer, length, false); }
