#pragma once

// A practice's file as another program meets it.

#include <string>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace Test
{

/// Runs statements on the file, which is made when it is not there, as the sqlite3 command does: without any function
/// of ours. Answers the rows, a line each, with "|" between the values.
inline std::string Execute(const std::string& path, const std::string& statements)
{
    std::string rows;
    const auto add = [](void* to, int count, char** values, char**) {
        auto& text = *static_cast<std::string*>(to);
        for (int i = 0; i < count; ++i)
            text += (i == 0 ? "" : "|") + std::string(values[i] ? values[i] : "");
        text += '\n';
        return 0;
    };
    sqlite3* tool = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &tool), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(tool, statements.c_str(), add, &rows, nullptr), SQLITE_OK) << sqlite3_errmsg(tool);
    sqlite3_close(tool);
    return rows;
}

} // namespace Test
