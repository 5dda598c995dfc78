#include <algorithm>
#include <memory>
#include <optional>

#include "fuzz/Targets.h"
#include "MorvUt/identifiers/Hex.h"

namespace Fuzz
{
namespace
{

constexpr unsigned kUntouched = 0xDEAD;

struct Bytes
{
    std::unique_ptr<unsigned char[]> data;
    unsigned size;
};

/// The position of the first character that is no upper-case hexadecimal digit; npos when all are.
std::size_t FirstBad(std::string_view text) noexcept { return text.find_first_not_of("0123456789ABCDEF"); }

/// Nothing when it is refused, and then for the reason that the text gives.
std::optional<Bytes> Read(std::string_view text)
{
    unsigned size = kUntouched;
    try {
        std::unique_ptr<unsigned char[]> data(HexToBinary::Convert(CString(text), &size));
        Require(text.size() % 2 == 0 && FirstBad(text) == std::string_view::npos, "only pairs of digits are accepted");
        return Bytes{std::move(data), size};
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
    if (const auto bytes = Read(input)) {
        Require(bytes->size == input.size() / 2, "one byte for two characters");
        Require(BinaryToHex::Convert(bytes->data.get(), bytes->size).View() == input, "the text comes back");
    }
    const auto* const data = reinterpret_cast<const unsigned char*>(input.data());
    const CString text = BinaryToHex::Convert(data, static_cast<unsigned>(input.size()));
    const auto bytes = Read(text.View());
    Require(bytes && bytes->size == input.size() && std::equal(data, data + input.size(), bytes->data.get()),
            "the bytes come back");
}

} // namespace Fuzz
