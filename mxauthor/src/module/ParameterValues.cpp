#include "module/ParameterValues.h"

#include "mxauthor/MxFile.h"

#include <devices/parser/mx/ByteReaders.h>
#include <mxfileext/mxfileext.h>
#include <mxformat/BitPlace.h>

#include <array>

namespace mxauthor {

namespace {

namespace mx = devices::parser::mx;

struct Datatype
{
    unsigned size;
    bool isSigned;
};

constexpr std::array<Datatype, 10> datatypes = {{{0, false},
                                                 {1, false},
                                                 {2, false},
                                                 {1, true},
                                                 {2, true},
                                                 {1, false},
                                                 {4, false},
                                                 {4, true},
                                                 {8, false},
                                                 {8, true}}};

void narrowToBitField(ParameterValue& value, const ParameterRecord& record)
{
    const auto place = mxformat::bitPlace(record.bitLength.value, record.bitOffset.value);
    value.firstBit += place.shift;
    value.bits = place.count;
}

WideNumber numberFrom(const unsigned char* slot, bool isSigned)
{
    return {mx::readU64BE(slot), isSigned};
}

ParameterValue decode(const ParameterRecord& record, const Bytes& block)
{
    ParameterValue value;
    value.byteOffset = static_cast<std::uint8_t>(record.position.value - positionBase);
    if (record.datatype.value == 0 || record.datatype.value >= datatypes.size()) {
        return value;
    }
    const Datatype& type = datatypes.at(record.datatype.value);
    value.known = true;
    value.size = type.size;
    value.isSigned = type.isSigned;
    value.firstBit = value.byteOffset * 8;
    value.bits = type.size * 8;
    if (record.datatype.value == byteDatatype) {
        narrowToBitField(value, record);
    }
    const Bytes bytes = writePayload(Parameters{{record}, {}});
    mxfileext::ParameterValue_t decoded{};
    mxfileext::getParameterValue(bytes.data(), block.empty() ? nullptr : block.data(), &decoded);
    value.present = decoded.present;
    value.value = numberFrom(decoded.value, type.isSigned);
    value.minimum = numberFrom(decoded.minimum, type.isSigned);
    value.maximum = numberFrom(decoded.maximum, type.isSigned);
    return value;
}

} // namespace

bool WideNumber::isBelow(const WideNumber& other) const
{
    return isSigned ? static_cast<std::int64_t>(bits) < static_cast<std::int64_t>(other.bits)
                    : bits < other.bits;
}

std::string WideNumber::text() const
{
    return isSigned ? std::to_string(static_cast<std::int64_t>(bits)) : std::to_string(bits);
}

std::vector<ParameterValue> parameterValues(const std::vector<ParameterRecord>& records,
                                            const Bytes& block)
{
    // The companion library is told the size only: it gets the block with each value.
    Bytes bytes = block;
    mxfileext::initializeModule(reinterpret_cast<char*>(bytes.data()),
                                static_cast<unsigned short>(bytes.size()));
    std::vector<ParameterValue> values;
    values.reserve(records.size());
    for (const ParameterRecord& record : records) {
        values.push_back(decode(record, bytes));
    }
    return values;
}

WideNumber numberOfSlot(const ParameterValue& parameter, std::uint64_t slot)
{
    if (parameter.size == 0 || parameter.size == 8) {
        return {slot, parameter.isSigned};
    }
    const unsigned unused = 64 - parameter.size * 8;
    const std::uint64_t shifted = slot << unused;
    // A shift of a negative number fills with its sign.
    return {parameter.isSigned
                ? static_cast<std::uint64_t>(static_cast<std::int64_t>(shifted) >> unused)
                : shifted >> unused,
            parameter.isSigned};
}

bool holdsSlot(const ParameterValue& parameter, std::uint64_t slot)
{
    if (!parameter.known || parameter.size == 8) {
        return true;
    }
    const bool zeroExtended = slot >> (parameter.size * 8) == 0;
    if (parameter.isSigned) {
        return zeroExtended || numberOfSlot(parameter, slot).bits == slot;
    }
    return zeroExtended && (parameter.bits >= 64 || slot >> parameter.bits == 0);
}

} // namespace mxauthor
