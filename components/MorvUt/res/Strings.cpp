#include "MorvUt/res/Strings.h"

#include <iterator>

const Afx::ResourceContext& MorvUtResources() noexcept
{
    static constexpr Afx::StringResource kStrings[] = {
#define STRING(id, number, text) {number, text},
#include "MorvUt/res/strings.def"
#undef STRING
    };
    static const Afx::ResourceContext resources(kStrings, std::size(kStrings));
    return resources;
}

CString LibraryText(unsigned id)
{
    const Afx::ResourceContextGuard resources(MorvUtResources());
    CString text;
    text.LoadString(id);
    return text;
}
