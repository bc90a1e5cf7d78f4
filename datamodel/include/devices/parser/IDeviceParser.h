#pragma once

#include "datamodel/DataModel.h"
#include "devices/database/DeviceProperties.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The parsers of device descriptions, as hosts know them.
namespace devices::parser {

/// The fieldbus for which a raw parameter configuration is computed. Any value may be passed; every
/// value other than `Modbus` asks for the raw parameter image.
enum class FieldbusType : int
{
    Raw = 0,   ///< The raw parameter image as the module holds it.
    Modbus = 2 ///< Whole 16-bit registers, parameter after parameter.
};

/// What a host knows of a device parser.
///
/// Operations run on the caller's thread and have no locks. In a process at most one of them may
/// run at a time, whatever the object (`parse`, `populateDatabase` and `getCalculatedRawConfig`
/// share state of the whole process). Devices that were built may be read by any thread.
class DATAMODEL_API IDeviceParser
{
public:
    /// The device that a parser builds: the data model with the device database record appended.
    using BuiltDevice = datamodel::Device_p<devices::database::DeviceProperties>;

    /// Where one channel lies in the process image of its module.
    struct ChannelMappingInfo
    {
        std::string iecSymbol;       ///< Address symbol, such as IX3_2.
        std::uint8_t area{};         ///< 'I' for an input, 'Q' for an output channel.
        std::uint8_t sizeLetter{};   ///< 'X', 'B', 'W', 'D' or 'L'.
        std::uint32_t byteAddress{}; ///< Byte in the input or output image.
        std::uint8_t bitOffset{};    ///< First bit within that byte.
        std::uint8_t mask{};         ///< 2^(number of bits) - 1, cut to eight bits.
    };

    virtual ~IDeviceParser() = default;

    /// Translates every mx file of `directory` (names "MX*.bin", in the order of the file system)
    /// and inserts each record into the device database. Returns the number of records inserted. A
    /// file that cannot be translated is logged and skipped; one that cannot be loaded ends the
    /// walk with `std::runtime_error`.
    virtual unsigned populateDatabase(const std::string& directory) = 0;

    /// Translates the mx file in `buffer` and returns the device. The caller shares its ownership
    /// with the parser, which lets go of it at its next translation.
    ///
    /// `customParamBuffer` (may be null) replaces the module's default parameter block and must
    /// have its size. `inDataOffset` and `outDataOffset` are the byte addresses at which the
    /// module's data begins in the process images. Throws `std::runtime_error` on a malformed file.
    /// The device's parameters keep pointers into `buffer`: keep it alive, and unchanged, while raw
    /// configurations of the device are computed. `customParamBuffer` is copied.
    virtual std::shared_ptr<BuiltDevice> parse(const std::vector<char>& buffer,
                                               std::vector<char>* customParamBuffer,
                                               unsigned inDataOffset, unsigned outDataOffset) = 0;

    /// Returns the bytes that configure the module on `fieldbus`: the parameter block of
    /// `vanillaDev` (a device that this parser built) with every value of `paramDev` (may be null)
    /// written into it. `mxData` is the mx file of `vanillaDev`; the buffer from which `vanillaDev`
    /// was translated has to be alive as well. Neither device is changed, the caller owns the
    /// bytes: numbers are big-endian, for Modbus each register has its high byte first. Throws
    /// `std::runtime_error` when the device types differ, a parameter is unknown or does not lie in
    /// the block, or a value cannot be written. `vanillaDev` may not be null (failed assertion).
    virtual std::shared_ptr<std::vector<char>>
    getCalculatedRawConfig(FieldbusType fieldbus, const std::vector<char>& mxData,
                           datamodel::Device* vanillaDev, datamodel::ParamDevice* paramDev) = 0;

    /// Returns one record per channel of `dev` (a device that this parser built) that has an
    /// address symbol, in the order of the device's list. The caller owns the records. A channel
    /// without a symbol is logged as a warning and left out. `dev` may not be null (failed
    /// assertion).
    virtual std::vector<std::unique_ptr<ChannelMappingInfo>>
    getChannelMappingInfoList(datamodel::Device* dev) = 0;
};

} // namespace devices::parser
