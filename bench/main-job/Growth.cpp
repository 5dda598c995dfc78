// One client for whom HMRC sends ever more: how the time of each step grows. A step is as steep as its exponent, fitted
// through the processor's seconds, which other programs disturb less than the clock's.

#include "main-job/MainJob.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

constexpr double kSteepest = 1.2; // every exponent stays below
constexpr double kPatience = 10;  // seconds: where a step of a shape took longer, no larger answers are tried
constexpr double kQuick = 1;      // where all steps took less, the fastest of three runs counts
constexpr int kSizes[] = {250, 500, 1000, 2500, 5000};

// What the answers hold.
struct Shape
{
    const char* name;
    const char* member;
    bool hasOneReference; // all of them
    bool hasWorksNumbers; // which tell those of one reference apart
};

constexpr Shape kShapes[] = {
    {"a reference each", "employments", false, true},
    {"one reference", "employments", true, true},
    {"nothing but order", "employments", true, false},
    {"pensions", "privatePensions", false, true},
};

// `count` items, each employment with a benefit; the figures begin with `first`.
std::string Answer(const Shape& shape, int count, int first)
{
    const bool isEmployment = std::string_view(shape.member) == "employments";
    std::string items;
    for (int item = 0; item < count; ++item) {
        const std::string number = std::to_string(item), figure = std::to_string(first + item);
        items += items.empty() ? "{" : ",{";
        items += R"("employerPayeReference": "1/A)" + (shape.hasOneReference ? "" : number) + '"';
        items += R"(, "worksNumber": ")" + (shape.hasWorksNumbers ? 'W' + number : "") + '"';
        items += R"(, "employerName": "Firm", "taxablePayTotal": )" + figure + R"(, "taxTotal": )" + figure;
        if (isEmployment)
            items += R"(, "companyBenefits": [{"benefitType": "CarBenefit", "amount": )" + figure + "}]";
        items += '}';
    }
    return std::string("{\"") + shape.member + "\": [" + items + "]}";
}

struct CannedTransport : HmrcApi::ITransport
{
    explicit CannedTransport(std::string text) : body(std::move(text)) {}
    HmrcApi::HttpAnswer Send(const HmrcApi::HttpRequest&) override
    {
        HmrcApi::HttpAnswer answer;
        answer.outcome = HmrcApi::HttpAnswer::Outcome::Answered;
        answer.status = 200;
        answer.contentType = "application/json";
        answer.body = body;
        return answer;
    }
    std::string body;
};

struct CannedPaye : HmrcApi::CPaye
{
    CannedPaye(HmrcApi::CAuthorisation& authorisation, std::string text)
        : CPaye(authorisation), transport(std::make_shared<CannedTransport>(std::move(text)))
    {}
    std::shared_ptr<HmrcApi::ITransport> RestFactory() override { return transport; }
    std::shared_ptr<HmrcApi::ITransport> transport;
};

constexpr char kNumber[] = "AA000001A";

class Prepop : public HmrcApi::CPAYEPrepop
{
public:
    Prepop(long client, std::string answer)
        : CPAYEPrepop(ClientId(client), TaxYear(2018), kNumber, HmrcApi::IEndpointOverride::Everything),
          m_answer(std::move(answer))
    {}
    void Fetch()
    {
        const auto errors = std::make_shared<HmrcApi::CAPIErrorHandler>();
        GetPAYEData(kNumber, errors, nullptr);
        if (errors->GetErrorCount() != 0)
            throw std::runtime_error("the client was not fetched for");
    }

private:
    std::shared_ptr<HmrcApi::CPaye> GetPayeEndpoint(HmrcApi::CAuthorisation& authorisation) override
    {
        return std::make_shared<CannedPaye>(authorisation, m_answer);
    }
    std::string m_answer;
};

struct Seconds
{
    double processor = 0, wall = 0;
};

template<class Step>
Seconds Time(Step step)
{
    using Clock = std::chrono::steady_clock;
    const std::clock_t processor = std::clock();
    const auto wall = Clock::now();
    step();
    return {static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC,
            std::chrono::duration<double>(Clock::now() - wall).count()};
}

void Require(bool isSo, const char* what)
{
    if (!isSo)
        throw std::runtime_error(what);
}

constexpr const char* kSteps[] = {"fetch", "all changed", "create", "create again", "differences"};
using Steps = std::vector<Seconds>; // in the order of kSteps

Steps Measure(const std::string& path, const Shape& shape, int count)
{
    OpenPractice(path);
    const long client = Test::AddClients(1);
    Prepop first(client, Answer(shape, count, 1000)), second(client, Answer(shape, count, 900000));
    const auto created = [&] {
        const HmrcApi::CreatedSchedules& made = second.GetCreatedSchedules();
        return made.employments + made.pensionsAndBenefits;
    };
    Steps steps;
    steps.push_back(Time([&] { first.Fetch(); }));
    steps.push_back(Time([&] { second.Fetch(); }));
    Require(second.GetStagedCounts().changed >= count, "not every item was changed");
    steps.push_back(Time([&] { second.CreateNewSchedules(); }));
    Require(shape.hasWorksNumbers ? created() == count : created() > 0, "not every schedule was made");
    steps.push_back(Time([&] { second.CreateNewSchedules(); }));
    Require(created() == 0, "schedules were made twice");
    Quarry::GetConnection().ExecuteDirect("UPDATE BRIXNewEmploy SET amtPay = amtPay + 10000");
    Quarry::GetConnection().ExecuteDirect("UPDATE BRIXPensionStateBenefits SET amtAmount = amtAmount + 10000");
    std::size_t differences = 0;
    steps.push_back(Time([&] { differences = HmrcApi::FindDifferences(ClientId(client), TaxYear(2018)).size(); }));
    Require(differences == static_cast<std::size_t>(count) || !shape.hasWorksNumbers, "a difference was not found");
    return steps;
}

// The slope of the straight line through the logarithms with the least squares.
double Exponent(const std::map<int, double>& secondsOf)
{
    double x = 0, y = 0, xx = 0, xy = 0;
    const auto n = static_cast<double>(secondsOf.size());
    for (const auto& [size, seconds] : secondsOf) {
        const double logSize = std::log(size), logSeconds = std::log(std::max(seconds, 1e-6));
        x += logSize;
        y += logSeconds;
        xx += logSize * logSize;
        xy += logSize * logSeconds;
    }
    return (n * xy - x * y) / (n * xx - x * x);
}

// One line: the seconds of each size, and the exponent.
double PrintRow(const char* shape, const char* step, const char* where, const char* clock,
                const std::map<int, double>& secondsOf)
{
    std::printf("%-17s %-13s %-7s %-10s", shape, step, where, clock);
    for (const int size : kSizes)
        secondsOf.contains(size) ? std::printf(" %8.3f", secondsOf.at(size)) : std::printf(" %8s", "-");
    const double exponent = Exponent(secondsOf);
    const bool isTooSteep = exponent >= kSteepest && std::string_view(clock) == "processor";
    std::printf(" %9.2f%s\n", exponent, isTooSteep ? " *" : "");
    return exponent;
}

double Longest(const Steps& steps)
{
    double longest = 0;
    for (const Seconds& seconds : steps)
        longest = std::max(longest, seconds.wall);
    return longest;
}

Steps Fastest(const std::string& path, const Shape& shape, int count)
{
    Steps fastest = Measure(path, shape, count);
    for (int run = 1; run < 3 && Longest(fastest) < kQuick; ++run) {
        const Steps again = Measure(path, shape, count);
        for (std::size_t step = 0; step < fastest.size(); ++step) {
            fastest[step].processor = std::min(fastest[step].processor, again[step].processor);
            fastest[step].wall = std::min(fastest[step].wall, again[step].wall);
        }
    }
    return fastest;
}

// The steepest step's exponent.
double RunShape(const Shape& shape, const Place& place)
{
    std::map<int, Steps> measured;
    double longest = 0;
    for (const int size : kSizes)
        if (longest < kPatience) {
            measured[size] = Fastest(place.folder + "/growth.db", shape, size);
            longest = Longest(measured[size]);
        }
    double steepest = 0;
    for (std::size_t step = 0; step < std::size(kSteps); ++step) {
        std::map<int, double> processor, wall;
        for (const auto& [size, steps] : measured) {
            processor[size] = steps[step].processor;
            wall[size] = steps[step].wall;
        }
        steepest = std::max(steepest, PrintRow(shape.name, kSteps[step], place.name, "processor", processor));
        PrintRow(shape.name, kSteps[step], place.name, "wall", wall);
        std::fflush(stdout);
    }
    return steepest;
}

} // namespace

int RunGrowth()
{
    Measure(Places().front().folder + "/growth.db", kShapes[0], 50); // what a process does once is done
    std::printf("%-17s %-13s %-7s %-10s", "items", "step", "file", "seconds");
    for (const int size : kSizes)
        std::printf(" %8d", size);
    std::printf("  exponent\n");
    double steepest = 0;
    for (const Place& place : Places())
        for (const Shape& shape : kShapes)
            steepest = std::max(steepest, RunShape(shape, place));
    std::printf("the steepest exponent of the processor's seconds is %.2f, the limit %.1f\n", steepest, kSteepest);
    return steepest < kSteepest ? 0 : 1;
}
