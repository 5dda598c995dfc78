#include "Kiln/controls/HelpPages.h"

namespace Kiln
{
namespace
{

/// Never destroyed: nothing may be torn down by static destruction.
std::string& HelpFolder()
{
    static auto& folder = *new std::string;
    return folder;
}

} // namespace

void SetHelpFolder(const std::string& folder) { HelpFolder() = folder; }

CString HelpPage(const char* page)
{
    return HelpFolder().empty() ? CString() : CString(HelpFolder() + "/" + page + ".md");
}

} // namespace Kiln
