#pragma once

#include <mxfileext/mxfileext.h>
#include <mxformat/ParameterRecord.h>
#include <text/FixedDecimals.h>

#include <cstdint>
#include <string>

namespace devices::parser::mx {

/// Value and range of a parameter as texts, and the unit of its conversion.
struct ShownValue
{
    std::string value;
    std::string min;
    std::string max;
    std::string unit; ///< Empty if the parameter has no conversion.
};

/// Returns what the parameter with the 29-byte `record` shows in the parameter block `block` of
/// `size` bytes, which may be null with size 0: physical values of a parameter that is converted,
/// otherwise raw numbers. The companion library has the mx file of the record.
inline ShownValue shownValue(const std::uint8_t* record, char* block, std::uint16_t size)
{
    ShownValue shown;
    if (!mxformat::isConverted(mxformat::readRecord<mxformat::ParameterRecord>(record).flags)) {
        mxfileext::ParameterValue_t value{};
        mxfileext::getParameterValue(record, reinterpret_cast<const unsigned char*>(block), &value);
        mxfileext::parameterValueToString(value, shown.value, shown.min, shown.max);
        return shown;
    }
    float value = 0;
    float min = 0;
    float max = 0;
    if (size != 0) {
        // The companion's signature asks for writable bytes; the record is only read.
        mxfileext::getConvertedParameter(0, reinterpret_cast<unsigned char*>(block),
                                         const_cast<unsigned char*>(record), &value, &min, &max,
                                         shown.unit);
    }
    shown.value = text::fixedDecimals(value);
    shown.min = text::fixedDecimals(min);
    shown.max = text::fixedDecimals(max);
    return shown;
}

} // namespace devices::parser::mx
