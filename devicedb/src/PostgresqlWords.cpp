#include "PostgresqlWords.h"

#include "DatabaseFailure.h"
#include "PostgresqlAnswer.h"

#include <Poco/String.h>

#include <algorithm>
#include <memory>

namespace devices::database {

namespace {

using Options = std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)>;

// The part of an invalid text that libpq quotes may be part of a password.
std::string withoutQuotedParts(const std::string& message)
{
    std::string text;
    bool quoted = false;
    for (const char c : message) {
        if (c == '"') {
            quoted = !quoted;
            text += quoted ? "\"...\"" : "";
        } else if (!quoted) {
            text += c;
        }
    }
    return Poco::trim(text);
}

Options parsed(const std::string& words)
{
    char* message = nullptr;
    Options options(PQconninfoParse(words.c_str(), &message), &PQconninfoFree);
    if (options == nullptr) {
        const std::string reason = message == nullptr ? "out of memory" : message;
        PQfreemem(message);
        fail("postgresql:...", "open",
             "its connection string is invalid: " + withoutQuotedParts(reason));
    }
    return options;
}

bool isSecret(const PQconninfoOption& option)
{
    return option.dispchar != nullptr && *option.dispchar == '*';
}

} // namespace

PostgresqlWords::PostgresqlWords(const std::string& text)
{
    const Options options = parsed(text);
    for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
        if (option->val != nullptr && *option->val != '\0') {
            words.push_back({option->keyword, option->val, isSecret(*option)});
        }
    }
}

PGconn* PostgresqlWords::connect() const
{
    std::vector<const char*> keys = {"client_encoding", "fallback_application_name"};
    std::vector<const char*> values = {"UTF8", "device-database"};
    if (valueOrDefault("connect_timeout").empty()) {
        keys.push_back("connect_timeout");
        values.push_back("10"); // seconds
    }
    for (const Word& word : words) { // the last value of a key counts
        keys.push_back(word.key.c_str());
        values.push_back(word.key == "client_encoding" ? "UTF8" : word.value.c_str());
    }
    keys.push_back(nullptr);
    values.push_back(nullptr);
    PGconn* const connection = PQconnectdbParams(keys.data(), values.data(), 0);
    if (PQstatus(connection) != CONNECTION_OK) {
        const std::string reason = postgresqlReason(PQerrorMessage(connection));
        PQfinish(connection);
        throw SqlFailure(withoutPasswords(reason));
    }
    return connection;
}

const PostgresqlWords::Word* PostgresqlWords::find(const std::string& key) const
{
    const auto found = std::find_if(words.begin(), words.end(),
                                    [&key](const Word& word) { return word.key == key; });
    return found == words.end() ? nullptr : &*found;
}

// The defaults are those of libpq's environment variables and its service file.
std::string PostgresqlWords::valueOrDefault(const std::string& key) const
{
    if (const Word* const word = find(key)) {
        return word->value;
    }
    const Options defaults(PQconndefaults(), &PQconninfoFree);
    for (const PQconninfoOption* option = defaults.get();
         option != nullptr && option->keyword != nullptr; ++option) {
        if (key == option->keyword && option->val != nullptr) {
            return option->val;
        }
    }
    return "";
}

std::string PostgresqlWords::name() const
{
    std::string host = valueOrDefault("host");
    if (host.empty()) {
        host = valueOrDefault("hostaddr");
    }
    std::string database = valueOrDefault("dbname");
    if (database.empty()) {
        database = valueOrDefault("user");
    }
    std::string text = "postgresql:";
    if (const Word* const service = find("service")) {
        text += "service=" + service->value;
        if (find("host") == nullptr && find("dbname") == nullptr) {
            return text;
        }
        text += " ";
    }
    return withoutPasswords(text + "host=" + (host.empty() ? "local" : host) +
                            " dbname=" + database);
}

std::string PostgresqlWords::withoutPasswords(std::string text) const
{
    for (const Word& word : words) {
        if (word.secret) {
            Poco::replaceInPlace(text, word.value, std::string("***"));
        }
    }
    return text;
}

} // namespace devices::database
