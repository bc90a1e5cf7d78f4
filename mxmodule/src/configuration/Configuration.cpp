#include "mxmodule/Configuration.h"

#include "PlainValues.h"
#include "configuration/ConfigurationOutput.h"
#include "mxmodule/Registers.h"

#include <fmt/format.h>
#include <text/Counted.h>

#include <utility>

namespace mxmodule {

namespace {

std::string describedModule(const ConfiguredImage& configuration)
{
    return fmt::format("{} with {} in {}{}", configuration.device.deviceTypeId,
                       text::counted(configuration.device.parameters.size(), "parameter"),
                       text::counted(configuration.bytes.size(), "byte"),
                       configuration.fieldbus == Fieldbus::Modbus ? " of registers" : "");
}

// A comparison goes parameter by parameter and byte by byte.
void requireSameKind(const ConfiguredImage& wanted, const ConfiguredImage& read,
                     const std::string& place)
{
    if (describedModule(wanted) != describedModule(read)) {
        throw Failure(Origin::Request, place,
                      fmt::format("Found a configuration of {}, expected one of {}",
                                  describedModule(read), describedModule(wanted)));
    }
}

} // namespace

Configuration::Configuration(std::shared_ptr<const ConfiguredImage> made) : content(std::move(made))
{}

Fieldbus Configuration::fieldbus() const
{
    return content->fieldbus;
}

const std::vector<char>& Configuration::image() const
{
    return content->image;
}

const std::vector<char>& Configuration::bytes() const
{
    return content->bytes;
}

std::vector<std::uint16_t> Configuration::registers() const
{
    return fieldbus() == Fieldbus::Modbus ? registersOfBytes(bytes())
                                          : std::vector<std::uint16_t>();
}

std::vector<Parameter> Configuration::parameters() const
{
    return plainParameters(content->device, content->owner->names());
}

std::vector<Parameter> Configuration::defaults() const
{
    return plainParameters(*content->defaults, content->owner->names());
}

std::vector<PlacedParameter> Configuration::places() const
{
    return plainPlaces(content->places);
}

bool Configuration::isChanged(std::size_t position) const
{
    return content->isChanged(position);
}

const std::vector<Finding>& Configuration::findings() const
{
    return content->findings;
}

std::string Configuration::text(Listing listing) const
{
    return configurationText(*content, listing);
}

std::string Configuration::csv(const CsvStyle& style, Listing listing) const
{
    return configurationCsv(*content, style, listing);
}

std::string Configuration::json(Listing listing) const
{
    return configurationJson(*content, listing);
}

std::string Configuration::valuesFile(Listing listing) const
{
    return configurationValues(*content, listing);
}

Comparison::Comparison(const Configuration& wanted, const Configuration& read,
                       const std::string& place)
{
    requireSameKind(*wanted.content, *read.content, place);
    auto made = std::make_shared<ImageComparison>(compared(*wanted.content, *read.content));
    made->findings = notesOf(*made, place);
    content = std::move(made);
}

bool Comparison::isSame() const
{
    return content->isSame();
}

std::vector<PlacedParameter> Comparison::deviations() const
{
    return plainPlaces(content->deviations);
}

const std::vector<std::size_t>& Comparison::strayBytes() const
{
    return content->strayBytes;
}

const std::vector<Finding>& Comparison::findings() const
{
    return content->findings;
}

std::string Comparison::text() const
{
    return comparisonText(*content);
}

std::string Comparison::csv(const CsvStyle& style) const
{
    return comparisonCsv(*content, style);
}

std::string Comparison::json() const
{
    return comparisonJson(*content);
}

} // namespace mxmodule
