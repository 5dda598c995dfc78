#include "main-job/MainJob.h"

#include <filesystem>
#include <string_view>

#include "Brix/Schema.h"

const std::vector<Place>& Places()
{
    static const std::vector<Place> places = [] {
        const std::filesystem::path memory = "/dev/shm";
        std::vector<Place> made{{"disk", std::filesystem::temp_directory_path() / "morvut-bench"}};
        if (std::filesystem::is_directory(memory))
            made.push_back({"memory", memory / "morvut-bench"});
        for (const Place& place : made) {
            std::filesystem::remove_all(place.folder);
            std::filesystem::create_directories(place.folder);
        }
        return made;
    }();
    return places;
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
    Quarry::SetConnection(nullptr);
    MorvUtShutDown();
    for (const Place& place : Places())
        std::filesystem::remove_all(place.folder);
    return result;
}
