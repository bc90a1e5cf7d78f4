#include "PostgresqlConnection.h"

#include "DatabaseFailure.h"

#include <Poco/String.h>

#include <libpq-fe.h>

#include <algorithm>
#include <memory>

namespace devices::database {

namespace {

using Options = std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)>;

// What libpq quotes of a text that it could not read may be a part of a password.
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
             "its connection words are not understood: " + withoutQuotedParts(reason));
    }
    return options;
}

bool isSecret(const PQconninfoOption& option)
{
    return option.dispchar != nullptr && *option.dispchar == '*';
}

// A value with every byte that libpq would take for its end behind a backslash.
std::string escaped(const std::string& value)
{
    std::string text;
    for (const char c : value) {
        if (c == '\\' || c == '\'' || c == '\t' || c == '\n' || c == '\r' || c == '\v' ||
            c == '\f') {
            text += '\\';
        }
        text += c;
    }
    return text;
}

} // namespace

PostgresqlConnection::PostgresqlConnection(const std::string& text)
{
    const Options options = parsed(text);
    for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
        if (option->val != nullptr && *option->val != '\0') {
            words.push_back({option->keyword, option->val, isSecret(*option)});
        }
    }
}

// The connector splits its text at every blank, before libpq could see that one belongs to a value.
// Only in "options" a tabulator means the same to the server.
std::string PostgresqlConnection::forConnector() const
{
    std::string text = "client_encoding=UTF8";
    for (const Word& word : words) {
        std::string value = word.value;
        if (word.key == "options") {
            std::replace(value.begin(), value.end(), ' ', '\t');
        }
        if (value.find(' ') != std::string::npos) {
            fail(name(), "open",
                 "the value of its connection word " + word.key +
                     " holds a blank, which the driver cannot pass on; state it in a service file, "
                     "an environment variable of libpq or .pgpass instead");
        }
        if (word.key != "client_encoding") {
            text += " " + word.key + "=" + escaped(value);
        }
    }
    return find("connect_timeout") != nullptr ? text
                                              : text + " connect_timeout=" +
                                                    (valueOrDefault("connect_timeout").empty()
                                                         ? "10"
                                                         : valueOrDefault("connect_timeout"));
}

const PostgresqlConnection::Word* PostgresqlConnection::find(const std::string& key) const
{
    const auto found = std::find_if(words.begin(), words.end(),
                                    [&key](const Word& word) { return word.key == key; });
    return found == words.end() ? nullptr : &*found;
}

// The defaults come from libpq's environment variables and its service file.
std::string PostgresqlConnection::valueOrDefault(const std::string& key) const
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

std::string PostgresqlConnection::name() const
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

std::string PostgresqlConnection::withoutPasswords(std::string text) const
{
    for (const Word& word : words) {
        if (word.secret) {
            Poco::replaceInPlace(text, word.value, std::string("***"));
        }
    }
    return text;
}

} // namespace devices::database
