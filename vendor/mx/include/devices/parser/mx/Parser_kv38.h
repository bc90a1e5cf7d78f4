#pragma once

#include "devices/parser/IDeviceParser.h"
#include "devices/parser/mx/MxChannelPrivateProps.h"
#include "devices/parser/mx/MxParameterDatatype.h"
#include "devices/parser/mx/MxParameterPrivateProps.h"
#include "devices/parser/mx/Parser.h"
#include "devices/parser/mx/ParserMxApi.h"

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Poco {
class Logger;
}

namespace devices::parser::mx {

class TextIndex;

/// The parser of the kv38 module family.
///
/// One object serves any number of translations, one after the other. At most one translation may
/// run in the process at a time: `parse`, `populateDatabase`, `getCalculatedRawConfig` and
/// `getChannelMappingInfoList` throw `std::logic_error` while another thread is in one of them.
/// Other failures are `std::runtime_error`; a null pointer where an object is required is a failed
/// assertion. Every operation logs ">> NAME()." at trace priority.
class PARSER_MX_API Parser_kv38 : public IDeviceParser, protected Parser
{
public:
    /// The device that this parser builds.
    using DeviceP = IDeviceParser::BuiltDevice;
    /// Its channels.
    using ChannelP = datamodel::Channel_p<MxChannelPrivateProps>;
    /// Its parameters.
    using ParameterP = datamodel::Parameter_p<MxParameterPrivateProps>;

    /// Takes the logger "mxparser-kv38" and sets its level to "information", for every holder of it
    /// in the process.
    Parser_kv38();
    ~Parser_kv38() override;

    unsigned populateDatabase(const std::string& directory) override;

    std::shared_ptr<DeviceP> parse(const std::vector<char>& buffer,
                                   std::vector<char>* customParamBuffer, unsigned inDataOffset,
                                   unsigned outDataOffset) override;

    std::shared_ptr<std::vector<char>>
    getCalculatedRawConfig(FieldbusType fieldbus, const std::vector<char>& mxData,
                           datamodel::Device* vanillaDev,
                           datamodel::ParamDevice* paramDev) override;

    std::vector<std::unique_ptr<ChannelMappingInfo>>
    getChannelMappingInfoList(datamodel::Device* dev) override;

    /// Sets the level of the logger "mxparser-kv38", for every holder of it in the process. Takes
    /// the names and numbers that Poco takes and throws `Poco::InvalidArgumentException` for
    /// others.
    void setLoggingLevel(const std::string& level);

protected:
    /// Largest default parameter block accepted, in bytes.
    static constexpr std::uint32_t PARAMETER_BUFFER_SIZE = 256;

    // Entry points.

    /// Translates `buffer` and returns `dev`; the shared body of `parse` and `populateDatabase`.
    const std::shared_ptr<DeviceP>& parseInternal(const std::vector<char>& buffer,
                                                  std::vector<char>* customParamBuffer,
                                                  unsigned inDataOffset, unsigned outDataOffset);

    /// Starts a translation: a new device, the container indexed, every group handed to the
    /// companion library, the parameter block built and made known to it.
    void initializeDataStructs(const std::vector<char>& buffer,
                               std::vector<char>* customParamBuffer);

    /// Cuts the default parameter block out of group 0x0010 into the device record.
    void setupDefaultParams();

    // Device content.

    /// Translates the indexed groups into `dev`.
    void parseContent() override;

    // Texts and data sizes.

    /// Returns the text of at most `length` bytes at `text`, ended by 0x00 or 0x0D (which may be
    /// the byte right after it). The result is one string for the whole process: it holds until the
    /// next call of this operation or of `getTextStringById`.
    const std::string& mxTextToStdString(const std::uint8_t* text, unsigned length);

    /// Returns the text `id` of group 0x20d3, in the string that `mxTextToStdString` returns.
    const std::string& getTextStringById(std::uint16_t id);

    /// Returns the size of `type` in bits.
    std::uint32_t getDatatypeSize(MxParameterDatatype type);

    /// Reads group 0x0011 into the four sizes in bytes; no pointer may be null.
    void getDataArraySizes(std::uint32_t* inDataSize, std::uint32_t* outDataSize,
                           std::uint32_t* paramDataSize, std::uint32_t* diagDataSize);

    /// Adds what `line` states after `key` to `*size`, in bytes. Returns the number of bytes that
    /// the line occupies in its group, 0 when it does not begin with `key`.
    std::uint32_t updateDataArraySize(const std::string& line, const std::string& key,
                                      std::uint32_t* size);

    // Channels.

    /// Translates the channel record at `x20D0`. Returns its length in bytes.
    std::uint32_t parseChannel(const std::uint8_t* x20D0);

    /// Fills `chan` (a `ChannelP`) and allocates its address in the process image.
    void setupChannel(datamodel::Channel* chan, const std::string& name, std::uint8_t channelNumber,
                      std::uint8_t kind, std::uint8_t bitLength, std::uint8_t bitOffset);

    /// Files the single-bit channel `id` under `key`, the symbol of the byte that holds it.
    void addToAggregatedChannelCandidate(const std::string& key, const std::string& id);

    // Parameters.

    /// Translates the 29-byte parameter record at `x20C0`. Returns 29.
    std::uint32_t parseParameter(const std::uint8_t* x20C0);

    /// Replaces the options of `param` by those of every option list `listId` of group 0x20c1 and
    /// appends their raw values.
    void getOptionListById(std::uint8_t listId, MxParameterDatatype datatype, ParameterP* param);

    // Identifiers, static properties and references.

    /// Gives `attribute` the next identifier, appends it to `dev` and returns the identifier.
    std::uint32_t assignIdAndAddAttribute(const std::shared_ptr<datamodel::Attribute>& attribute);

    /// Adds a static property to `dev`.
    void addStaticProperty(const std::string& name, const std::string& value);

    /// Groups the attributes of `dev` into sets under the role "default".
    void setupReferences();

    // Raw configuration.

    /// Returns the parameters of `dev` in the order of the Modbus buffer: those of the module, then
    /// those of each channel. The device keeps ownership.
    std::list<ParameterP*> getParameterListOrderdLikeKv38(DeviceP* dev);

    /// Returns the Modbus form of the raw parameter image `rawParamBuffer` of `dev`.
    std::shared_ptr<std::vector<char>> createModbusParamBuffer(DeviceP* dev,
                                                               std::vector<char>* rawParamBuffer);

    Poco::Logger& logger;              ///< The logger "mxparser-kv38".
    std::shared_ptr<DeviceP> dev;      ///< The device being built, or built last.
    char* paramBuffer = nullptr;       ///< Bytes of the parameter block; null when it is empty.
    std::uint16_t paramBufferSize = 0; ///< Size of the parameter block in bytes.
    std::uint32_t moduleId = 0;        ///< Identifier of the module type.
    std::uint32_t inDataSize = 0;      ///< Input process data, in bytes.
    std::uint32_t outDataSize = 0;     ///< Output process data, in bytes.
    std::uint32_t diagDataSize = 0;    ///< Diagnosis data, in bytes.
    std::uint32_t inDataOffset = 0;    ///< First byte of the module in the input image.
    std::uint32_t outDataOffset = 0;   ///< First byte of the module in the output image.
    std::uint32_t nextObjectId = 0;    ///< Next identifier to give.
    std::uint32_t inBitPosition = 0;   ///< Next free bit of the open input byte.
    std::uint32_t inBytePosition = 0;  ///< Open input byte.
    std::uint32_t outBitPosition = 0;  ///< Next free bit of the open output byte.
    std::uint32_t outBytePosition = 0; ///< Open output byte.
    std::string mxVersion;             ///< Entry "Component" of group 0x0040.
    /// Ids of the single-bit channels by the symbol of the byte that holds them, such as IB3.
    std::map<std::string, std::vector<std::string>> aggregatedChannelCandidates;

private:
    /// Returns the index of the text table of the mx buffer indexed last.
    PARSER_MX_LOCAL TextIndex& texts();

    /// Returns where the first text `id` starts in the table of `index`, which is there; 0 when it
    /// ends before. Throws where a record on the way is malformed.
    PARSER_MX_LOCAL std::uint32_t findText(TextIndex& index, std::uint16_t id);

    /// Returns about how many objects the indexed groups become.
    PARSER_MX_LOCAL std::size_t attributesExpected();

    std::unique_ptr<TextIndex> textIndex;
};

} // namespace devices::parser::mx
