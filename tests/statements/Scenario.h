#pragma once

// Everything of the library that puts a statement together.

#include <memory>
#include <string>
#include <vector>

#include "Cellar/Connection.h"

/// What the library sends to the database of this connection, each statement once, in the order of the first time:
/// every record class written and read, every condition, the checks, the locks. It becomes the current connection.
std::vector<std::string> SendEverything(std::unique_ptr<Cellar::CConnection> connection);

/// What an upgrade of the practice sends, likewise.
std::vector<std::string> SendUpgrade(std::unique_ptr<Cellar::CConnection> connection);

/// What a scripted server must answer for that (see tests/Cellar/odbcfake): the catalog of a whole practice; of an
/// older one, which lacks a table and a column.
std::string WholePractice();
std::string OlderPractice();
