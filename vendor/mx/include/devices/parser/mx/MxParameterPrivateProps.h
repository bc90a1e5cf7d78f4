#pragma once

#include <cstdint>
#include <vector>

namespace devices::parser::mx {

/// What an mx file says about a parameter beyond the data model.
struct MxParameterPrivateProps
{
    std::uint8_t channelNumber{}; ///< Channel of the parameter; 255: of the module itself.
    const std::uint8_t* record{}; ///< Its 29-byte record in the mx buffer; not owned.
    std::uint8_t dataSize{};      ///< Size of the value in bytes.
    std::uint8_t byteOffset{};    ///< First byte of the value in the parameter block.
    std::uint8_t bitOffset{};     ///< First bit within that byte, for datatype `Byte`.
    std::uint8_t bitLength{};     ///< Number of bits, for datatype `Byte`; 0: whole bytes.
    std::vector<std::uint8_t> optionValues; ///< Raw value of each option, in option-list order.
};

} // namespace devices::parser::mx
