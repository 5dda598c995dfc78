#include "Places.h"

#include <unistd.h>

#include <filesystem>

#include "Brix/Schema.h"
#include "MorvUt/MorvUt.h"
#include "Quarry/Session.h"
#include "Ratios.h"

const std::vector<Place>& Places()
{
    static const std::vector<Place> places = [] {
        const std::string name = "morvut-bench-" + std::to_string(getpid());
        const std::filesystem::path memory = "/dev/shm";
        std::vector<Place> made{{"disk", std::filesystem::temp_directory_path() / name}};
        if (std::filesystem::is_directory(memory))
            made.push_back({"memory", memory / name});
        for (const Place& place : made)
            std::filesystem::create_directories(place.folder);
        return made;
    }();
    return places;
}

int RunWithPlaces(const std::function<int()>& run)
{
    MorvUtStartUp("bench", "Software\\bench");
    Shellkit::SetPracticeKey(Shellkit::RandomBytes(Shellkit::kKeySize));
    const int result = Bench::ResultOf(run);
    Quarry::SetConnection(nullptr);
    MorvUtShutDown();
    for (const Place& place : Places())
        std::filesystem::remove_all(place.folder);
    return result;
}

void OpenPractice(const std::string& path)
{
    Quarry::SetConnection(nullptr);
    for (const char* const ending : {"", "-wal", "-shm"})
        std::filesystem::remove(path + ending);
    Quarry::SetConnection(Cellar::CConnection::Open(CString(path), Cellar::CConnection::Create::IfMissing));
    Brix::CreateSchema(Quarry::GetConnection());
}
