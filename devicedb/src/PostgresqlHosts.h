#pragma once

#include <libpq-fe.h>

#include <string>
#include <utility>
#include <vector>

namespace devices::database {

/// The hosts of a connection string: the lists that libpq takes as `host`, `hostaddr` and `port`.
class PostgresqlHosts
{
public:
    /// Takes the values, with commas between those of several hosts. Each may be empty.
    PostgresqlHosts(const std::string& host, const std::string& address, const std::string& port);

    /// Returns whether libpq has a choice.
    bool areSeveral() const { return hosts.size() > 1; }

    /// Removes the host at which libpq gave up, so that the others can be tried. Returns whether
    /// there is one that libpq has not tried.
    bool remove(const PGconn* givenUp);

    /// Returns the values again, by their keys.
    std::vector<std::pair<std::string, std::string>> settings() const;

private:
    struct Host
    {
        std::string name;
        std::string address;
        std::string port;
    };

    std::vector<Host> hosts;
};

} // namespace devices::database
