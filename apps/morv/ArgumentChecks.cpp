#include "ArgumentChecks.h"

#include <charconv>

namespace Morv
{

CLI::Validator PlainNumber(long most)
{
    const std::string range = "1 to " + std::to_string(most);
    const auto problem = [=](const std::string& text) {
        long value = 0;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, value);
        const bool isPlain = error == std::errc() && stop == end && text.front() != '0' && value >= 1 && value <= most;
        return isPlain ? std::string() : "'" + text + "' is not a whole number from " + range;
    };
    return {problem, range};
}

CLI::Validator NotEmpty()
{
    return {[](const std::string& text) { return text.empty() ? std::string("the value is empty") : std::string(); },
            ""};
}

std::vector<std::string> ArgumentsOf(int argc, char** argv)
{
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string text = argv[i];
        const bool isEmptyValue = text.starts_with("--") && text.size() > 3 && text.find('=') == text.size() - 1;
        arguments.push_back(isEmptyValue ? text.substr(0, text.size() - 1) : text);
        if (isEmptyValue)
            arguments.emplace_back();
    }
    return arguments;
}

} // namespace Morv
