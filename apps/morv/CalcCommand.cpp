// calc: one rule of the library at the prompt, or once per line of standard input.

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>

#include "Afx/Exceptions.h"
#include "Afx/text/Ascii.h"
#include "Afx/text/TextFold.h"
#include "ArgumentChecks.h"
#include "CalcRules.h"
#include "Commands.h"
#include "Output.h"

namespace Morv
{

namespace
{

const CalcRule& RuleNamed(const std::string& name)
{
    const auto rules = CalcRules();
    const auto found = std::find_if(rules.begin(), rules.end(),
                                    [&](const CalcRule& rule) { return Afx::EqualNoCase(rule.name, name); });
    if (found != rules.end())
        return *found;
    std::vector<std::string> names;
    for (const CalcRule& rule : rules)
        names.emplace_back(rule.name);
    // An argument given first may be somebody's identifier: it is not repeated.
    const bool mayBeShown = std::none_of(name.begin(), name.end(), Afx::IsDigit);
    throw CommandError(Exit::BadInput, "UNKNOWN_RULE",
                       "there is no rule " + (mayBeShown ? Quoted(name) : "of that name") + DidYouMean(name, names),
                       "morv calc --list names them.");
}

Json ListOfRules()
{
    Json list = Json::array();
    for (const CalcRule& rule : CalcRules()) {
        Json arguments = Json::array();
        for (const Argument& argument : DeclaredArguments(rule))
            arguments.push_back({{"name", argument.name},
                                 {"kind", argument.kind.name},
                                 {"expected", argument.kind.expected},
                                 {"optional", argument.isOptional}});
        list.push_back({{"rule", rule.name}, {"arguments", arguments}, {"result", rule.result}});
    }
    return list;
}

void List(bool json)
{
    const Json list = ListOfRules();
    if (json)
        return PrintJson(list);
    TextTable table({"Rule", "Arguments", "Result"});
    for (const Json& rule : list) {
        std::string arguments;
        for (const Json& argument : rule["arguments"]) {
            const std::string text = argument["name"].get<std::string>() + ":" + argument["kind"].get<std::string>();
            arguments += (arguments.empty() ? "" : " ") + (argument["optional"].get<bool>() ? "[" + text + "]" : text);
        }
        table.Add({rule["rule"], arguments, rule["result"]});
    }
    table.Print();
}

/// A value as a line for people: texts bare, objects as members.
std::string ResultText(const Json& result)
{
    if (result.is_string())
        return result.get<std::string>();
    if (result.is_null())
        return "none";
    if (!result.is_object())
        return result.dump();
    std::string text;
    for (const auto& member : result.items())
        text += (text.empty() ? "" : ", ") + member.key() + " " + ResultText(member.value());
    return text;
}

CommandError BadArguments(const std::string& message, const std::string& action)
{
    return {Exit::BadInput, "BAD_ARGUMENTS", message, action};
}

void CheckCount(const std::string& rule, const std::vector<Argument>& declared, std::size_t given)
{
    const auto needed = static_cast<std::size_t>(
        std::count_if(declared.begin(), declared.end(), [](const Argument& argument) { return !argument.isOptional; }));
    if (given >= needed && given <= declared.size())
        return;
    const std::string most = std::to_string(declared.size());
    const std::string range = needed == declared.size() ? most : std::to_string(needed) + " to " + most;
    throw BadArguments(rule + " takes " + range + (range == "1" ? " argument" : " arguments") + ", not " +
                           std::to_string(given),
                       "morv calc --list names them.");
}

Json Apply(const CalcRule& rule, const std::vector<Argument>& declared, const std::vector<std::string>& texts)
{
    const std::string name(rule.name);
    CheckCount(name, declared, texts.size());
    try {
        return rule.function.apply(texts);
    } catch (const WrongArgument& wrong) {
        const Argument& argument = declared[wrong.place];
        const bool isSecret = argument.kind.name == kIdentifier;
        throw BadArguments(name + ": argument " + std::to_string(wrong.place + 1) + " (" + std::string(argument.name) +
                               ") is " + (isSecret ? "no text" : Quoted(texts[wrong.place])),
                           "Expected is " + std::string(argument.kind.expected) + ".");
    } catch (CException* refused) { // the converters of hexadecimal text refuse that way
        const std::string reason = refused->GetErrorMessage().Str();
        refused->Delete();
        throw BadArguments(name + ": " + reason, "Write each byte as two digits, 0 to 9 or A to F, as in 00FF.");
    }
}

/// What an argument looks like when it is printed again.
std::string EchoOf(const Argument& argument, const std::string& text)
{
    return argument.kind.name == kIdentifier ? std::string(text.size(), '*') : text;
}

void Calculate(const CalcRule& rule, const std::vector<std::string>& texts, bool json)
{
    const std::vector<Argument> declared = DeclaredArguments(rule);
    const Json result = Apply(rule, declared, texts);
    if (!json)
        return PrintText(ResultText(result));
    Json echoed = Json::array();
    for (std::size_t i = 0; i < texts.size(); ++i)
        echoed.push_back(EchoOf(declared[i], texts[i]));
    PrintJson({{"rule", rule.name}, {"arguments", echoed}, {"result", result}});
}

/// The words of a line, between blanks; double quotes keep blanks together, and "" is an empty word.
std::vector<std::string> WordsOf(std::string_view line)
{
    std::vector<std::string> words;
    bool isQuoted = false, isWord = false;
    for (const char c : line) {
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && (c == ' ' || c == '\t' || c == '\r')) {
            isWord = false;
            continue;
        }
        if (!isWord)
            words.emplace_back();
        isWord = true;
        if (c != '"')
            words.back() += c;
    }
    if (isQuoted)
        throw BadArguments("a quotation mark is not closed", "Put one on both sides of a text with blanks.");
    return words;
}

constexpr std::size_t kLongestLine = 1'000'000; // bytes; an input without line ends may go on for ever

/// The next line of standard input, which lies in the buffer; none at its end. Throws CommandError for one that is too
/// long, behind which nothing is read.
std::optional<std::string_view> ReadLine(std::vector<char>& buffer, int number)
{
    std::cin.getline(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    const auto size = static_cast<std::size_t>(std::cin.gcount());
    if (std::cin)
        return std::string_view(buffer.data(), size - (std::cin.eof() ? 0 : 1));
    if (!std::cin.bad() && !std::cin.eof())
        throw CommandError(Exit::BadInput, "BAD_ARGUMENTS",
                           "line " + std::to_string(number) + " is longer than " + std::to_string(kLongestLine) +
                               " bytes; it and what follows were not read",
                           "Put the arguments of one calculation on a line.");
    return std::nullopt;
}

/// One answer a line. A bad line is reported and the others are answered; the exit code tells that there was one.
Exit CalculateLines(const CalcRule& rule, bool json)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    std::ios::sync_with_stdio(false); // reads several times as fast
    Exit exit = Exit::Done;
    std::vector<char> buffer(kLongestLine + 1);
    for (int number = 1; auto line = ReadLine(buffer, number); ++number)
        try {
            if (number == 1 && line->starts_with(kByteOrderMark))
                line->remove_prefix(kByteOrderMark.size());
            Calculate(rule, WordsOf(*line), json);
        } catch (const CommandError& error) {
            exit = error.exit;
            const std::string message = "line " + std::to_string(number) + ": " + error.what();
            PrintError(CommandError(error.exit, error.code, message, error.action), json);
        }
    if (std::cin.bad())
        throw CommandError(Exit::BadInput, "CANNOT_READ", "standard input cannot be read",
                           "Give a file of lines, or type them.");
    return exit;
}

Exit Calc(std::vector<std::string> words, bool list, const CommonOptions& options)
{
    if (list && !words.empty())
        throw BadArguments("--list takes no rule", "morv calc --list names them all.");
    if (list) {
        List(options.json);
        return Exit::Done;
    }
    if (words.empty())
        throw BadArguments("no rule is named", "morv calc --list names them.");
    const bool readsLines = words.size() == 2 && words.back() == kFromInput; // bare, see ArgumentsOf
    std::transform(words.begin(), words.end(), words.begin(), WordOf);
    UseYear(options);
    const CalcRule& rule = RuleNamed(words.front());
    if (readsLines)
        return CalculateLines(rule, options.json);
    Calculate(rule, {words.begin() + 1, words.end()}, options.json);
    return Exit::Done;
}

} // namespace

void AddCalcCommand(CLI::App& app, Program& program)
{
    auto words = std::make_shared<std::vector<std::string>>();
    auto list = std::make_shared<bool>(false);
    CLI::App* calc = app.add_subcommand("calc", "One rule on dates, tax years, money or identifiers");
    calc->add_option("rule", *words, "The rule and its arguments; - in their place reads lines of arguments")
        ->expected(0, -1);
    calc->add_flag("--list", *list, "Name the rules, their arguments and units");
    calc->footer("Lines hold the arguments between blanks, texts with blanks in double quotes. Behind -- even a text "
                 "like --json is\n"
                 "an argument.");
    calc->callback([=, &program] { program.exit = Calc(*words, *list, program.options); });
}

} // namespace Morv
