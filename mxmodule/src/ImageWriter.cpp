#include "ImageWriter.h"

#include <ShownValue.h>
#include <mxfileext/mxfileext.h>

namespace mxmodule {

namespace {

using devices::parser::FieldbusType;

// The companion's signature asks for writable bytes; the record is only read.
unsigned char* writable(const std::uint8_t* record)
{
    return const_cast<unsigned char*>(record);
}

unsigned char* bytesOf(std::vector<char>& image)
{
    return reinterpret_cast<unsigned char*>(image.data());
}

void selectOption(DeviceReport::Parameter& parameter)
{
    bool found = false;
    for (DeviceReport::Option& option : parameter.options) {
        option.current = !found && option.value == parameter.value;
        found = found || option.current;
    }
}

} // namespace

ImageReader::ImageReader(TranslatedModule::Parser& parser, const TranslatedModule& used)
    : module(used)
{
    datamodel::ParamDevice nothingSet;
    nothingSet.deviceTypeId = module.device().deviceTypeId;
    parser.getCalculatedRawConfig(FieldbusType::Raw, module.bytes(), &module.device(), &nothingSet);
}

void ImageReader::show(const std::vector<char>& image, std::size_t position,
                       DeviceReport::Parameter& parameter) const
{
    // The companion's signature asks for writable bytes; the image is only read.
    char* const bytes = const_cast<char*>(image.data());
    parameter.value = devices::parser::mx::shownValue(module.records()[position], bytes,
                                                      static_cast<std::uint16_t>(image.size()))
                          .value;
    parameter.raw = rawIn(image, parameter);
    selectOption(parameter);
}

ImageWriter::ImageWriter(TranslatedModule::Parser& usedParser, const TranslatedModule& used,
                         std::vector<char> image)
    : parser(usedParser), module(used), base(std::move(image))
{}

std::optional<mxformat::WholeNumber> ImageWriter::alone(const DeviceReport::Parameter& parameter,
                                                        std::size_t position,
                                                        const std::string& text) const
{
    std::vector<char> image = base;
    mxfileext::setParameter(0, bytesOf(image), writable(module.records()[position]), text);
    return rawIn(image, parameter);
}

std::vector<char> ImageWriter::imageWith(const std::vector<SetParameter>& values) const
{
    TranslatedModule::Device device = module.deviceWith(base);
    datamodel::ParamDevice user;
    user.deviceTypeId = device.deviceTypeId;
    for (const auto& [position, text] : values) {
        auto parameter = std::make_shared<datamodel::Parameter>();
        parameter->id = module.report().parameters[position].id;
        parameter->value = text;
        user.attributes.push_back(parameter);
    }
    return *parser.getCalculatedRawConfig(FieldbusType::Raw, module.bytes(), &device, &user);
}

} // namespace mxmodule
