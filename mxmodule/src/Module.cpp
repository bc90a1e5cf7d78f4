#include "mxmodule/Module.h"

#include "DeviceJson.h"
#include "DeviceText.h"
#include "InvalidInput.h"
#include "PlainValues.h"
#include "TranslatedModule.h"
#include "channels/ChannelMapContent.h"
#include "configuration/Composition.h"
#include "configuration/ConfiguredImage.h"
#include "configuration/DecodedImage.h"
#include "configuration/ReadImage.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/JsonText.h>
#include <text/Utf8.h>

#include <utility>

namespace mxmodule {

namespace {

// Warns if `size` bytes from `offset` exceed the largest process image of a fieldbus.
std::optional<Finding> offsetFinding(const std::string& place, std::uint64_t offset,
                                     std::uint64_t size)
{
    constexpr std::uint64_t mostAddressed = std::uint64_t{1} << 32U;
    constexpr std::uint64_t mostOfModbus = std::uint64_t{2} * 65536; // 16-bit register numbers
    const std::uint64_t end = offset + size;
    if (end <= mostOfModbus) {
        return std::nullopt;
    }
    const std::string wrapped =
        end > mostAddressed ? "; byte addresses have 32 bits and begin again at 0" : "";
    return Finding{Severity::Warning, fmt::format("{} {}", place, offset),
                   fmt::format("The module's {} end at byte {}, after the {} bytes of the "
                               "largest process image, the 65536 registers of Modbus{}",
                               text::counted(size, "byte"), end, mostOfModbus, wrapped),
                   "", Origin::Request};
}

// Returns the size that the static property `name` states, without a report on the device.
std::uint32_t sizeIn(const TranslatedModule::Device& device, const char* name)
{
    for (const auto& attribute : device.attributes) {
        if (attribute->typeCode() == datamodel::staticPropertyTypeCode) {
            const auto& property = static_cast<const datamodel::StaticProperty&>(*attribute);
            if (property.name == name) {
                return static_cast<std::uint32_t>(std::stoul(property.value));
            }
        }
    }
    return 0;
}

Configuration shared(ConfiguredImage made, const std::shared_ptr<const TranslatedModule>& owner,
                     const std::string& place)
{
    made.owner = owner;
    made.findings = notesOf(made, place);
    return Configuration(std::make_shared<const ConfiguredImage>(std::move(made)));
}

void addRegisters(const TranslatedModule& module, Composition& composition)
{
    try {
        composition.registers = registersOf(module, composition.image);
    } catch (const Failure& failure) {
        composition.noRegisters = failure.reason();
    }
}

} // namespace

Module Module::fromFile(const std::string& path, const ModuleOptions& options)
{
    return Module(ModuleFile::read(path, options.observer), options);
}

Module Module::fromBytes(std::vector<char> bytes, const std::string& name,
                         const ModuleOptions& options)
{
    return Module(ModuleFile(name, std::move(bytes), options.observer), options);
}

Module::Module(const ModuleFile& file, const ModuleOptions& options)
    : content(
          std::make_shared<const TranslatedModule>(file, options.offsets, options.parameterBlock,
                                                   options.parameterBlockPlace, options.observer))
{}

Module::Module(std::shared_ptr<const TranslatedModule> made) : content(std::move(made)) {}

Module Module::at(ImageOffsets offsets) const
{
    return Module(std::make_shared<const TranslatedModule>(*content, offsets));
}

const std::string& Module::name() const
{
    return content->name();
}

std::string Module::label() const
{
    return text::toUtf8(content->device().brandLabelName);
}

std::string Module::moduleId() const
{
    return content->device().privateProps.moduleIdText;
}

std::string Module::deviceTypeId() const
{
    return content->device().deviceTypeId;
}

const std::vector<char>& Module::defaultImage() const
{
    return *content->device().privateProps.defaultParameterBlock;
}

std::vector<Property> Module::properties() const
{
    return plainProperties(content->report());
}

std::vector<Channel> Module::channels() const
{
    return plainChannels(content->report().channels);
}

std::vector<Parameter> Module::parameters() const
{
    return plainParameters(content->report(), content->names());
}

RawTexts Module::rawTexts() const
{
    return mxmodule::rawTexts(content->report());
}

std::vector<Set> Module::sets() const
{
    return plainSets(content->report());
}

std::vector<BinaryObject> Module::binaryObjects() const
{
    return plainBinaryObjects(content->report());
}

DataSizes Module::sizes() const
{
    const TranslatedModule::Device& device = content->device();
    return {sizeIn(device, "inDataSize"), sizeIn(device, "outDataSize"),
            sizeIn(device, "paramDataSize"), sizeIn(device, "diagDataSize"), content->offsets()};
}

std::string Module::text() const
{
    return deviceText(content->report());
}

std::string Module::json() const
{
    return text::jsonText(deviceJson(content->report(), content->names()));
}

ChannelMap Module::channelMap(Observer* observer) const
{
    return ChannelMap(
        std::make_shared<const ChannelMap::Content>(makeChannelTable(*content, observer)));
}

std::vector<Finding> Module::offsetFindings(const std::string& inputPlace,
                                            const std::string& outputPlace) const
{
    const auto& properties = content->device().privateProps;
    std::vector<Finding> findings;
    for (auto& warning :
         {offsetFinding(inputPlace, content->offsets().input, properties.inDataSize),
          offsetFinding(outputPlace, content->offsets().output, properties.outDataSize)}) {
        if (warning) {
            findings.push_back(*warning);
        }
    }
    return findings;
}

std::vector<std::size_t> Module::parametersCalled(const std::string& name) const
{
    return content->names().positionsOf(name);
}

std::size_t Module::parameterCalled(const std::string& name) const
{
    try {
        const DeviceReport::Parameter& found = mxmodule::parameterCalled(name, content->names());
        return static_cast<std::size_t>(&found - content->names().device().parameters.data());
    } catch (const InvalidInput& invalid) {
        throw Failure(findingOf(invalid, name, Origin::Request));
    }
}

Composition Module::compose(const std::vector<Assignment>& assignments,
                            const ComposeOptions& options) const
{
    const std::vector<char>& image = options.image ? *options.image : defaultImage();
    if (const auto wrongSize = sizeFinding(image, defaultImage(), options.imagePlace)) {
        return {{}, {}, {*wrongSize}, {}};
    }
    Composition composition = mxmodule::compose(*content, image, assignments, options.check);
    if (composition.ok()) {
        addRegisters(*content, composition);
    }
    return composition;
}

Configuration Module::decode(const std::vector<char>& bytes, Fieldbus fieldbus,
                             const std::string& place) const
{
    const std::vector<char> image = decodedImage(bytes, fieldbus, *content, place);
    return shared(configurationOf(*content, image, fieldbus), content, place);
}

Configuration Module::configuration(const std::vector<char>& image, Fieldbus fieldbus,
                                    const std::string& place) const
{
    requireImageSize(image, defaultImage(), place);
    return shared(configurationOf(*content, image, fieldbus), content, place);
}

Configuration Module::defaults(Fieldbus fieldbus) const
{
    return configuration(defaultImage(), fieldbus, name());
}

std::vector<std::uint16_t> Module::registers(const std::vector<char>& image) const
{
    requireImageSize(image, defaultImage(), "");
    return registersOf(*content, image);
}

ReadImage Module::imageOfFile(const std::vector<char>& bytes, const std::string& name,
                              Fieldbus fieldbus, const std::string& place) const
{
    return mxmodule::imageOfFile(bytes, name, fieldbus, *content, place);
}

ReadImage Module::imageOfWords(const std::string& words, Fieldbus fieldbus,
                               const std::string& place) const
{
    return mxmodule::imageOfWords(words, fieldbus, *content, place);
}

} // namespace mxmodule
