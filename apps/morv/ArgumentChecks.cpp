#include "ArgumentChecks.h"

#include <algorithm>

#include "Afx/text/Numbers.h"
#include "Afx/text/Utf8.h"
#include "Output.h"

namespace Morv
{

CLI::Validator PlainNumber(long most)
{
    const std::string range = "1 to " + std::to_string(most);
    const auto problem = [=](const std::string& text) {
        const long value = Afx::ParseWhole<long>(text).value_or(0);
        const bool isPlain = value >= 1 && value <= most && text.front() != '0';
        return isPlain ? std::string() : Quoted(text) + " is not a whole number from " + range;
    };
    return {problem, range};
}

namespace
{

/// What is wrong with a text that must be there; empty when nothing is.
std::string WhyNotText(const std::string& text)
{
    if (text.empty())
        return "the value is empty";
    if (text.starts_with("--")) // the next option: --user --json names nobody
        return "the value is missing";
    return HasControlCharacters(text) ? "the value holds control characters" : "";
}

} // namespace

CLI::Validator NotEmpty() { return {&WhyNotText, ""}; }

CLI::Validator TextUpTo(int most)
{
    const std::string length = std::to_string(most) + " characters";
    const auto problem = [=](const std::string& text) {
        const std::string why = WhyNotText(text);
        return why.empty() && Afx::CountCharacters(text) > most ? "the value has more than " + length : why;
    };
    return {problem, "up to " + length};
}

CLI::Validator Utf8()
{
    return {[](const std::string& text) { return std::string(Afx::IsUtf8(text) ? "" : "the value is not UTF-8"); }, ""};
}

CLI::Validator NoJournal()
{
    const auto problem = [](const std::string& text) {
        for (const char* const ending : {"-wal", "-shm", "-journal"})
            if (text.ends_with(ending))
                return "a name that ends in " + std::string(ending) + " is that of a database's journal";
        return std::string();
    };
    return {problem, ""};
}

CLI::Validator OneOf(std::vector<std::string> words)
{
    std::string list;
    for (const std::string& word : words)
        list += (list.empty() ? "" : ", ") + word;
    const auto problem = [=](const std::string& text) {
        const bool isOne = std::find(words.begin(), words.end(), text) != words.end();
        return isOne ? std::string() : Quoted(text) + " is none of " + list + DidYouMean(text, words);
    };
    return {problem, list};
}

CLI::Validator PlainYear()
{
    const auto toPlain = [](std::string& text) {
        constexpr std::size_t kSlash = 4, kLength = 7; // 2017/18
        if (text.size() != kLength || text[kSlash] != '/')
            return std::string();
        const auto first = Afx::ParseWhole<int>(text.substr(0, kSlash)),
                   last = Afx::ParseWhole<int>(text.substr(kSlash + 1));
        if (first && last == (*first + 1) % 100)
            text = std::to_string(*first + 1);
        return std::string();
    };
    return {toPlain, "YEAR"};
}

namespace
{

constexpr char kWordMark = '\x1'; // never begins an option or a list

const CLI::Option* OptionOf(const CLI::App& app, const std::string& argument)
{
    return argument.starts_with('-') ? app.get_option_no_throw(argument.substr(0, argument.find('='))) : nullptr;
}

} // namespace

std::vector<std::string> ArgumentsOf(int argc, char** argv, const CLI::App& app)
{
    std::vector<std::string> arguments;
    const CLI::App* calc = nullptr;
    bool hasCommand = false, isValue = false, takesOptions = true;
    for (int i = 1; i < argc; ++i) {
        const std::string text = argv[i];
        if (isValue || !takesOptions) {
            arguments.push_back(calc && !isValue ? kWordMark + text : text);
            isValue = false;
            continue;
        }
        if (text == "--") {
            takesOptions = false;
            if (!calc)
                arguments.push_back(text);
            continue;
        }
        const CLI::Option* option = OptionOf(app, text);
        if (!option && calc)
            option = OptionOf(*calc, text);
        if (calc && !option) {
            arguments.push_back(text == kFromInput ? text : kWordMark + text);
            continue;
        }
        const bool takesValue = option && option->get_items_expected_max() > 0;
        const std::size_t equals = text.find('=');
        if (text.starts_with("--") && equals == text.size() - 1 && (takesValue || !option)) {
            arguments.push_back(text.substr(0, equals));
            arguments.emplace_back();
            continue;
        }
        arguments.push_back(text);
        isValue = takesValue && equals == text.npos;
        if (!hasCommand && text == "calc")
            calc = app.get_subcommand(text);
        hasCommand = hasCommand || !text.starts_with('-');
    }
    return arguments;
}

std::string WordOf(const std::string& argument)
{
    return argument.starts_with(kWordMark) ? argument.substr(1) : argument;
}

} // namespace Morv
