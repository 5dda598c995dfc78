// usage: hmrc [OPTIONS]     the decoding of an answer, with the options of the benchmark library
//        hmrc --fetch       100, 300 and 1000 clients fetched from a server with 20 ms of delay

#include <string_view>

#include "hmrc/Hmrc.h"
#include "Places.h"

int main(int argc, char** argv)
{
    const bool isFetching = argc > 1 && std::string_view(argv[1]) == "--fetch";
    return RunWithPlaces([&] { return isFetching ? RunFetching() : RunDecoding(argc, argv); });
}
