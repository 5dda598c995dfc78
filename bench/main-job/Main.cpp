#include "main-job/MainJob.h"
#include "Ratios.h"

#include <string_view>

int main(int argc, char** argv)
{
    MorvUtStartUp("bench", "Software\\bench");
    Shellkit::SetPracticeKey(Shellkit::RandomBytes(Shellkit::kKeySize));
    const bool isGrowth = argc == 2 && std::string_view(argv[1]) == "--growth";
    const int result = Bench::ResultOf([&] { return isGrowth ? RunGrowth() : RunComparison(argc, argv); });
    Quarry::SetConnection(nullptr);
    MorvUtShutDown();
    RemovePlaces();
    return result;
}
