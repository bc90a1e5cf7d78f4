#include "BareSqliteLoop.h"

#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>

namespace bench {

namespace {

class Database
{
public:
    explicit Database(const std::string& path)
    {
        check(sqlite3_open(path.c_str(), &handle));
        run("PRAGMA foreign_keys = ON");
        run("PRAGMA synchronous = EXTRA");
        run("PRAGMA cache_size = -65536");
    }
    ~Database() { sqlite3_close(handle); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void run(const char* sql) { check(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr)); }

    void check(int result)
    {
        if (result != SQLITE_OK && result != SQLITE_DONE) {
            throw std::runtime_error(sqlite3_errmsg(handle));
        }
    }

    sqlite3* handle = nullptr;
};

// A statement whose values are bound in order.
class Insertion
{
public:
    Insertion(Database& inDatabase, const char* sql) : database(inDatabase)
    {
        database.check(sqlite3_prepare_v2(database.handle, sql, -1, &statement, nullptr));
    }
    ~Insertion() { sqlite3_finalize(statement); }
    Insertion(const Insertion&) = delete;
    Insertion& operator=(const Insertion&) = delete;

    Insertion& text(const std::string& value)
    {
        sqlite3_bind_text(statement, ++bound, value.data(), static_cast<int>(value.size()),
                          SQLITE_STATIC);
        return *this;
    }
    Insertion& bytes(const char* data, std::size_t size)
    {
        sqlite3_bind_blob(statement, ++bound, size == 0 ? "" : data, static_cast<int>(size),
                          SQLITE_STATIC);
        return *this;
    }
    Insertion& bytes(const std::string& value) { return bytes(value.data(), value.size()); }
    Insertion& bytes(const std::vector<char>& value) { return bytes(value.data(), value.size()); }
    Insertion& number(std::int64_t value)
    {
        sqlite3_bind_int64(statement, ++bound, value);
        return *this;
    }
    void insert()
    {
        database.check(sqlite3_step(statement));
        sqlite3_reset(statement);
        bound = 0;
    }

private:
    Database& database;
    sqlite3_stmt* statement = nullptr;
    int bound = 0;
};

// The last column is the version of the schema.
constexpr const char* recordSql = "INSERT INTO device_properties VALUES (?,?,?,?,?,?,?,?,?,?,4)";

struct Insertions
{
    explicit Insertions(Database& database)
        : record(database, recordSql),
          module(database, "INSERT INTO modules VALUES (?,?,?,?,?,?,?,?,?)"),
          channel(database, "INSERT INTO channels VALUES (?,?,?,?,?,?,?,?)"),
          parameter(database, "INSERT INTO parameters VALUES (?,?,?,?,?,?,?,?,?,?)"),
          option(database, "INSERT INTO options VALUES (?,?,?,?,?,?)")
    {}

    Insertion record;
    Insertion module;
    Insertion channel;
    Insertion parameter;
    Insertion option;
};

std::string searchText(const devices::database::ModuleContent& content)
{
    std::string text = content.label + "\n" + content.orderCode;
    for (const auto& channel : content.channels) {
        text += "\n" + channel.name;
    }
    for (const auto& parameter : content.parameters) {
        text += "\n" + parameter.name;
    }
    return text;
}

void insertOptions(Insertions& into, const std::string& family, const std::string& id,
                   int parameter,
                   const std::vector<devices::database::ModuleContent::Option>& options)
{
    int position = 0;
    for (const auto& option : options) {
        into.option.text(family).text(id).number(parameter).number(position++).text(option.text);
        into.option.text(option.value).insert();
    }
}

void insertRecord(Insertion& into, const devices::database::DeviceProperties& record,
                  const std::vector<char>& mxFileData)
{
    into.bytes(record.family).bytes(record.moduleIdText).bytes(record.brandLabelName);
    into.bytes(record.text4).bytes(record.text5).bytes(*record.hostBytes).bytes(mxFileData);
    into.bytes(*record.defaultParameterBlock).number(record.inDataSize);
    into.number(record.outDataSize).insert();
}

void insertModule(Insertions& into, const GeneratedModules::Module& module)
{
    const auto& record = module.record;
    const auto& content = module.content;
    const std::string& family = record.family;
    const std::string& id = record.moduleIdText;
    insertRecord(into.record, record, *record.mxFileData);
    const std::string search = searchText(content);
    into.module.text(family).text(id).bytes(family).bytes(id).text(content.label);
    into.module.text(content.orderCode).number(record.inDataSize).number(record.outDataSize);
    into.module.text(search).insert();
    int position = 0;
    for (const auto& channel : content.channels) {
        into.channel.text(family).text(id).number(position++).number(channel.number);
        into.channel.text(channel.name).text(channel.direction).text(channel.sizeLetter);
        into.channel.text(channel.symbol).insert();
    }
    position = 0;
    for (const auto& parameter : content.parameters) {
        into.parameter.text(family).text(id).number(position).text(parameter.name);
        into.parameter.number(parameter.channel.value_or(255)).number(parameter.widthBits);
        into.parameter.text(parameter.defaultValue).text(parameter.minimum);
        into.parameter.text(parameter.maximum).text(parameter.unit).insert();
        insertOptions(into, family, id, position++, parameter.options);
    }
}

// The bytes followed by 0xFF, as in a record.
std::vector<char> readWithOneCall(const std::string& path)
{
    std::vector<char> bytes(std::filesystem::file_size(path) + 1, '\xFF');
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    if (file == nullptr ||
        std::fread(bytes.data(), 1, bytes.size() - 1, file.get()) != bytes.size() - 1) {
        throw std::runtime_error("cannot read " + path);
    }
    return bytes;
}

} // namespace

void bareSqliteLoop(const std::string& path, const std::vector<GeneratedModules::Module>& modules)
{
    Database database(path);
    database.run("BEGIN IMMEDIATE");
    {
        Insertions insertions(database);
        for (const GeneratedModules::Module& module : modules) {
            insertModule(insertions, module);
        }
    }
    database.run("COMMIT");
}

void bareSqliteRecordLoop(const std::string& path, const std::vector<std::string>& files,
                          const std::vector<GeneratedModules::Module>& modules)
{
    Database database(path);
    database.run("BEGIN IMMEDIATE");
    {
        Insertion insertion(database, recordSql);
        for (std::size_t module = 0; module < modules.size(); ++module) {
            insertRecord(insertion, modules[module].record, readWithOneCall(files[module]));
        }
    }
    database.run("COMMIT");
}

} // namespace bench
