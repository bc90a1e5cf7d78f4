#include "TranslatedModule.h"

#include "ImageWriter.h"
#include "ModuleFileContent.h"
#include "ProcessParser.h"
#include "SourcePlace.h"

#include <mxmodule/Finding.h>

#include <fmt/format.h>
#include <mxformat/Groups.h>

#include <utility>

namespace mxmodule {

namespace {

std::vector<const std::uint8_t*> recordsOf(const TranslatedModule::Device& device)
{
    std::vector<const std::uint8_t*> records;
    for (const auto& attribute : device.attributes) {
        if (attribute->typeCode() == datamodel::parameterTypeCode) {
            records.push_back(static_cast<const TranslatedModule::Parser::ParameterP&>(*attribute)
                                  .privateProps.record);
        }
    }
    return records;
}

} // namespace

TranslatedModule::TranslatedModule(const ModuleFile& file, ImageOffsets offsets,
                                   std::optional<std::vector<char>> block,
                                   const std::string& blockPlace, Observer* observer)
    : fileName(file.name()),
      isText(file.isText()),
      imageOffsets(offsets),
      mxData(file.content->loaded)
{
    try {
        translate(block ? &*block : nullptr, observer);
    } catch (const Failure&) {
        if (block) {
            requireBlockSize(*block, blockPlace);
        }
        throw;
    }
}

TranslatedModule::TranslatedModule(std::string name, std::vector<char> loaded, ImageOffsets offsets,
                                   Observer* observer)
    : fileName(std::move(name)),
      imageOffsets(offsets),
      mxData(std::make_shared<const std::vector<char>>(std::move(loaded)))
{
    translate(nullptr, observer);
}

TranslatedModule::TranslatedModule(const TranslatedModule& other, ImageOffsets offsets)
    : fileName(other.fileName), isText(other.isText), imageOffsets(offsets), mxData(other.mxData)
{
    translate(nullptr, nullptr);
}

void TranslatedModule::translate(std::vector<char>* block, Observer* observer)
{
    withParser(observer, [&](GroupParser& parser) {
        try {
            builtDevice = parser.parse(*mxData, block, imageOffsets.input, imageOffsets.output);
            channelGroup = parser.getGroup(mxformat::group::channels, &channelGroupSize);
        } catch (const std::runtime_error& failure) {
            reject(failure.what());
        }
    });
}

void TranslatedModule::reject(const std::string& text) const
{
    const std::string path = isPath(fileName) ? fileName : "-";
    throw Failure(Origin::Input, fileName, text,
                  isText ? "mxtool check " + path + " shows the place in the text"
                         : "mxtool groups " + path + " lists what the file holds");
}

// A block of a wrong size is the caller's mistake, not that of the mx file.
void TranslatedModule::requireBlockSize(const std::vector<char>& block, const std::string& place)
{
    translate(nullptr, nullptr);
    const std::size_t expected = builtDevice->privateProps.defaultParameterBlock->size();
    if (block.size() != expected) {
        throw Failure(Origin::Input, place,
                      fmt::format("Found {} bytes, expected the {} bytes of the module's "
                                  "parameter block",
                                  block.size(), expected));
    }
}

std::vector<mxformat::ChannelRecord> TranslatedModule::channelRecords() const
{
    std::vector<mxformat::ChannelRecord> records;
    records.reserve(channelGroupSize / mxformat::channelRecordHeaderSize + 1);
    for (std::uint32_t position = 0; position < channelGroupSize;) {
        // The last record may end after the group, but the parser has found it in the mx data.
        records.push_back(mxformat::readRecord<mxformat::ChannelRecord>(channelGroup + position));
        position += mxformat::channelRecordSize(records.back().wordCount);
    }
    return records;
}

const DeviceReport& TranslatedModule::report() const
{
    describe();
    return described.report;
}

const ParameterNames& TranslatedModule::names() const
{
    describe();
    return *described.names;
}

const std::vector<const std::uint8_t*>& TranslatedModule::records() const
{
    describe();
    return described.records;
}

void TranslatedModule::describe() const
{
    std::call_once(described.once, [this] {
        described.report = makeReport(*builtDevice, conversionsOf(*mxData));
        described.records = recordsOf(*builtDevice);
        described.names.emplace(described.report);
    });
}

DeviceReport TranslatedModule::reportWith(const std::vector<char>& image) const
{
    DeviceReport changed = report();
    if (image == changed.parameterBlock) {
        return changed;
    }
    changed.parameterBlock = image;
    withParser(nullptr, [&](Parser& parser) {
        const ImageReader reader(parser, *this);
        for (std::size_t i = 0; i < changed.parameters.size(); ++i) {
            reader.show(image, i, changed.parameters[i]);
        }
    });
    return changed;
}

TranslatedModule::Device TranslatedModule::deviceWith(const std::vector<char>& image) const
{
    Device copy = *builtDevice;
    copy.privateProps.defaultParameterBlock = new std::vector<char>(image);
    return copy;
}

} // namespace mxmodule
