#include "HmrcApi/transport/detail/Machine.h"

#include <cstdlib>
#include <fstream>

namespace HmrcApi::Detail
{
namespace
{

std::string FirstLine(const char* path)
{
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

} // namespace

Machine ReadMachine()
{
    return {"Linux", FirstLine("/proc/sys/kernel/osrelease"), FirstLine("/sys/class/dmi/id/sys_vendor"),
            FirstLine("/sys/class/dmi/id/product_name")};
}

std::string SystemUser()
{
    const char* const name = std::getenv("USER");
    return name ? name : "";
}

} // namespace HmrcApi::Detail
