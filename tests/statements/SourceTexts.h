#pragma once

// The statements, and pieces of statements, that stand in the sources.

#include <string>
#include <vector>

struct SourceText
{
    std::string place; // file:line
    std::string text;  // literals that follow one another are one
};

/// Every string of components and apps that holds words of SQL in capitals, in the order of files and lines.
std::vector<SourceText> SqlInSources(const std::string& root);

/// It begins with a verb and can stand for itself: no name, list or condition is missing at its end.
bool IsWholeStatement(const std::string& text);
