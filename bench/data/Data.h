#pragma once

// What is measured, by us and in C. Both work on practices of their own, with the same rows.

#include <memory>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// Makes a practice of so many clients and opens it as the current one.
void MakePractice(const std::string& path, int clients);
/// Opens one that is there, its version and key check read.
void OpenOurs(const std::string& path);

// Each gives a figure of what it read, so that nothing is left out.
long ReadThreeColumns(); // id, code and name of every client, by cursor
long ReadWholeList();    // every client with all columns
long OpenById(long id);  // one client
/// Employments saved in one transaction, of whose table somebody is told.
void AddEmployments(int count);
/// Changes and saves a client's name again and again, each durable by itself.
class ClientChange
{
public:
    explicit ClientChange(long id);
    ~ClientChange();
    void Save();

private:
    struct Rows;
    std::unique_ptr<Rows> m_rows;
};

/// A client as a program in C++ would hold it that has nothing but the engine's own interface.
struct RawClient
{
    long id;
    std::string code, name, utr, nationalInsuranceNumber;
    bool isTrust, isActive;
    std::string death, entityType;
    bool hasTrustOption;
    int trustKind;
    bool hasNoTaxReturn;
    std::string modified, modifiedBy;
    long version;
};

/// The same with the engine's own interface: everything prepared once, the same settings, the same statements, ids from
/// the same counter. Throws std::runtime_error when the engine refuses.
class RawDatabase
{
public:
    explicit RawDatabase(const std::string& path);
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;
    ~RawDatabase();

    long ReadSchema();
    long ReadThreeColumns();
    long ReadWholeList();
    long OpenById(long id);
    void AddEmployments(int count);
    void ChangeClient(long id);

private:
    sqlite3_stmt* Prepare(sqlite3_stmt*& statement, const char* text);
    void Run(const char* text);
    void Finish(sqlite3_stmt* statement);
    long TakeIds(int count);

    sqlite3* m_database = nullptr;
    sqlite3_stmt *m_schema = nullptr, *m_threeColumns = nullptr, *m_whole = nullptr, *m_byId = nullptr,
                 *m_insert = nullptr, *m_change = nullptr, *m_count = nullptr, *m_counted = nullptr;
    long m_version = -1; // of the client that is changed; not read yet
};
