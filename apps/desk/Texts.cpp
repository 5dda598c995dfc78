#include "Texts.h"

#include <iterator>

namespace Desk
{

const Afx::ResourceContext& DeskTexts() noexcept
{
    static constexpr Afx::StringResource kTexts[] = {
        {IDS_DESK_BASIS_1, "Trade"},
        {IDS_DESK_BASIS_2, "Second trade"},
        {IDS_DESK_BASIS_3, "Property"},
        {IDS_DESK_BASIS_CHANGED,
         "The amounts of the change of basis are others than before.\n\nDo you want to keep them?"},
    };
    static const Afx::ResourceContext texts(kTexts, std::size(kTexts));
    return texts;
}

} // namespace Desk
