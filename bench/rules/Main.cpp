// The rules that run on every row a user sees, against what a C++ developer would write instead.
// usage: rules [options of the benchmark library]    times, and the ratios of ours to each peer
//        rules --allocations                         how often ours allocate; 1 when one does without need

#include <cstring>

#include "Subject.h"

std::vector<Rules::Path>& Rules::Paths()
{
    static std::vector<Path> paths;
    return paths;
}

Bench::Reasons& Rules::Reasons()
{
    static Bench::Reasons reasons;
    return reasons;
}

namespace
{

/// Whether the counter sees what the libraries allocate.
bool CanCount()
{
    const std::size_t before = Rules::CountAllocations();
    CString text("Longer than fifteen");
    text.MakeUpper();
    text = text.Left(17); // made inside the library
    benchmark::DoNotOptimize(text);
    return Rules::CountAllocations() - before >= 2;
}

int PrintAllocations()
{
    if (!CanCount()) {
        std::fputs("rules: the use of operator new cannot be counted\n", stderr);
        return 1;
    }
    int result = 0;
    for (const Rules::Path& path : Rules::Paths()) {
        const Rules::Tally tally = path.count();
        const std::size_t needless = tally.allocations - tally.needed;
        std::printf("%-36s %zu allocations in %zu calls, %zu of them for the answer itself%s\n", path.subject.c_str(),
                    tally.allocations, tally.calls, tally.needed, needless ? ": TOO MANY" : "");
        if (needless)
            result = 1;
    }
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    Rules::RegisterMoneyToText();
    Rules::RegisterMoneyFromText();
    Rules::RegisterDates();
    Rules::RegisterFormats();
    Rules::RegisterIdentifiers();
    Rules::RegisterHex();
    Rules::RegisterMappings();
    if (argc == 2 && std::strcmp(argv[1], "--allocations") == 0)
        return PrintAllocations();
    return Bench::RunAll(argc, argv, Rules::Reasons());
}
