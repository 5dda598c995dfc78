// Writes the registered HMRC credentials, enciphered, as a C++ include file. Run by the build.
// usage: seal-credentials CREDENTIALS.ini OUTPUT.inc

#include <fstream>
#include <iostream>
#include <sstream>

#include "Afx/system/Files.h"
#include "Shellkit/Bytes.h"
#include "Shellkit/Envelope.h"

namespace
{

struct Credential
{
    const char* array;
    const char* section;
    const char* name;
};
constexpr Credential kCredentials[] = {
    {"kProductionId", "production", "id"},
    {"kProductionSecret", "production", "secret"},
    {"kTestId", "test", "id"},
    {"kTestSecret", "test", "secret"},
};

std::string Trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t\r");
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

/// The value of `name` in `section`; empty when there is none.
std::string FindValue(const std::string& ini, const Credential& wanted)
{
    std::istringstream lines(ini);
    std::string line, section;
    while (std::getline(lines, line)) {
        line = Trimmed(line);
        const auto equals = line.find('=');
        if (line.size() > 1 && line.front() == '[' && line.back() == ']')
            section = Trimmed(line.substr(1, line.size() - 2));
        else if (section == wanted.section && equals != std::string::npos &&
                 Trimmed(line.substr(0, equals)) == wanted.name)
            return Trimmed(line.substr(equals + 1));
    }
    return {};
}

void WriteArray(std::ostream& out, const char* name, const Shellkit::Bytes& bytes)
{
    out << "constexpr std::array<unsigned char, " << bytes.size() << "> " << name << "{";
    for (std::size_t i = 0; i < bytes.size(); ++i)
        out << (i == 0 ? "" : ", ") << static_cast<unsigned>(bytes[i]);
    out << "};\n";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: seal-credentials CREDENTIALS.ini OUTPUT.inc\n";
        return 2;
    }
    const auto ini = Afx::ReadTextFile(argv[1]);
    if (!ini) {
        std::cerr << argv[1] << ": cannot be read\n";
        return 2;
    }
    std::ostringstream text;
    for (const Credential& credential : kCredentials) {
        const std::string value = FindValue(*ini, credential);
        if (value.empty())
            std::cerr << argv[1] << ": no value '" << credential.name << "' in section [" << credential.section
                      << "]; the program will have none\n";
        const auto sealed = Shellkit::Seal(Shellkit::KeyId::Application, value);
        if (!sealed) {
            std::cerr << "seal-credentials: no cipher\n";
            return 1;
        }
        WriteArray(text, credential.array, value.empty() ? Shellkit::Bytes() : *sealed);
    }
    std::ofstream out(argv[2], std::ios::binary);
    out << text.str();
    if (!out.flush()) {
        std::cerr << argv[2] << ": cannot be written\n";
        return 1;
    }
}
