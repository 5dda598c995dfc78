// A sheet and a totalling grid: without a display against structs and a plain array, and, where there is a display and
// real windows are built, a grid in a window against the toolkit's own.

#include <cstdio>
#include <utility>

#include "Afx/windows/MessageBox.h"
#include "MorvUt/MorvUt.h"
#include "MorvUt/StartUp.h"
#include "ui/Ui.h"

void Ui::RunIn(std::unique_ptr<Afx::WindowSystem> system, CDialog& dialog)
{
    std::unique_ptr<Afx::WindowSystem> before = Afx::WindowSystem::Install(std::move(system));
    dialog.DoModal();
    Afx::WindowSystem::Install(std::move(before));
}

void Ui::RunHeadless(CDialog& dialog, const std::function<void()>& work)
{
    auto system = std::make_unique<Afx::HeadlessWindowSystem>();
    system->Script([&work](CDialog& open) {
        work();
        open.EndDialog(IDCANCEL);
    });
    RunIn(std::move(system), dialog);
}

void Ui::Register(const std::string& entry, const std::function<void(benchmark::State& state)>& time)
{
    benchmark::RegisterBenchmark(entry.c_str(), time)->MeasureProcessCPUTime();
}

namespace
{

int Run(int argc, char** argv, bool hasWindows)
{
    Bench::Reasons reasons;
    Ui::RegisterSheet(reasons);
    Ui::RegisterGrid(reasons);
#ifdef BENCH_HAS_WINDOWS
    if (hasWindows)
        Ui::RegisterWindows(reasons);
#endif
    if (!hasWindows)
        std::puts("Without the rows in real windows: there is no display, or they are not built.");
    return Bench::RunAll(argc, argv, reasons);
}

} // namespace

int main(int argc, char** argv)
{
    const int result = Bench::ResultOf([=] {
#ifdef BENCH_HAS_WINDOWS
        constexpr int kNoDisplay = -1;
        if (const int ran = Ui::RunWithWindows([=] { return Run(argc, argv, true); }, kNoDisplay); ran != kNoDisplay)
            return ran;
#endif
        return Run(argc, argv, false);
    });
    MorvUtShutDown();
    return result;
}
