#include "devices/parser/mx/ByteReaders.h"
#include "devices/parser/mx/Parser_kv38.h"

#include "LogLine.h"
#include "RecordLayout.h"

#include <mxfileext/mxfileext.h>

#include <array>
#include <cassert>
#include <charconv>
#include <limits>
#include <stdexcept>
#include <utility>

namespace devices::parser::mx {

namespace {

constexpr std::uint8_t blockPositionBias = 4; // a record counts positions from 4

constexpr std::uint8_t showMeFlag0 = 0x01;
constexpr std::uint8_t showMeFlag1 = 0x02;
constexpr std::uint8_t showMeConverted = 0x04;

constexpr std::uint16_t optionGroup = 0x20C1;
constexpr std::uint32_t optionListHeaderSize = 2; // identifier and number of options
constexpr std::uint32_t optionSize = 10;          // 8-byte value and text identifier

// The text that "%f" gives in the C locale, whatever the host's locale is.
std::string fixedText(float value)
{
    constexpr int decimals = 6;
    constexpr int otherCharacters = 4; // sign, first digit, point and one to spare
    std::array<char, std::numeric_limits<float>::max_exponent10 + decimals + otherCharacters> text;
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                            std::chars_format::fixed, decimals);
    assert(error == std::errc());
    return {text.data(), end};
}

// Value and range in physical units. The parameter keeps its range object.
void readConverted(Parser_kv38::ParameterP& parameter, char* block, std::uint16_t blockSize)
{
    float value = 0;
    float min = 0;
    float max = 0;
    std::string unit;
    if (blockSize != 0) {
        // The companion's signature asks for writable bytes; the record is only read.
        mxfileext::getConvertedParameter(0, reinterpret_cast<unsigned char*>(block),
                                         const_cast<unsigned char*>(parameter.privateProps.record),
                                         &value, &min, &max, unit);
    }
    parameter.value = fixedText(value);
    parameter.valueRange->min = fixedText(min);
    parameter.valueRange->max = fixedText(max);
    parameter.unit = unit;
}

// Value and range as decimal texts of the raw numbers.
void readRaw(Parser_kv38::ParameterP& parameter, const char* block)
{
    mxfileext::ParameterValue_t value{};
    mxfileext::getParameterValue(parameter.privateProps.record,
                                 reinterpret_cast<const unsigned char*>(block), &value);
    mxfileext::parameterValueToString(value, parameter.value, parameter.valueRange->min,
                                      parameter.valueRange->max);
}

// Makes room for a first list at once; further ones of the same identifier are rare.
void reserveOptions(Parser_kv38::ParameterP& parameter, std::size_t count)
{
    if (parameter.options.empty()) {
        parameter.options.reserve(count);
        parameter.privateProps.optionValues.reserve(count);
    }
}

} // namespace

std::uint32_t Parser_kv38::parseParameter(const std::uint8_t* x20C0)
{
    traceEntry(logger, "parseParameter");
    assert(this->dev);
    assert(x20C0);
    const std::uint8_t number = readU8(x20C0);
    const auto datatype = static_cast<MxParameterDatatype>(readU8(x20C0 + 4));
    const std::uint8_t showMe = readU8(x20C0 + 5);
    const std::uint8_t mapId = readU8(x20C0 + 7);
    const std::uint16_t unitTextId = readU16BE(x20C0 + 24);

    auto parameter = std::make_shared<ParameterP>();
    MxParameterPrivateProps& props = parameter->privateProps;
    props.byteOffset = static_cast<std::uint8_t>(readU8(x20C0 + 3) - blockPositionBias);
    props.dataSize = static_cast<std::uint8_t>(getDatatypeSize(datatype) >> 3);
    if (datatype == MxParameterDatatype::Byte) {
        props.bitLength = readU8(x20C0 + 26);
        props.bitOffset = readU8(x20C0 + 27);
    }
    parameter->name = getTextStringById(readU16BE(x20C0 + 1));
    parameter->flagBit0 = (showMe & showMeFlag0) != 0;
    parameter->flagBit1 = (showMe & showMeFlag1) != 0;
    props.channelNumber = readU8(x20C0 + 28);
    props.record = x20C0;

    if ((showMe & showMeConverted) != 0) {
        logLine(logger, Poco::Message::PRIO_DEBUG, "showMe = %i, mapId = %i", int{showMe},
                int{mapId});
        readConverted(*parameter, paramBuffer, paramBufferSize);
        logLine(logger, Poco::Message::PRIO_DEBUG,
                "%s: Parameter %i (%s): value = %s, min = %s, max = %s, unit = [%s]", mxVersion,
                int{number}, parameter->name, parameter->value, parameter->valueRange->min,
                parameter->valueRange->max, parameter->unit);
    } else if (mapId != 0) {
        parameter->hasOptionList = true;
        getOptionListById(mapId, datatype, parameter.get());
        if (paramBufferSize != 0) {
            readRaw(*parameter, paramBuffer);
        }
    } else {
        readRaw(*parameter, paramBuffer);
    }

    if (unitTextId != 0) {
        parameter->unit = getTextStringById(unitTextId);
    }
    assignIdAndAddAttribute(std::move(parameter));
    return parameterRecordSize;
}

void Parser_kv38::getOptionListById(std::uint8_t listId, MxParameterDatatype datatype,
                                    ParameterP* param)
{
    traceEntry(logger, "getOptionListById");
    assert(param);
    param->options.clear();

    std::uint32_t size = 0;
    const std::uint8_t* payload = getGroup(optionGroup, &size);
    if (payload == nullptr) {
        throw std::runtime_error("Cannot find group 20c1");
    }
    // Every list with the identifier counts, not only the first.
    for (std::uint32_t pos = 0; pos + 1 < size;) {
        const std::uint32_t next =
            pos + optionListHeaderSize + optionSize * readU8(payload + pos + 1);
        if (next > size) {
            throw std::runtime_error("Bad alignment in group 20c1");
        }
        if (readU8(payload + pos) == listId) {
            reserveOptions(*param, readU8(payload + pos + 1));
            for (std::uint32_t at = pos + optionListHeaderSize; at < next; at += optionSize) {
                const std::uint8_t* entry = payload + at;
                auto option = std::make_shared<datamodel::ParameterOption>();
                option->text = getTextStringById(readU16BE(entry + 8));
                option->value = kv38ParameterValueToString(entry, datatype);
                param->privateProps.optionValues.push_back(readU8(entry + 7));
                param->options.push_back(std::move(option));
            }
        }
        pos = next;
    }
}

} // namespace devices::parser::mx
