#include "main-job/MainJob.h"

#include <string_view>

int main(int argc, char** argv)
{
    const bool isGrowth = argc == 2 && std::string_view(argv[1]) == "--growth";
    return RunWithPlaces([&] { return isGrowth ? RunGrowth() : RunComparison(argc, argv); });
}
