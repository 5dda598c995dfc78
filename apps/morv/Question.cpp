#include "Question.h"

#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "Afx/text/TextFold.h"
#include "common/CommandError.h"
#include "Output.h"

namespace Morv
{

void NeedYes(bool isYes, const std::string& question, const std::string& refused)
{
    if (isYes)
        return;
    std::string answer;
    if (isatty(STDIN_FILENO) && isatty(STDERR_FILENO)) {
        std::fprintf(stderr, "%s [y/N] ", Printable(question).c_str());
        std::getline(std::cin, answer);
    } else {
        std::fprintf(stderr, "%s\n", Printable(question).c_str());
    }
    if (!Afx::EqualNoCase(answer, "y") && !Afx::EqualNoCase(answer, "yes"))
        throw CommandError(Exit::Refused, "NOT_CONFIRMED", refused, "Give --yes to answer the question.");
}

} // namespace Morv
