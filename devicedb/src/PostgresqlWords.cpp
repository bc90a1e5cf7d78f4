#include "PostgresqlWords.h"

#include "DatabaseFailure.h"
#include "PostgresqlAnswer.h"
#include "PostgresqlHosts.h"

#include <Poco/String.h>

#include <algorithm>
#include <array>
#include <memory>

#include <locale.h>

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
    return text;
}

// The same for a text with quotes of its own: they cannot be told from those of libpq.
std::string withoutAllThatIsQuoted(const std::string& message)
{
    const auto end = message.rfind('"');
    return end == std::string::npos
               ? message
               : message.substr(0, message.find('"')) + "\"...\"" + message.substr(end + 1);
}

// What follows the first "@" of a URL is its host: the rest of a password, if that holds another
// one or a "/". Messages show hosts and databases.
void requireNoRestOfPassword(const std::string& words)
{
    const auto scheme = words.find("://");
    if (scheme == std::string::npos || words.compare(0, 8, "postgres") != 0) {
        return;
    }
    const std::string rest = words.substr(scheme + 3);
    const auto end = rest.find_first_of("@/");
    const auto host = end != std::string::npos && rest[end] == '@' ? end + 1 : 0;
    const std::string place = rest.substr(host, rest.find('?', host) - host);
    if (place.find('@') != std::string::npos) {
        fail("postgresql:...", "open",
             "its connection string is invalid: host or database hold \"@\"; in a user name or a"
             " password write %40 for \"@\" and %2F for \"/\"");
    }
}

// A host may have chosen another language for libpq, and with it other quotes.
Options parsedInEnglish(const std::string& words, char*& message)
{
    static const locale_t english = newlocale(LC_MESSAGES_MASK, "C", nullptr);
    const locale_t before = uselocale(english);
    Options options(PQconninfoParse(words.c_str(), &message), &PQconninfoFree);
    uselocale(before);
    return options;
}

Options parsed(const std::string& words)
{
    requireNoRestOfPassword(words);
    char* message = nullptr;
    Options options = parsedInEnglish(words, message);
    if (options == nullptr) {
        const std::string reason = message == nullptr ? "out of memory" : message;
        const bool hasQuotes =
            words.find('"') != std::string::npos || words.find("%22") != std::string::npos;
        PQfreemem(message);
        fail("postgresql:...", "open",
             "its connection string is invalid: " + Poco::trim(hasQuotes
                                                                   ? withoutAllThatIsQuoted(reason)
                                                                   : withoutQuotedParts(reason)));
    }
    return options;
}

// A host that is lost without a word, as with its power, is noticed within half a minute: another
// one may serve instead.
constexpr std::array<std::pair<const char*, const char*>, 4> noticeOfALostHost = {{
    {"keepalives_idle", "10"},    // seconds
    {"keepalives_interval", "5"}, // seconds
    {"keepalives_count", "3"},
    {"tcp_user_timeout", "25000"}, // milliseconds
}};

std::string valueOf(const Options& options, const std::string& key)
{
    for (const PQconninfoOption* option = options.get();
         option != nullptr && option->keyword != nullptr; ++option) {
        if (key == option->keyword && option->val != nullptr) {
            return option->val;
        }
    }
    return "";
}

// Those of a service file included.
PostgresqlHosts hostsOf(PGconn* connection)
{
    const Options used(PQconninfo(connection), &PQconninfoFree);
    return {valueOf(used, "host"), valueOf(used, "hostaddr"), valueOf(used, "port")};
}

// Why there is no connection. libpq does not say whose certificates it accepts.
std::string messageOf(PGconn* connection)
{
    const Options used(PQconninfo(connection), &PQconninfoFree);
    const std::string authorities = valueOf(used, "sslrootcert");
    return Poco::replace(
        std::string(PQerrorMessage(connection)), std::string("certificate verify failed"),
        "certificate verify failed, expected a valid certificate of an authority in " +
            (authorities.empty() ? "~/.postgresql/root.crt" : authorities));
}

PostgresqlHandle connectionOf(const std::vector<std::pair<std::string, std::string>>& settings)
{
    std::vector<const char*> keys;
    std::vector<const char*> values;
    for (const auto& setting : settings) {
        keys.push_back(setting.first.c_str());
        values.push_back(setting.second.c_str());
    }
    keys.push_back(nullptr);
    values.push_back(nullptr);
    return {PQconnectdbParams(keys.data(), values.data(), 0), &PQfinish};
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

// The last value of a key counts.
std::vector<PostgresqlWords::Setting> PostgresqlWords::settings(Access access) const
{
    std::vector<Setting> settings = {{"fallback_application_name", "device-database"}};
    if (valueOrDefault("connect_timeout").empty()) {
        settings.push_back({"connect_timeout", "10"}); // seconds, for each host
    }
    if (nameSeveralHosts()) {
        settings.insert(settings.end(), noticeOfALostHost.begin(), noticeOfALostHost.end());
    }
    for (const Word& word : words) {
        settings.emplace_back(word.key, word.value);
    }
    settings.push_back({"client_encoding", "UTF8"});
    if (access == Access::Change) {
        settings.push_back({"target_session_attrs", "read-write"});
    }
    return settings;
}

// libpq gives up at a host that ends the connection at once, as a server does that is being
// stopped: the others are tried without it.
PostgresqlHandle PostgresqlWords::connect(Access access) const
{
    std::vector<Setting> wanted = settings(access);
    std::vector<std::string> reasons;
    for (;;) {
        PostgresqlHandle connection = connectionOf(wanted);
        if (PQstatus(connection.get()) == CONNECTION_OK) {
            return connection;
        }
        const std::string message = messageOf(connection.get());
        PostgresqlHosts hosts = hostsOf(connection.get());
        const auto further = hosts.areSeveral() || !reasons.empty()
                                 ? reasonsOfHosts(message)
                                 : std::vector<std::string>{postgresqlReason(message)};
        if (!hosts.remove(connection.get())) {
            reasons.insert(reasons.end(), further.begin(), further.end());
            break;
        }
        reasons.push_back(further.back());
        const auto left = hosts.settings();
        wanted.insert(wanted.end(), left.begin(), left.end());
    }
    throw SqlFailure(
        (access == Access::Change ? "no server accepts changes: " : "") +
            withoutPasswords(Poco::cat(std::string("; "), reasons.begin(), reasons.end())),
        SqlFailure::Concern::Connection);
}

bool PostgresqlWords::nameSeveralHosts() const
{
    return PostgresqlHosts(valueOrDefault("host"), valueOrDefault("hostaddr"), "").areSeveral();
}

Access PostgresqlWords::accessToOpen(OpenMode mode) const
{
    return mode == OpenMode::CreateMissing && nameSeveralHosts() && readersOnly().empty()
               ? Access::Change
               : Access::Read;
}

std::string PostgresqlWords::readersOnly() const
{
    const std::string wanted = valueOrDefault("target_session_attrs");
    return wanted == "standby" || wanted == "read-only" ? wanted : "";
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
    return valueOf(Options(PQconndefaults(), &PQconninfoFree), key);
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
