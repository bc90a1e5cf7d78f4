#include "ContentTables.h"

#include "RecordRow.h"

#include <datamodel/Utf8Text.h>

#include <Poco/UTF8String.h>

#include <algorithm>
#include <iterator>

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

constexpr auto keyCell = CellType::Bytes;
constexpr auto textCell = CellType::Text;
constexpr auto integerCell = CellType::Number;

RowSql moduleDeletion()
{
    return {"DELETE FROM modules WHERE (record_family, record_module_id) IN (",
            {keyCell, keyCell},
            ")"};
}

RowSql moduleInsertion()
{
    return {"INSERT INTO modules (family, module, record_family, record_module_id, label,"
            " order_code, in_bytes, out_bytes, search_text) ",
            {textCell, textCell, keyCell, keyCell, textCell, textCell, integerCell, integerCell,
             textCell},
            ""};
}

RowSql channelInsertion()
{
    return {"INSERT INTO channels (family, module, position, number, name, direction, size_letter,"
            " symbol) ",
            {textCell, textCell, integerCell, integerCell, textCell, textCell, textCell, textCell},
            ""};
}

RowSql parameterInsertion()
{
    return {"INSERT INTO parameters (family, module, position, name, channel, width_bits,"
            " default_value, minimum, maximum, unit) ",
            {textCell, textCell, integerCell, textCell, CellType::NumberOrNull, integerCell,
             textCell, textCell, textCell, textCell},
            ""};
}

RowSql optionInsertion()
{
    return {"INSERT INTO options (family, module, parameter_position, position, text, value) ",
            {textCell, textCell, integerCell, integerCell, textCell, textCell},
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

namespace {

std::vector<std::unique_ptr<RowStatement>> partDeletionsOf(SqlConnection& connection)
{
    std::vector<std::unique_ptr<RowStatement>> deletions;
    if (connection.dialect().dropContentKeys != nullptr) {
        for (const std::string table : {"options", "parameters", "channels"}) {
            deletions.push_back(connection.makeRowStatement(
                {"DELETE FROM " + table + " WHERE (family, module) IN (",
                 {CellType::Text, CellType::Text},
                 ")"}));
        }
    }
    return deletions;
}

} // namespace

bool isReadable(const std::string& text)
{
    return text.find('\0') == std::string::npos && datamodel::isUtf8(text);
}

ContentTables::ContentTables(SqlConnection& connection)
    : partDeletions(partDeletionsOf(connection)),
      deletion(connection.makeRowStatement(moduleDeletion())),
      moduleRows(connection.makeRowStatement(moduleInsertion())),
      channelRows(connection.makeRowStatement(channelInsertion())),
      parameterRows(connection.makeRowStatement(parameterInsertion())),
      optionRows(connection.makeRowStatement(optionInsertion()))
{}

void ContentTables::replace(const std::vector<ModuleToStore>& modules)
{
    removeParts(keysOf(modules));
    deletion->execute(keysOf(modules));
    moduleRows->execute(rowsOf(modules, addModuleRow));
    channelRows->execute(rowsOf(modules, addChannelRows));
    parameterRows->execute(rowsOf(modules, addParameterRows));
    optionRows->execute(rowsOf(modules, addOptionRows));
}

// By the keys themselves, not by the modules that there are: a library of version 3 that had the
// database open may have removed those. A module of other keys has no content.
void ContentTables::removeParts(const std::vector<RowStatement::Row>& keys)
{
    std::vector<RowStatement::Row> ofContent;
    std::copy_if(
        keys.begin(), keys.end(), std::back_inserter(ofContent),
        [](const RowStatement::Row& key) { return isReadable(key[0]) && isReadable(key[1]); });
    for (const auto& partDeletion : partDeletions) {
        partDeletion->execute(ofContent);
    }
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
