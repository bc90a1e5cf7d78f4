#pragma once

#include "devices/database/DeviceDatabase.h"

#include "PostgresqlAnswer.h"

#include <string>
#include <utility>
#include <vector>

namespace devices::database {

/// A libpq connection string, such as "host=db.example dbname=plant", or a URL, parsed by libpq
/// itself. It may name several hosts, of which libpq takes the first that can be used.
class PostgresqlWords
{
public:
    /// Reads `text`. Throws `std::runtime_error` if libpq cannot parse it; the message holds
    /// nothing that may be a password.
    explicit PostgresqlWords(const std::string& text);

    /// Connects, for `Access::Change` to a server that accepts changes, whatever
    /// `target_session_attrs` is. Throws a `SqlFailure`, with the reason of each host if there are
    /// several.
    PostgresqlHandle connect(Access access) const;

    /// Returns what to connect for first: with several hosts, of which some may only read, a
    /// database that may have to be created is one to change.
    Access accessToOpen(OpenMode mode) const;

    /// Returns the value of `target_session_attrs` if it asks for servers that only read, else an
    /// empty text.
    std::string readersOnly() const;

    /// Returns engine, host and database for messages, such as "postgresql:host=a dbname=b"; what
    /// is not stated is libpq's default.
    std::string name() const;

    /// Returns a text of libpq without the passwords of this connection.
    std::string withoutPasswords(std::string text) const;

private:
    struct Word
    {
        std::string key;
        std::string value;
        bool secret;
    };

    using Setting = std::pair<std::string, std::string>; ///< Key and value.

    std::vector<Setting> settings(Access access) const;
    bool nameSeveralHosts() const;
    const Word* find(const std::string& key) const;
    std::string valueOrDefault(const std::string& key) const;

    std::vector<Word> words; ///< The stated ones, with a value.
};

} // namespace devices::database
