#include <memory>
#include <optional>
#include <vector>

#include "fuzz/Targets.h"
#include "MorvUt/identifiers/Hex.h"

namespace Fuzz
{
namespace
{

constexpr unsigned kUntouched = 0xDEAD;

/// The position of the first character that is no upper-case hexadecimal digit; npos when all are.
std::size_t FirstBad(std::string_view text) noexcept { return text.find_first_not_of("0123456789ABCDEF"); }

/// Nothing when it is refused, and then for the reason that the text gives.
std::optional<std::vector<unsigned char>> Read(std::string_view text)
{
    unsigned size = kUntouched;
    try {
        const std::unique_ptr<unsigned char[]> data(HexToBinary::Convert(CString(text), &size));
        Require(size == text.size() / 2, "one byte for two characters");
        Require(text.size() % 2 == 0 && FirstBad(text) == std::string_view::npos, "only pairs of digits are accepted");
        return std::vector<unsigned char>(data.get(), data.get() + size);
    } catch (InvalidHexStringException* refusal) {
        const bool isRight = refusal->GetReason() == InvalidHexOddLength && refusal->GetLength() == text.size();
        refusal->Delete();
        Require(isRight && text.size() % 2 != 0, "an odd length is refused as such");
    } catch (InvalidHexCharacterException* refusal) {
        const unsigned char character = refusal->GetCharacter();
        refusal->Delete();
        const std::size_t bad = FirstBad(text);
        Require(bad != std::string_view::npos && static_cast<unsigned char>(text[bad]) == character,
                "the first bad character is named");
    }
    return std::nullopt;
}

} // namespace

void HexText(std::string_view input)
{
    if (const auto bytes = Read(input))
        Require(BinaryToHex::Convert(bytes->data(), static_cast<unsigned>(bytes->size())).View() == input,
                "the text comes back");
    const auto* const data = reinterpret_cast<const unsigned char*>(input.data());
    const CString text = BinaryToHex::Convert(data, static_cast<unsigned>(input.size()));
    Require(Read(text.View()) == std::vector<unsigned char>(data, data + input.size()), "the bytes come back");
}

} // namespace Fuzz
