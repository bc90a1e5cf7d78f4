#include "ContentTables.h"

#include "RecordRow.h"

#include <Poco/Data/Statement.h>
#include <Poco/Exception.h>
#include <Poco/UTF8Encoding.h>
#include <Poco/UTF8String.h>

namespace devices::database {

using namespace Poco::Data::Keywords;

namespace {

// 0 for a byte that begins no character.
std::size_t lengthOfCharacter(unsigned char lead)
{
    if (lead < 0x80) {
        return lead == 0 ? 0 : 1;
    }
    if (lead < 0xC0) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// PostgreSQL refuses such texts and SQLite does not: the rule is here, for both.
const std::string& readable(const std::string& text)
{
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = lengthOfCharacter(bytes[at]);
        if (length == 0 || length > text.size() - at ||
            !Poco::UTF8Encoding::isLegal(bytes + at, static_cast<int>(length))) {
            throw Poco::DataFormatException("byte " + std::to_string(at + 1) + " of a text of " +
                                            std::to_string(text.size()) +
                                            " bytes in the catalogue is no UTF-8 without NUL");
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

using Value = RowSql::Value;

const Value asText = {"?", false};

RowSql moduleDeletion(const SqlDialect& dialect)
{
    const Value key = bytesValue(dialect);
    return {
        "DELETE FROM modules WHERE (record_family, record_module_id) IN (VALUES ", {key, key}, ")"};
}

RowSql moduleInsertion(const SqlDialect& dialect)
{
    const Value key = bytesValue(dialect);
    return {"INSERT INTO modules (family, module, record_family, record_module_id, label,"
            " order_code, in_bytes, out_bytes, search_text) VALUES ",
            {asText, asText, key, key, asText, asText, asText, asText, asText},
            ""};
}

const RowSql channelInsertion = {
    "INSERT INTO channels (family, module, position, number, name, direction, size_letter, symbol)"
    " VALUES ",
    std::vector<Value>(8, asText), ""};

const RowSql parameterInsertion = {
    "INSERT INTO parameters (family, module, position, name, channel, width_bits, default_value,"
    " minimum, maximum, unit) VALUES ",
    {asText,
     asText,
     asText,
     asText,
     {"CAST(nullif(?, '') AS INTEGER)", false},
     asText,
     asText,
     asText,
     asText,
     asText},
    ""};

const RowSql optionInsertion = {
    "INSERT INTO options (family, module, parameter_position, position, text, value) VALUES ",
    std::vector<Value>(6, asText), ""};

std::vector<RowStatement::Row> channelRows(const std::string& family, const std::string& module,
                                           const ModuleContent& content)
{
    std::vector<RowStatement::Row> rows;
    for (const ModuleContent::Channel& channel : content.channels) {
        rows.push_back({family, module, std::to_string(rows.size()), std::to_string(channel.number),
                        readable(channel.name), readable(channel.direction),
                        readable(channel.sizeLetter), readable(channel.symbol)});
    }
    return rows;
}

std::vector<RowStatement::Row> parameterRows(const std::string& family, const std::string& module,
                                             const ModuleContent& content)
{
    std::vector<RowStatement::Row> rows;
    for (const ModuleContent::Parameter& parameter : content.parameters) {
        rows.push_back({family, module, std::to_string(rows.size()), readable(parameter.name),
                        parameter.channel ? std::to_string(*parameter.channel) : "",
                        std::to_string(parameter.widthBits), readable(parameter.defaultValue),
                        readable(parameter.minimum), readable(parameter.maximum),
                        readable(parameter.unit)});
    }
    return rows;
}

std::vector<RowStatement::Row> optionRows(const std::string& family, const std::string& module,
                                          const ModuleContent& content)
{
    std::vector<RowStatement::Row> rows;
    for (std::size_t parameter = 0; parameter < content.parameters.size(); ++parameter) {
        std::size_t position = 0;
        for (const ModuleContent::Option& option : content.parameters[parameter].options) {
            rows.push_back({family, module, std::to_string(parameter), std::to_string(position++),
                            readable(option.text), readable(option.value)});
        }
    }
    return rows;
}

} // namespace

ContentTables::ContentTables(const SqlDialect& dialect, const MakeRowStatement& make)
    : deletion(make(moduleDeletion(dialect))),
      modules(make(moduleInsertion(dialect))),
      channels(make(channelInsertion)),
      parameters(make(parameterInsertion)),
      options(make(optionInsertion))
{}

void ContentTables::remove(const DeviceProperties& record)
{
    deletion->execute({{record.family, record.moduleIdText}});
}

void ContentTables::insert(const DeviceProperties& record, const ModuleContent& content)
{
    const std::string& family = readable(record.family);
    const std::string& module = readable(record.moduleIdText);
    const RowStatement::Row moduleRow = {family,
                                         module,
                                         family,
                                         module,
                                         readable(content.label),
                                         readable(content.orderCode),
                                         std::to_string(record.inDataSize),
                                         std::to_string(record.outDataSize),
                                         searchText(content)};
    modules->execute({moduleRow});
    channels->execute(channelRows(family, module, content));
    parameters->execute(parameterRows(family, module, content));
    options->execute(optionRows(family, module, content));
}

namespace {

// The module whose content is read, in the form that a statement binds.
struct ModuleKey
{
    std::string family;
    std::string module;
};

constexpr const char* ofKey = " WHERE family = $1 AND module = $2 ORDER BY ";

void readChannels(Poco::Data::Session& session, ModuleKey& key, ModuleContent& content)
{
    std::vector<unsigned> number;
    std::vector<std::string> name;
    std::vector<std::string> direction;
    std::vector<std::string> sizeLetter;
    std::vector<std::string> symbol;
    session << std::string("SELECT number, name, direction, size_letter, symbol FROM channels") +
                   ofKey + "position",
        use(key.family), use(key.module), into(number), into(name), into(direction),
        into(sizeLetter), into(symbol), now;
    for (std::size_t i = 0; i < number.size(); ++i) {
        content.channels.push_back({number[i], name[i], direction[i], sizeLetter[i], symbol[i]});
    }
}

void readParameters(Poco::Data::Session& session, ModuleKey& key, ModuleContent& content)
{
    std::vector<std::string> name;
    std::vector<int> channel;
    std::vector<unsigned> width;
    std::vector<std::string> defaultValue;
    std::vector<std::string> minimum;
    std::vector<std::string> maximum;
    std::vector<std::string> unit;
    session << std::string("SELECT name, coalesce(channel, -1), width_bits, default_value, minimum,"
                           " maximum, unit FROM parameters") +
                   ofKey + "position",
        use(key.family), use(key.module), into(name), into(channel), into(width),
        into(defaultValue), into(minimum), into(maximum), into(unit), now;
    for (std::size_t i = 0; i < name.size(); ++i) {
        ModuleContent::Parameter parameter;
        parameter.name = name[i];
        if (channel[i] >= 0) {
            parameter.channel = static_cast<unsigned>(channel[i]);
        }
        parameter.widthBits = width[i];
        parameter.defaultValue = defaultValue[i];
        parameter.minimum = minimum[i];
        parameter.maximum = maximum[i];
        parameter.unit = unit[i];
        content.parameters.push_back(std::move(parameter));
    }
}

void readOptions(Poco::Data::Session& session, ModuleKey& key, ModuleContent& content)
{
    std::vector<unsigned> parameter;
    std::vector<std::string> text;
    std::vector<std::string> value;
    session << std::string("SELECT parameter_position, text, value FROM options") + ofKey +
                   "parameter_position, position",
        use(key.family), use(key.module), into(parameter), into(text), into(value), now;
    for (std::size_t i = 0; i < parameter.size(); ++i) {
        content.parameters.at(parameter[i]).options.push_back({text[i], value[i]});
    }
}

} // namespace

std::optional<ModuleContent> readContent(Poco::Data::Session& session, const std::string& family,
                                         const std::string& moduleId)
{
    ModuleKey key{family, moduleId};
    std::vector<std::string> label;
    std::vector<std::string> orderCode;
    session << "SELECT label, order_code FROM modules WHERE family = $1 AND module = $2",
        use(key.family), use(key.module), into(label), into(orderCode), now;
    if (label.empty()) {
        return std::nullopt;
    }
    ModuleContent content;
    content.label = label.front();
    content.orderCode = orderCode.front();
    readChannels(session, key, content);
    readParameters(session, key, content);
    readOptions(session, key, content);
    return content;
}

std::string foldedText(const std::string& text)
{
    return Poco::UTF8::toLower(text);
}

} // namespace devices::database
