#include "Help.h"

namespace Desk
{
namespace
{

/// Never destroyed: nothing may be torn down by static destruction.
std::string& Folder()
{
    static auto& folder = *new std::string;
    return folder;
}

} // namespace

void SetHelpFolder(const std::string& folder) { Folder() = folder; }

CString HelpPage(const char* page) { return Folder().empty() ? CString() : CString(Folder() + "/" + page + ".md"); }

} // namespace Desk
