#pragma once

#include "DeviceReport.h"
#include "configuration/ParameterNames.h"

#include <mxmodule/ModuleFile.h>
#include <mxmodule/Values.h>

#include <devices/parser/mx/Parser_kv38.h>
#include <mxformat/ChannelRecord.h>

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// An mx file and the device that it describes. Immutable: several threads may use it at once.
class TranslatedModule
{
public:
    using Parser = devices::parser::mx::Parser_kv38;
    using Device = Parser::DeviceP;

    /// Translates `file`; `block`, which comes from `blockPlace`, replaces its default
    /// parameter block. Throws a `Failure` naming the file or the place.
    TranslatedModule(const ModuleFile& file, ImageOffsets offsets,
                     std::optional<std::vector<char>> block, const std::string& blockPlace,
                     Observer* observer);

    /// Translates `loaded`, mx data followed by the byte 0xFF, of the file called `name`.
    TranslatedModule(std::string name, std::vector<char> loaded, ImageOffsets offsets = {},
                     Observer* observer = nullptr);

    /// Translates the mx data of `other`, which the two share, at `offsets`.
    TranslatedModule(const TranslatedModule& other, ImageOffsets offsets);

    TranslatedModule(const TranslatedModule&) = delete;
    TranslatedModule& operator=(const TranslatedModule&) = delete;

    const std::string& name() const { return fileName; } ///< Of the file, for messages.

    /// Returns the mx data, followed by the byte 0xFF.
    const std::vector<char>& bytes() const { return *mxData; }

    ImageOffsets offsets() const { return imageOffsets; }

    /// Returns the device. The parser's interface takes devices that it could change; none does.
    Device& device() const { return *builtDevice; }

    /// Returns the channel records of the mx data in their order, also those of channels that the
    /// device does not have because of their name.
    std::vector<mxformat::ChannelRecord> channelRecords() const;

    /// Returns the report on the device. Made at the first call.
    const DeviceReport& report() const;

    /// Returns the names of the parameters. Made at the first call.
    const ParameterNames& names() const;

    /// Returns the record of each parameter of the report, 29 bytes in the mx data.
    const std::vector<const std::uint8_t*>& records() const;

    /// Returns the report on the device with `image`, of the size of its parameter block, in place
    /// of that block.
    DeviceReport reportWith(const std::vector<char>& image) const;

    /// Returns a copy of the device whose parameter block is `image`. Its parameters still show the
    /// values of the original.
    Device deviceWith(const std::vector<char>& image) const;

private:
    void translate(std::vector<char>* block, Observer* observer);
    [[noreturn]] void reject(const std::string& text) const;
    void requireBlockSize(const std::vector<char>& block, const std::string& place);
    void describe() const;

    std::string fileName;
    bool isText = false; // the file is the text form
    ImageOffsets imageOffsets;
    std::shared_ptr<const std::vector<char>> mxData;
    std::shared_ptr<Device> builtDevice;        // its parameters point into mxData
    const std::uint8_t* channelGroup = nullptr; // its payload in mxData
    std::uint32_t channelGroupSize = 0;

    struct Described
    {
        std::once_flag once;
        DeviceReport report;
        std::vector<const std::uint8_t*> records;
        std::optional<ParameterNames> names;
    };
    mutable Described described;
};

} // namespace mxmodule
