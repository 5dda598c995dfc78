#include "Shellkit/KeyFile.h"

#include <string_view>

#include "Afx/text/Ascii.h"
#include "Shellkit/detail/KeyFileStore.h"
#include "Shellkit/PracticeKey.h"
#include "Shellkit/Random.h"

namespace Shellkit
{
namespace
{

constexpr std::size_t kDigits = 2 * kKeySize;
constexpr std::size_t kLongestFile = kDigits + 2; // with CR and LF

std::optional<Bytes> KeyFromText(std::string_view text)
{
    if (text.ends_with('\n'))
        text.remove_suffix(text.ends_with("\r\n") ? 2 : 1);
    if (text.size() != kDigits)
        return std::nullopt;
    Bytes key;
    key.reserve(kKeySize);
    for (std::size_t i = 0; i < kDigits; i += 2) {
        const int high = Afx::HexValue(text[i]), low = Afx::HexValue(text[i + 1]);
        if (high < 0 || low < 0) {
            Wipe(key.data(), key.size());
            return std::nullopt;
        }
        key.push_back(static_cast<std::uint8_t>(high * 16 + low));
    }
    return key;
}

std::string TextFromKey(const Bytes& key)
{
    std::string text;
    text.reserve(kLongestFile);
    for (const std::uint8_t byte : key) {
        text += Afx::kHexDigits[byte >> 4];
        text += Afx::kHexDigits[byte & 15];
    }
    return text += '\n';
}

std::string WhyUnread(const Detail::OwnFile& file, const std::string& path)
{
    if (file.openToOthers)
        return "Other users may read the key file \"" + path + "\": run chmod " + (file.groupMayRead ? "640" : "600") +
               " on it.";
    if (file.error == std::errc::no_such_file_or_directory)
        return "There is no key file \"" + path + "\": put the practice's copy of it there.";
    return "The key file \"" + path + "\" cannot be read (" + file.error.message() +
           "): check that it is a file and that you are its owner.";
}

/// The key, or nothing and the reason in `problem`.
std::optional<Bytes> ReadKey(const std::string& path, const std::string& practice, std::string& problem)
{
    Detail::OwnFile file = Detail::ReadOwnFile(path, kLongestFile, practice);
    if (file.openToOthers || file.error) {
        problem = WhyUnread(file, path);
        return std::nullopt;
    }
    auto key = KeyFromText(file.text);
    Wipe(file.text.data(), file.text.size());
    if (!key)
        problem =
            "The key file \"" + path + "\" does not hold 64 hexadecimal digits: put the practice's copy of it there.";
    return key;
}

} // namespace

bool MakeKeyFile(const std::string& path, KeyReaders readers)
{
    Bytes key = RandomBytes(kKeySize);
    std::string text = TextFromKey(key);
    const bool made = Detail::MakeOwnFile(path, text, readers == KeyReaders::Group);
    Wipe(key.data(), key.size());
    Wipe(text.data(), text.size());
    return made;
}

std::optional<Bytes> ReadKeyFile(const std::string& path, const std::string& practice)
{
    std::string problem;
    return ReadKey(path, practice, problem);
}

std::string KeyFileProblem(const std::string& path, const std::string& practice)
{
    std::string problem;
    if (auto key = ReadKey(path, practice, problem))
        Wipe(key->data(), key->size());
    return problem;
}

} // namespace Shellkit
