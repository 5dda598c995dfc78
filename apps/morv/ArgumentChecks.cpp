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

namespace
{

constexpr char kWordMark = '\x1'; // never begins an option or a list

const CLI::Option* OptionOf(const CLI::App& app, const std::string& argument)
{
    return argument.starts_with('-') ? app.get_option_no_throw(argument.substr(0, argument.find('='))) : nullptr;
}

/// Marks what is behind `calc`, but for the options of `app` and of calc and their values; "--" ends those and goes.
std::vector<std::string> WithWordsMarked(std::vector<std::string> arguments, const CLI::App& app)
{
    const CLI::App* calc = nullptr;
    bool isValue = false, takesOptions = true;
    std::vector<std::string> marked;
    for (const std::string& argument : arguments) {
        const CLI::Option* option = nullptr;
        if (takesOptions && !isValue) {
            option = OptionOf(app, argument);
            if (!option && calc)
                option = OptionOf(*calc, argument);
        }
        if (option || isValue) {
            marked.push_back(argument);
            isValue = option && option->get_items_expected_max() > 0 && argument.find('=') == argument.npos;
        } else if (!calc) {
            if (argument != "calc")
                return arguments; // another command
            calc = app.get_subcommand(argument);
            marked.push_back(argument);
        } else if (takesOptions && argument == "--") {
            takesOptions = false;
        } else {
            marked.push_back(kWordMark + argument);
        }
    }
    return marked;
}

} // namespace

std::vector<std::string> ArgumentsOf(int argc, char** argv, const CLI::App& app)
{
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string text = argv[i];
        const bool isEmptyValue = text.starts_with("--") && text.size() > 3 && text.find('=') == text.size() - 1;
        arguments.push_back(isEmptyValue ? text.substr(0, text.size() - 1) : text);
        if (isEmptyValue)
            arguments.emplace_back();
    }
    return WithWordsMarked(std::move(arguments), app);
}

std::string WordOf(const std::string& argument)
{
    return argument.starts_with(kWordMark) ? argument.substr(1) : argument;
}

} // namespace Morv
