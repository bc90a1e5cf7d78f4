// A companion library of the host's own, in place of the one supplied with the parser: it reads and
// writes the bytes of every value in hexadecimal. The host is linked.cpp, unchanged.

#include <Poco/ByteOrder.h>
#include <Poco/NumberFormatter.h>
#include <mxfileext/mxfileext.h>

#include <algorithm>
#include <stdexcept>

namespace {

unsigned blockSize = 0; // parameter block of module 0, in bytes
constexpr unsigned char widths[] = {0, 1, 2, 1, 2, 1, 4, 4, 8, 8}; // by datatype, in bytes

struct Place // of a value in the block, as in its 29-byte record
{
    explicit Place(const unsigned char* record)
        : offset((record[3] - 4U) & 0xFFU), width(widths[record[4] % 10])
    {}
    bool liesIn(std::size_t size) const { return offset + width <= size; }
    unsigned offset, width;
};

std::string hexText(const unsigned char* slot)
{
    Poco::UInt64 number = 0;
    std::copy_n(slot, sizeof number, reinterpret_cast<unsigned char*>(&number));
    return "0x" + Poco::NumberFormatter::formatHex(Poco::ByteOrder::fromNetwork(number), 16);
}

} // namespace

void mxfileext::clearParsedData(unsigned char) {}
void mxfileext::parseGroup(unsigned char, unsigned short, const unsigned char*, unsigned short) {}

void mxfileext::initializeModule(char*, unsigned short size)
{
    blockSize = size;
}

void mxfileext::getParameterValue(const unsigned char* record, const unsigned char* block,
                                  ParameterValue_t* out)
{
    const Place place(record);
    *out = ParameterValue_t{};
    out->datatype = record[4];
    out->present = block != nullptr && place.liesIn(blockSize);
    if (out->present) {
        std::copy_n(block + place.offset, place.width, out->value + 8 - place.width);
    }
    std::copy_n(record + 8, 8, out->minimum);
    std::copy_n(record + 16, 8, out->maximum);
}

void mxfileext::parameterValueToString(const ParameterValue_t& parameter, std::string& value,
                                       std::string& min, std::string& max)
{
    value = parameter.present ? hexText(parameter.value) : "";
    min = hexText(parameter.minimum);
    max = hexText(parameter.maximum);
}

void mxfileext::getConvertedParameter(unsigned char, unsigned char* block, unsigned char* record,
                                      float* value, float* min, float* max, std::string& unit)
{
    mxfileext::ParameterValue_t slots;
    getParameterValue(record, block, &slots);
    *value = std::stof(hexText(slots.value));
    *min = std::stof(hexText(slots.minimum));
    *max = std::stof(hexText(slots.maximum));
    unit = "raw";
}

void mxfileext::getLeftAlignedRawParameter(const std::vector<char>& raw, unsigned char* out,
                                           unsigned char offset, unsigned char size,
                                           unsigned char bitOffset, unsigned char bitLength)
{
    if (size > 8 || offset + size > raw.size()) {
        throw std::runtime_error("value at byte " + std::to_string(offset) + " lies outside");
    }
    std::fill(std::copy_n(raw.begin() + offset, size, out), out + 8, '\0');
    if (bitLength > 0) { // a bit field is within one byte
        out[0] = static_cast<unsigned char>(out[0] >> bitOffset & ((1U << bitLength) - 1U));
    }
}

void mxfileext::setParameter(unsigned char, unsigned char* raw, unsigned char* record,
                             const std::string& value)
{
    const Place place(record);
    unsigned long long bytes = std::stoull(value, nullptr, 16);
    if (!place.liesIn(blockSize)) {
        throw std::runtime_error("parameter " + std::to_string(record[0]) + " lies outside");
    }
    for (unsigned i = place.width; i-- > 0; bytes >>= 8) {
        raw[place.offset + i] = static_cast<unsigned char>(bytes);
    }
}
