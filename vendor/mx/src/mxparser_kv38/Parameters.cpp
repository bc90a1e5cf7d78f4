#include "devices/parser/mx/ByteReaders.h"
#include "devices/parser/mx/Parser_kv38.h"

#include "LogLine.h"
#include "ShownValue.h"

#include <mxformat/BlockField.h>
#include <mxformat/Groups.h>
#include <mxformat/OptionRecord.h>

#include <cassert>
#include <stdexcept>
#include <utility>

namespace devices::parser::mx {

namespace {

// Value, range and unit. The parameter keeps its range object.
void readValue(Parser_kv38::ParameterP& parameter, char* block, std::uint16_t blockSize)
{
    ShownValue shown = shownValue(parameter.privateProps.record, block, blockSize);
    parameter.value = std::move(shown.value);
    parameter.valueRange->min = std::move(shown.min);
    parameter.valueRange->max = std::move(shown.max);
    parameter.unit = std::move(shown.unit);
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
    const auto record = mxformat::readRecord<mxformat::ParameterRecord>(x20C0);
    const auto datatype = static_cast<MxParameterDatatype>(record.datatype);

    auto parameter = std::make_shared<ParameterP>();
    MxParameterPrivateProps& props = parameter->privateProps;
    props.byteOffset = mxformat::blockPosition(record.position);
    props.dataSize = static_cast<std::uint8_t>(getDatatypeSize(datatype) >> 3);
    if (datatype == MxParameterDatatype::Byte) {
        props.bitLength = record.bitLength;
        props.bitOffset = record.bitOffset;
    }
    parameter->name = getTextStringById(record.nameId);
    parameter->flagBit0 = (record.flags & mxformat::parameterFlag0) != 0;
    parameter->flagBit1 = (record.flags & mxformat::parameterFlag1) != 0;
    props.channelNumber = record.channel;
    props.record = x20C0;

    if (mxformat::isConverted(record.flags)) {
        logLine(logger, Poco::Message::PRIO_DEBUG, "showMe = %i, mapId = %i", int{record.flags},
                int{record.optionList});
        readValue(*parameter, paramBuffer, paramBufferSize);
        logLine(logger, Poco::Message::PRIO_DEBUG,
                "%s: Parameter %i (%s): value = %s, min = %s, max = %s, unit = [%s]", mxVersion,
                int{record.number}, parameter->name, parameter->value, parameter->valueRange->min,
                parameter->valueRange->max, parameter->unit);
    } else if (record.optionList != 0) {
        parameter->hasOptionList = true;
        getOptionListById(record.optionList, datatype, parameter.get());
        if (paramBufferSize != 0) {
            readValue(*parameter, paramBuffer, paramBufferSize);
        }
    } else {
        readValue(*parameter, paramBuffer, paramBufferSize);
    }

    if (record.unitId != 0) {
        parameter->unit = getTextStringById(record.unitId);
    }
    assignIdAndAddAttribute(std::move(parameter));
    return mxformat::parameterRecordSize;
}

void Parser_kv38::getOptionListById(std::uint8_t listId, MxParameterDatatype datatype,
                                    ParameterP* param)
{
    traceEntry(logger, "getOptionListById");
    assert(param);
    param->options.clear();

    std::uint32_t size = 0;
    const std::uint8_t* payload = getGroup(mxformat::group::optionLists, &size);
    if (payload == nullptr) {
        throw std::runtime_error("Cannot find group 20c1");
    }
    // Every list with the identifier counts, not only the first.
    for (std::uint32_t pos = 0; pos + 1 < size;) {
        const auto list = mxformat::readRecord<mxformat::OptionListHeader>(payload + pos);
        const std::uint32_t next = pos + mxformat::optionListSize(list.count);
        if (next > size) {
            throw std::runtime_error("Bad alignment in group 20c1");
        }
        if (list.id == listId) {
            reserveOptions(*param, list.count);
            for (pos += mxformat::optionListHeaderSize; pos < next; pos += mxformat::optionSize) {
                const auto entry = mxformat::readRecord<mxformat::OptionRecord>(payload + pos);
                auto option = std::make_shared<datamodel::ParameterOption>();
                option->text = getTextStringById(entry.textId);
                option->value = kv38ParameterValueToString(payload + pos, datatype);
                param->privateProps.optionValues.push_back(static_cast<std::uint8_t>(entry.value));
                param->options.push_back(std::move(option));
            }
        }
        pos = next;
    }
}

} // namespace devices::parser::mx
