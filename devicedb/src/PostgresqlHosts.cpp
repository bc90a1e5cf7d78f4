#include "PostgresqlHosts.h"

#include <algorithm>
#include <sstream>

namespace devices::database {

namespace {

std::vector<std::string> partsOf(const std::string& list)
{
    std::vector<std::string> parts;
    std::istringstream rest(list + ",");
    for (std::string part; std::getline(rest, part, ',');) {
        parts.push_back(part);
    }
    return parts;
}

// One value may be for all hosts.
std::string partAt(const std::vector<std::string>& parts, std::size_t position)
{
    return position < parts.size() ? parts[position] : parts.front();
}

} // namespace

PostgresqlHosts::PostgresqlHosts(const std::string& host, const std::string& address,
                                 const std::string& port)
{
    const auto names = partsOf(host);
    const auto addresses = partsOf(address);
    const auto ports = partsOf(port);
    for (std::size_t i = 0; i < std::max(names.size(), addresses.size()); ++i) {
        hosts.push_back({partAt(names, i), partAt(addresses, i), partAt(ports, i)});
    }
}

bool PostgresqlHosts::remove(const PGconn* givenUp)
{
    const std::string name = PQhost(givenUp);
    const std::string port = PQport(givenUp);
    const auto found = std::find_if(hosts.begin(), hosts.end(), [&](const Host& host) {
        return (host.name.empty() ? host.address : host.name) == name &&
               (host.port.empty() || host.port == port);
    });
    if (found == hosts.end() || found + 1 == hosts.end()) {
        return false;
    }
    hosts.erase(found);
    return true;
}

std::vector<std::pair<std::string, std::string>> PostgresqlHosts::settings() const
{
    std::string names;
    std::string addresses;
    std::string ports;
    for (const Host& host : hosts) {
        names += "," + host.name;
        addresses += "," + host.address;
        ports += "," + host.port;
    }
    return {
        {"host", names.substr(1)}, {"hostaddr", addresses.substr(1)}, {"port", ports.substr(1)}};
}

} // namespace devices::database
