#include <filesystem>
#include <ostream>
#include <vector>

#include "fuzz/Targets.h"
#include "support/Test.h"

namespace Fuzz
{

/// Names the test; otherwise it would be called by an address.
void PrintTo(const Target& target, std::ostream* out) { *out << target.name; }

} // namespace Fuzz

namespace
{

namespace fs = std::filesystem;

/// The inputs that a target began with, and those that it found.
std::vector<fs::path> InputsOf(const Fuzz::Target& target)
{
    std::vector<fs::path> inputs;
    for (const char* kind : {"corpus", "found"})
        if (const fs::path folder = fs::path(FUZZ_FOLDER) / kind / target.name; fs::exists(folder))
            for (const auto& entry : fs::directory_iterator(folder))
                inputs.push_back(entry.path());
    return inputs;
}

class Replay : public testing::TestWithParam<Fuzz::Target>
{};

TEST_P(Replay, EveryInputKeepsItsProperty)
{
    const std::vector<fs::path> inputs = InputsOf(GetParam());
    EXPECT_FALSE(inputs.empty());
    for (const fs::path& input : inputs) {
        SCOPED_TRACE(input.string());
        EXPECT_NO_THROW(GetParam().check(::Test::ReadFile(input.string())));
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Replay, testing::ValuesIn(Fuzz::kTargets));

// A target whose properties never fail would find nothing.
TEST(Require, ReportsWhatDoesNotHold)
{
    EXPECT_NO_THROW(Fuzz::Require(true, "holds"));
    EXPECT_THROW(Fuzz::Require(false, "does not hold"), Fuzz::Finding);
}

} // namespace
