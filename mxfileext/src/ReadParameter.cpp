#include "ModuleData.h"
#include "Parameter.h"

#include "mxfileext/mxfileext.h"

#include <OneThreadAtATime.h>
#include <mxformat/BigEndian.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace mxfileext {

namespace {

constexpr unsigned slotSize = 8;

void toSlot(std::uint64_t value, unsigned char* slot)
{
    mxformat::writeBigEndian(value, slotSize, slot);
}

std::string slotText(unsigned char datatype, const unsigned char* slot)
{
    const mxformat::Datatype* const type = mxformat::findDatatype(datatype);
    return type == nullptr
               ? std::string()
               : type->numberInSlot(mxformat::readBigEndian<std::uint64_t>(slot)).text();
}

[[noreturn]] void failOutside(unsigned byteOffset, unsigned dataSize, std::size_t imageSize)
{
    throw std::runtime_error("Parameter value of " + std::to_string(dataSize) +
                             " bytes at byte offset " + std::to_string(byteOffset) +
                             " lies outside the raw image of " + std::to_string(imageSize) +
                             " bytes");
}

} // namespace

void getParameterValue(const unsigned char* record, const unsigned char* block,
                       ParameterValue_t* out)
{
    *out = ParameterValue_t{};
    const Parameter parameter(record);
    const mxformat::BlockField& field = parameter.field;
    if (field.datatype() == nullptr) {
        return;
    }
    out->datatype = parameter.record.datatype;
    const auto [minimum, maximum] = rangeOf(parameter.record, field);
    toSlot(minimum, out->minimum);
    toSlot(maximum, out->maximum);
    out->present = block != nullptr && field.liesWithin(blockSize());
    if (out->present) {
        toSlot(field.read(block), out->value);
    }
}

void parameterValueToString(const ParameterValue_t& parameter, std::string& value, std::string& min,
                            std::string& max)
{
    value = parameter.present ? slotText(parameter.datatype, parameter.value) : std::string();
    min = slotText(parameter.datatype, parameter.minimum);
    max = slotText(parameter.datatype, parameter.maximum);
}

void getConvertedParameter(unsigned char module, unsigned char* block, unsigned char* record,
                           float* value, float* min, float* max, std::string& unit)
{
    const devices::parser::mx::OneThreadAtATime::Use use(keptTables,
                                                         "mxfileext::getConvertedParameter");
    const Parameter parameter(record);
    const mxformat::BlockField& field = parameter.field;
    const Conversion conversion = moduleData(module).conversion(parameter.record.conversion);
    const bool present = block != nullptr && field.liesWithin(blockSize());
    const auto [minimum, maximum] = rangeOf(parameter.record, field);
    const mxformat::PhysicalScale& scale = conversion.scale;
    *value = scale.value(field.number(present ? field.read(block) : 0));
    *min = scale.value(field.number(minimum));
    *max = scale.value(field.number(maximum));
    if (scale.factor < 0) {
        std::swap(*min, *max);
    }
    unit = conversion.unit;
}

void getLeftAlignedRawParameter(const std::vector<char>& raw, unsigned char* out,
                                unsigned char byteOffset, unsigned char dataSize,
                                unsigned char bitOffset, unsigned char bitLength)
{
    std::fill_n(out, slotSize, static_cast<unsigned char>(0));
    if (dataSize > slotSize) {
        throw std::runtime_error("Parameter value of " + std::to_string(dataSize) +
                                 " bytes is too long: 8 bytes at most are accepted");
    }
    // A bit field lies in one byte, whatever size is stated.
    const bool isBitField = bitLength > 0 || bitOffset > 0;
    const unsigned needed = isBitField ? std::max<unsigned>(dataSize, 1) : dataSize;
    if (byteOffset + needed > raw.size()) {
        failOutside(byteOffset, needed, raw.size());
    }
    const mxformat::BitPlace place = mxformat::bitPlace(bitLength, bitOffset);
    if (!place.exists()) {
        throw std::runtime_error("Bit field of " + std::to_string(bitLength) +
                                 " bit(s) at bit offset " + std::to_string(bitOffset) +
                                 " lies outside its byte: bits 0 to 7 are accepted");
    }
    const auto* const bytes = reinterpret_cast<const unsigned char*>(raw.data()) + byteOffset;
    if (isBitField) {
        out[0] = static_cast<unsigned char>((bytes[0] & place.mask()) >> place.shift);
    } else {
        std::copy_n(bytes, dataSize, out);
    }
}

} // namespace mxfileext
