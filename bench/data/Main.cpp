// The practice's data by cursor, as lists and record by record, what its clients are and what a source carries, against
// the engine's own C interface, as the practice grows.

#include <cstdio>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include "data/Context.h"
#include "data/Data.h"
#include "MorvUt/MorvUt.h"
#include "Places.h"
#include "Ratios.h"

namespace
{

constexpr int kSizes[] = {100, 1000, 10'000, 100'000};

/// A file of the one or the other, which begin with the same rows; what only reads has one for both.
struct Practice
{
    std::string path;
    int clients;
};

/// What is timed; opens before what is not.
using Action = std::function<void()>;

struct Subject
{
    const char* name;
    Action (*ours)(const Practice& practice);
    Action (*raw)(const Practice& practice);
    double limit;
    const char* why;            // what ours does besides
    const char* both = nullptr; // whose practice both read; else each has its own
    int largest = kSizes[3];    // practice
};

void Require(bool isSo)
{
    if (!isSo)
        throw std::runtime_error("another figure was expected");
}

/// A number that walks over the ids.
long NextId(int clients)
{
    static unsigned long at = 0;
    return static_cast<long>(at++ * 7919 % static_cast<unsigned long>(clients)) + 1;
}

std::shared_ptr<RawDatabase> OpenRaw(const Practice& practice) { return std::make_shared<RawDatabase>(practice.path); }

template<int Count>
Action AddOurs(const Practice& practice)
{
    OpenOurs(practice.path);
    return [] { AddEmployments(Count); };
}

template<int Count>
Action AddRaw(const Practice& practice)
{
    return [raw = OpenRaw(practice)] { raw->AddEmployments(Count); };
}

constexpr char kRead[] = "ours gives every value the one form of its column";
constexpr char kStatus[] = "status", kAllowance[] = "allowance"; // practices
constexpr char kSave[] = "ours also finds its statements by their text, checks every value, and keeps the row as it "
                         "was for those who are told";

const Subject kSubjects[] = {
    {"three columns by cursor",
     [](const Practice& practice) -> Action {
         OpenOurs(practice.path);
         return [] { Require(ReadThreeColumns() > 0); };
     },
     [](const Practice& practice) -> Action {
         return [raw = OpenRaw(practice)] { Require(raw->ReadThreeColumns() > 0); };
     },
     2, kRead},
    {"whole list",
     [](const Practice& practice) -> Action {
         OpenOurs(practice.path);
         return [clients = practice.clients] { Require(ReadWholeList() == clients); };
     },
     [](const Practice& practice) -> Action {
         return [raw = OpenRaw(practice), clients = practice.clients] { Require(raw->ReadWholeList() == clients); };
     },
     1.5, kRead},
    {"open by id",
     [](const Practice& practice) -> Action {
         OpenOurs(practice.path);
         return [clients = practice.clients] { Require(OpenById(NextId(clients)) > 0); };
     },
     [](const Practice& practice) -> Action {
         return [raw = OpenRaw(practice), clients = practice.clients] { Require(raw->OpenById(NextId(clients)) > 0); };
     },
     1.5, "ours also puts its statement together and finds it by its text"},
    {"add and save one", AddOurs<1>, AddRaw<1>, 2.5, kSave},
    {"add and save 32", AddOurs<32>, AddRaw<32>, 2.5, kSave},
    {"change and save",
     [](const Practice& practice) -> Action {
         OpenOurs(practice.path);
         return [change = std::make_shared<ClientChange>(1)] { change->Save(); };
     },
     [](const Practice& practice) -> Action { return [raw = OpenRaw(practice)] { raw->ChangeClient(2); }; }, 2, kSave},
    {"opening a practice",
     [](const Practice& practice) -> Action { return [path = practice.path] { OpenOurs(path); }; },
     [](const Practice& practice) -> Action {
         return [practice] { Require(RawDatabase(practice.path).ReadSchema() == 1); };
     },
     1.5, "ours also looks at the file before the engine opens it, and tries the practice's key"},
    {"status of everybody",
     [](const Practice& practice) -> Action {
         OpenOurs(practice.path);
         return [] { Require(AskStatusOfAll()[0] > 0); };
     },
     [](const Practice& practice) -> Action {
         return [raw = std::make_shared<RawStatus>(practice.path)] { Require(raw->Ask()[0] > 0); };
     },
     2, "ours also keeps what decided each answer, and checks every date", kStatus},
    {"allowance of twenty years, cold",
     [](const Practice& practice) -> Action {
         OpenOurs(practice.path);
         return [] {
             ForgetAllowances();
             Require(AskAllowance() > 0);
         };
     },
     [](const Practice& practice) -> Action {
         return [raw = std::make_shared<RawAllowance>(practice.path)] { Require(raw->Ask() > 0); };
     },
     2, "ours reads all columns of the rows", kAllowance, kSizes[0]},
    {"allowance of twenty years, warm",
     [](const Practice& practice) -> Action {
         OpenOurs(practice.path);
         return [] { Require(AskAllowance() > 0); };
     },
     [](const Practice& practice) -> Action {
         return [raw = std::make_shared<RawAllowance>(practice.path)] { Require(raw->LookUp() > 0); };
     },
     2, "ours also asks whether what it knows is still so", kAllowance, kSizes[0]},
};

Practice Of(const Place& place, const char* whose, int clients)
{
    return {place.folder + '/' + whose + std::to_string(clients) + ".db", clients};
}

void Time(benchmark::State& state, Action (*prepare)(const Practice&), const Practice& practice)
{
    try {
        const Action action = prepare(practice);
        action(); // what a process and a connection do once is done
        for (auto _ : state)
            action();
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
    }
}

void Register(const Subject& subject, const Place& place, int clients, Bench::Reasons& reasons)
{
    const std::string name = std::string(subject.name) + ", " + place.name + ", " + std::to_string(clients);
    const auto add = [&](const char* entry, Action (*prepare)(const Practice&), const Practice& practice) {
        benchmark::RegisterBenchmark((name + '/' + entry).c_str(), [=](benchmark::State& state) {
            Time(state, prepare, practice);
        })->MeasureProcessCPUTime();
    };
    add("ours", subject.ours, Of(place, subject.both ? subject.both : "ours", clients));
    add("in C", subject.raw, Of(place, subject.both ? subject.both : "raw", clients));
    reasons[name] = {subject.why, subject.limit};
}

/// The practices of one size, closed.
void MakePractices(const Place& place, int clients)
{
    const std::string made = Of(place, "ours", clients).path;
    MakePractice(made, clients);
    Quarry::SetConnection(nullptr);
    const auto copy = [&](const char* whose, void (*add)()) {
        const std::string path = Of(place, whose, clients).path;
        std::filesystem::copy_file(made, path);
        if (add) {
            OpenOurs(path);
            add();
            Quarry::SetConnection(nullptr);
        }
    };
    copy("raw", nullptr);
    copy(kStatus, &AddStatuses);
    if (clients == kSizes[0])
        copy(kAllowance, &AddAllowances);
}

/// Both must give the same answers, and ours must send as many statements for 100 clients as for 100,000.
void CheckAnswers(const Place& place)
{
    int statements = 0;
    for (const int clients : kSizes) {
        const std::string path = Of(place, kStatus, clients).path;
        OpenOurs(path);
        const int sent = CountStatusStatements();
        std::printf("status of everybody, %s, %d: %d statements\n", place.name, clients, sent);
        Require(statements == 0 || statements == sent);
        statements = sent;
        Require(AskStatusOfAll() == RawStatus(path).Ask());
    }
    const std::string path = Of(place, kAllowance, kSizes[0]).path;
    OpenOurs(path);
    Require(AskAllowance() == RawAllowance(path).Ask());
    Quarry::SetConnection(nullptr);
}

int Run(int argc, char** argv)
{
    Bench::Reasons reasons;
    for (const Place& place : Places()) {
        for (const int clients : kSizes)
            MakePractices(place, clients);
        CheckAnswers(place);
    }
    for (const Subject& subject : kSubjects)
        for (const Place& place : Places())
            for (const int clients : kSizes)
                if (clients <= subject.largest)
                    Register(subject, place, clients, reasons);
    return Bench::RunAll(argc, argv, reasons);
}

} // namespace

int main(int argc, char** argv)
{
    return RunWithPlaces([&] { return Run(argc, argv); });
}
