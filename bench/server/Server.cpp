#include "server/Server.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "Brix/Schema.h"
#include "Cellar/Connection.h"

namespace Bench
{
namespace
{

void Run(const std::string& command)
{
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("this does not work: " + command);
}

} // namespace

Server::Server(std::string folder) : m_file(folder + "/server")
{
    Run(std::string(DB_SERVER_SCRIPT " start ") + m_file + ' ' + std::to_string(getpid()));
    std::ifstream file(m_file);
    m_text.assign(std::istreambuf_iterator<char>(file), {});
    setenv("ODBCSYSINI", folder.c_str(), 1); // the driver without its log
}

Server::~Server()
{
    if (std::system((std::string(DB_SERVER_SCRIPT " stop ") + m_file).c_str()) != 0)
        std::remove(m_file.c_str()); // which ends it, too
}

std::string Server::ValueOf(const std::string& key) const
{
    const std::size_t at = m_text.find(key + '=');
    if (at == m_text.npos)
        throw std::runtime_error("the server does not say its " + key);
    const std::size_t begin = at + key.size() + 1;
    return m_text.substr(begin, m_text.find(';', begin) - begin);
}

std::uint16_t Server::GetPort() const { return static_cast<std::uint16_t>(std::stoi(ValueOf("Port"))); }

std::string Server::TextOf(const std::string& database, std::uint16_t port) const
{
    const std::string own = "Port=" + ValueOf("Port");
    std::string text = m_text + database;
    if (port != 0)
        text.replace(text.find(own), own.size(), "Port=" + std::to_string(port));
    return text;
}

void Server::MakePractice(const std::string& database) const
{
    Cellar::CConnection::Open(TextOf("postgres"))->Script("CREATE DATABASE " + database);
    Brix::CreateSchema(*Cellar::CConnection::Open(TextOf(database)));
}

void Server::WaitForDisk(bool waits) const
{
    const auto connection = Cellar::CConnection::Open(TextOf("postgres"));
    for (const char* const setting : {"fsync", "synchronous_commit", "full_page_writes"})
        connection->Script(std::string("ALTER SYSTEM SET ") + setting + (waits ? " = on" : " = off"));
    connection->Script("SELECT pg_reload_conf()");
    usleep(500'000); // until every process has read it
}

std::string Server::Psql(const std::string& database) const
{
    return "PGPASSWORD=" + ValueOf("PWD") + " psql -h 127.0.0.1 -p " + ValueOf("Port") + " -U " + ValueOf("UID") +
           " -d " + database + " -X -q -v ON_ERROR_STOP=1 ";
}

} // namespace Bench
