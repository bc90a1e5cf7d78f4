#pragma once

#include <libpq-fe.h>

#include <string>
#include <vector>

namespace devices::database {

/// How a PostgreSQL database is reached: libpq's own connection words, as
/// "host=db.example dbname=plant" or as a URL, read by libpq itself.
class PostgresqlWords
{
public:
    /// Reads `text`. Throws `std::runtime_error` when libpq does not understand them; nothing that
    /// may be a password is in its text.
    explicit PostgresqlWords(const std::string& text);

    /// Connects. Throws a `SqlFailure`. The caller ends the connection with `PQfinish`.
    PGconn* connect() const;

    /// Returns engine, host and database for messages, such as "postgresql:host=a dbname=b"; what
    /// is not stated is what libpq takes without it.
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

    std::vector<Word> words; ///< Those that are stated, with a value.
};

} // namespace devices::database
