#include "ContentTables.h"

#include "RecordRow.h"

#include <datamodel/Utf8Text.h>

#include <Poco/UTF8String.h>

#include <algorithm>

namespace devices::database {

namespace {

bool isAscii(char byte)
{
    return static_cast<signed char>(byte) >= 0;
}

// PostgreSQL rejects such texts and SQLite does not: this applies the rule to both.
const std::string& readable(const std::string& text)
{
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = text[at] == '\0' ? 0 : datamodel::utf8CharacterLength(text, at);
        if (length == 0) {
            throw SqlFailure("byte " + std::to_string(at + 1) + " of a text of " +
                             std::to_string(text.size()) +
                             " bytes in the catalogue is not UTF-8 without NUL");
        }
        at += length;
    }
    return text;
}

std::string searchText(const ModuleContent& content)
{
    std::string text = content.label + "\n" + content.orderCode;
    for (const ModuleContent::Channel& channel : content.channels) {
        text += "\n" + channel.name;
    }
    for (const ModuleContent::Parameter& parameter : content.parameters) {
        text += "\n" + parameter.name;
    }
    return foldedText(text);
}

constexpr auto bytesCell = CellType::Bytes;
constexpr auto textCell = CellType::Text;
constexpr auto numberCell = CellType::Number;

RowSql moduleDeletion()
{
    return {"DELETE FROM modules WHERE (record_family, record_module_id) IN (",
            {bytesCell, bytesCell},
            ")"};
}

RowSql moduleInsertion()
{
    return {"INSERT INTO modules (family, module, record_family, record_module_id, label,"
            " order_code, in_bytes, out_bytes, search_text) ",
            {textCell, textCell, bytesCell, bytesCell, textCell, textCell, numberCell, numberCell,
             textCell},
            ""};
}

RowSql channelInsertion()
{
    return {"INSERT INTO channels (family, module, position, number, name, direction, size_letter,"
            " symbol) ",
            {textCell, textCell, numberCell, numberCell, textCell, textCell, textCell, textCell},
            ""};
}

RowSql parameterInsertion()
{
    return {"INSERT INTO parameters (family, module, position, name, channel, width_bits,"
            " default_value, minimum, maximum, unit) ",
            {textCell, textCell, numberCell, textCell, CellType::NumberOrNull, numberCell, textCell,
             textCell, textCell, textCell},
            ""};
}

RowSql optionInsertion()
{
    return {"INSERT INTO options (family, module, parameter_position, position, text, value) ",
            {textCell, textCell, numberCell, numberCell, textCell, textCell},
            ""};
}

using Rows = std::vector<RowStatement::Row>;

void addModuleRow(const ModuleToStore& module, Rows& rows)
{
    const std::string& family = readable(module.record->family);
    const std::string& id = readable(module.record->moduleIdText);
    const ModuleContent& content = *module.content;
    rows.push_back({family, id, family, id, readable(content.label), readable(content.orderCode),
                    std::to_string(module.record->inDataSize),
                    std::to_string(module.record->outDataSize), searchText(content)});
}

void addChannelRows(const ModuleToStore& module, Rows& rows)
{
    std::size_t position = 0;
    for (const ModuleContent::Channel& channel : module.content->channels) {
        rows.push_back({module.record->family, module.record->moduleIdText,
                        std::to_string(position++), std::to_string(channel.number),
                        readable(channel.name), readable(channel.direction),
                        readable(channel.sizeLetter), readable(channel.symbol)});
    }
}

void addParameterRows(const ModuleToStore& module, Rows& rows)
{
    std::size_t position = 0;
    for (const ModuleContent::Parameter& parameter : module.content->parameters) {
        rows.push_back(
            {module.record->family, module.record->moduleIdText, std::to_string(position++),
             readable(parameter.name), parameter.channel ? std::to_string(*parameter.channel) : "",
             std::to_string(parameter.widthBits), readable(parameter.defaultValue),
             readable(parameter.minimum), readable(parameter.maximum), readable(parameter.unit)});
    }
}

void addOptionRows(const ModuleToStore& module, Rows& rows)
{
    const auto& parameters = module.content->parameters;
    for (std::size_t parameter = 0; parameter < parameters.size(); ++parameter) {
        std::size_t position = 0;
        for (const ModuleContent::Option& option : parameters[parameter].options) {
            rows.push_back({module.record->family, module.record->moduleIdText,
                            std::to_string(parameter), std::to_string(position++),
                            readable(option.text), readable(option.value)});
        }
    }
}

// The rows that `add` makes of the modules with content.
Rows rowsOf(const std::vector<ModuleToStore>& modules,
            void (*add)(const ModuleToStore& module, Rows& rows))
{
    Rows rows;
    for (const ModuleToStore& module : modules) {
        if (module.content != nullptr) {
            add(module, rows);
        }
    }
    return rows;
}

} // namespace

ContentTables::ContentTables(SqlConnection& connection)
    : deletion(connection.makeRowStatement(moduleDeletion())),
      moduleRows(connection.makeRowStatement(moduleInsertion())),
      channelRows(connection.makeRowStatement(channelInsertion())),
      parameterRows(connection.makeRowStatement(parameterInsertion())),
      optionRows(connection.makeRowStatement(optionInsertion()))
{}

void ContentTables::replace(const std::vector<ModuleToStore>& modules)
{
    deletion->execute(keysOf(modules));
    moduleRows->execute(rowsOf(modules, addModuleRow));
    channelRows->execute(rowsOf(modules, addChannelRows));
    parameterRows->execute(rowsOf(modules, addParameterRows));
    optionRows->execute(rowsOf(modules, addOptionRows));
}

namespace {

using Row = SqlConnection::Row;
using Key = std::vector<SqlParameter>;

constexpr const char* ofKey = " WHERE family = $1 AND module = $2 ORDER BY ";

unsigned toNumber(const std::string& decimal)
{
    return static_cast<unsigned>(numberOf(decimal));
}

void readChannels(SqlConnection& connection, const Key& key, ModuleContent& content)
{
    const std::string select = "SELECT number, name, direction, size_letter, symbol FROM channels" +
                               std::string(ofKey) + "position";
    connection.query(select, key, 5, [&](const Row& row) {
        content.channels.push_back({toNumber(row[0]), row[1], row[2], row[3], row[4]});
    });
}

void readParameters(SqlConnection& connection, const Key& key, ModuleContent& content)
{
    const std::string select =
        "SELECT name, coalesce(CAST(channel AS TEXT), ''), width_bits, default_value, minimum,"
        " maximum, unit FROM parameters" +
        std::string(ofKey) + "position";
    connection.query(select, key, 7, [&](const Row& row) {
        ModuleContent::Parameter parameter;
        parameter.name = row[0];
        if (!row[1].empty()) {
            parameter.channel = toNumber(row[1]);
        }
        parameter.widthBits = toNumber(row[2]);
        parameter.defaultValue = row[3];
        parameter.minimum = row[4];
        parameter.maximum = row[5];
        parameter.unit = row[6];
        content.parameters.push_back(std::move(parameter));
    });
}

void readOptions(SqlConnection& connection, const Key& key, ModuleContent& content)
{
    const std::string select = "SELECT parameter_position, text, value FROM options" +
                               std::string(ofKey) + "parameter_position, position";
    connection.query(select, key, 3, [&](const Row& row) {
        const unsigned parameter = toNumber(row[0]);
        if (parameter >= content.parameters.size()) {
            throw SqlFailure("an option belongs to parameter " + row[0] + ", the module has " +
                             std::to_string(content.parameters.size()));
        }
        content.parameters[parameter].options.push_back({row[1], row[2]});
    });
}

} // namespace

std::optional<ModuleContent> readContent(SqlConnection& connection, const std::string& family,
                                         const std::string& moduleId)
{
    const Key key = {{family, false}, {moduleId, false}};
    std::optional<ModuleContent> content;
    connection.query("SELECT label, order_code FROM modules WHERE family = $1 AND module = $2", key,
                     2, [&](const Row& row) {
                         content.emplace();
                         content->label = row[0];
                         content->orderCode = row[1];
                     });
    if (content) {
        readChannels(connection, key, *content);
        readParameters(connection, key, *content);
        readOptions(connection, key, *content);
    }
    return content;
}

// Only characters beyond ASCII need the Unicode tables, whose lookup is slow.
std::string foldedText(const std::string& text)
{
    std::string folded;
    for (auto at = text.begin(); at != text.end();) {
        const auto end = std::find_if(at, text.end(), isAscii);
        folded += at == end ? "" : Poco::UTF8::toLower(std::string(at, end));
        for (at = end; at != text.end() && isAscii(*at); ++at) {
            folded += *at >= 'A' && *at <= 'Z' ? static_cast<char>(*at - 'A' + 'a') : *at;
        }
    }
    return folded;
}

} // namespace devices::database
