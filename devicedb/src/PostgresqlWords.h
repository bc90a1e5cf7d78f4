#pragma once

#include <libpq-fe.h>

#include <string>
#include <vector>

namespace devices::database {

/// A libpq connection string, such as "host=db.example dbname=plant", or a URL, parsed by libpq
/// itself.
class PostgresqlWords
{
public:
    /// Reads `text`. Throws `std::runtime_error` if libpq cannot parse it; the message holds
    /// nothing that may be a password.
    explicit PostgresqlWords(const std::string& text);

    /// Connects. Throws a `SqlFailure`. The caller ends the connection with `PQfinish`.
    PGconn* connect() const;

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

    const Word* find(const std::string& key) const;
    std::string valueOrDefault(const std::string& key) const;

    std::vector<Word> words; ///< The stated ones, with a value.
};

} // namespace devices::database
