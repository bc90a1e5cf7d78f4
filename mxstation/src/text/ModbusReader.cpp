#include "text/ModbusReader.h"

#include "text/ModbusWords.h"

#include <fmt/format.h>
#include <text/Beginning.h>

namespace mxstation {

namespace {

using KeyNames = std::vector<std::string>;

const KeyNames modbusKeys = {"unit",    "inputs",    "outputs",      "parameters", "identity",
                             "commit",  "most_read", "most_written", "words",      "bytes",
                             "timeout", "busy",      "retries"};

// Reads the statements of a map into what it describes. A value that is no map is an error.
class ModbusStatements
{
public:
    ModbusStatements(const YamlNode& map, const std::string& called, const KeyNames& keys,
                     StationErrors& collected)
        : node(map), section(map, "key of " + called, keys, collected), errors(collected)
    {
        if (node.kind != YamlNode::Kind::Map) {
            errors.add(node.place,
                       fmt::format("found {}, expected a map of the keys {}", node.shown(),
                                   text::beginningOfList(keys, keys.size(), ", ", ", ")));
        }
    }

    template <typename Number>
    void number(const std::string& key, const NumberLimits& limits, Number& value) const
    {
        if (const YamlNode* const stated = section.find(key)) {
            value = static_cast<Number>(
                readNumber(*stated, limits.least, limits.most, errors).value_or(value));
        }
    }

    void function(const std::string& key, const std::vector<std::uint32_t>& functions,
                  std::uint8_t& value) const
    {
        if (const YamlNode* const stated = section.find(key)) {
            const auto code = readOneOf(*stated, "function code", functions, errors);
            value = static_cast<std::uint8_t>(code.value_or(value));
        }
    }

    // Whether the second of two words is stated.
    bool isSecond(const std::string& key, const std::string& what, const KeyNames& words) const
    {
        const YamlNode* const stated = section.find(key);
        return stated != nullptr && readWord(*stated, what, words, errors).value_or(0) == 1;
    }

    const YamlNode* find(const std::string& key) const { return section.find(key); }

    // A key that is unknown or without value may be the missing one: that is one error, not two.
    void require(const std::string& key, const std::string& meaning) const
    {
        if (node.kind == YamlNode::Kind::Map && section.find(key) == nullptr &&
            !section.hasIncompleteKeys()) {
            errors.add(node.place, fmt::format("\"{}\" is missing, {}", key, meaning));
        }
    }

private:
    const YamlNode& node;
    YamlSection section;
    StationErrors& errors;
};

PartOrder orderIn(const ModbusStatements& statements, const std::string& key)
{
    return statements.isSecond(key, "order of " + key, partOrderWords) ? PartOrder::Little
                                                                       : PartOrder::Big;
}

void readInputs(const YamlNode& node, ModbusImage& image, StationErrors& errors)
{
    const ModbusStatements statements(node, "inputs", {"address", "read"}, errors);
    statements.number("address", registerLimits, image.address);
    statements.function("read", readFunctions, image.readFunction);
}

void readOutputs(const YamlNode& node, ModbusImage& image, StationErrors& errors)
{
    const ModbusStatements statements(node, "outputs", {"address", "read", "write"}, errors);
    statements.number("address", registerLimits, image.address);
    statements.function("read", readFunctions, image.readFunction);
    statements.function("write", writeFunctions, image.writeFunction);
}

void readParameters(const YamlNode& node, ModbusModuleRegisters& registers, StationErrors& errors)
{
    const ModbusStatements statements(node, "parameters", {"address", "stride"}, errors);
    statements.number("address", registerLimits, registers.address);
    statements.number("stride", strideLimits, registers.stride);
    statements.require("address", "the first parameter register of the first module");
}

ModbusIdentity identityIn(const YamlNode& node, StationErrors& errors)
{
    ModbusIdentity identity;
    identity.stride = 2;
    const ModbusStatements statements(node, "identity", {"address", "stride", "read"}, errors);
    statements.number("address", registerLimits, identity.address);
    statements.number("stride", identityStrideLimits, identity.stride);
    statements.function("read", readFunctions, identity.readFunction);
    statements.require("address", "the first register with the identifier of the first module");
    return identity;
}

ModbusCommit commitIn(const YamlNode& node, StationErrors& errors)
{
    ModbusCommit commit;
    const ModbusStatements statements(node, "commit", {"address", "value", "reads"}, errors);
    statements.number("address", registerLimits, commit.address);
    statements.number("value", valueLimits, commit.value);
    commit.readsAreStaged = !statements.isSecond("reads", "state of parameters", stagedWords);
    statements.require("address", "the register that makes parameters active");
    return commit;
}

void readSections(const ModbusStatements& statements, ModbusMap& map, StationErrors& errors)
{
    if (const YamlNode* const inputs = statements.find("inputs")) {
        readInputs(*inputs, map.inputs, errors);
    }
    if (const YamlNode* const outputs = statements.find("outputs")) {
        readOutputs(*outputs, map.outputs, errors);
    }
    if (const YamlNode* const parameters = statements.find("parameters")) {
        readParameters(*parameters, map.parameters, errors);
    }
    if (const YamlNode* const identity = statements.find("identity")) {
        map.identity = identityIn(*identity, errors);
    }
    if (const YamlNode* const commit = statements.find("commit")) {
        map.commit = commitIn(*commit, errors);
    }
}

} // namespace

ModbusMap readModbus(const YamlNode& node, StationErrors& errors)
{
    ModbusMap map;
    map.parameters.stride = 128;
    const ModbusStatements statements(node, "modbus", modbusKeys, errors);
    readSections(statements, map, errors);
    statements.require("parameters", "the registers of the modules' parameters");
    statements.number("unit", unitLimits, map.unit);
    statements.number("most_read", mostReadLimits, map.mostRead);
    statements.number("most_written", mostWrittenLimits, map.mostWritten);
    map.words = orderIn(statements, "words");
    map.bytes = orderIn(statements, "bytes");
    statements.number("timeout", timeoutLimits, map.timeout);
    statements.number("busy", busyLimits, map.busyTime);
    statements.number("retries", retriesLimits, map.retries);
    return map;
}

} // namespace mxstation
