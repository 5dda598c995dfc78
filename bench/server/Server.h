#pragma once

// The PostgreSQL server that is measured.

#include <cstdint>
#include <string>

namespace Bench
{

/// A server of the tests' kind, which ends with the object or the process. Throws std::runtime_error.
class Server
{
public:
    explicit Server(std::string folder); // for what the server says of itself
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    std::uint16_t GetPort() const;
    /// The connection text of a database, straight or by way of another port of the loopback.
    std::string TextOf(const std::string& database, std::uint16_t port = 0) const;
    /// Makes an empty practice.
    void MakePractice(const std::string& database) const;
    /// Whether a commit waits for the disk, as it does in an office, or not, as in tests.
    void WaitForDisk(bool waits) const;
    /// A call of psql for the database, without its commands.
    std::string Psql(const std::string& database) const;

private:
    std::string ValueOf(const std::string& key) const;

    std::string m_file, m_text;
};

} // namespace Bench
