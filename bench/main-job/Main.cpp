#include "main-job/MainJob.h"

#include <filesystem>
#include <string_view>

#include "Brix/Schema.h"

const std::string& Scratch()
{
    static const std::string folder = [] {
        const auto path = std::filesystem::temp_directory_path() / "morvut-bench";
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
        return path.string();
    }();
    return folder;
}

void OpenPractice(const std::string& path)
{
    Quarry::SetConnection(nullptr);
    std::filesystem::remove(path);
    Quarry::SetConnection(Cellar::CConnection::Open(CString(path), Cellar::CConnection::Create::IfMissing));
    Brix::CreateSchema(Quarry::GetConnection());
}

int main(int argc, char** argv)
{
    MorvUtStartUp("bench", "Software\\bench");
    Shellkit::SetPracticeKey(Shellkit::RandomBytes(Shellkit::kKeySize));
    const bool isGrowth = argc == 2 && std::string_view(argv[1]) == "--growth";
    const int result = isGrowth ? RunGrowth() : RunComparison(argc, argv);
    MorvUtShutDown();
    std::filesystem::remove_all(Scratch());
    return result;
}
