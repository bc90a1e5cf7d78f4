#include "datasheet/DatasheetModule.h"

#include <mxmodule/ProductPicture.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Html.h>

#include <array>
#include <utility>

namespace mxmodule {

namespace {

// The words of a data sheet for the static properties; others are shown by their names.
constexpr std::array<std::pair<const char*, const char*>, 13> propertyWords = {{
    {"moduleId", "Module identifier"},
    {"moduleType", "Module type"},
    {"brandVersion", "Brand version"},
    {"brandId", "Brand identifier"},
    {"brandSerialNumber", "Serial number"},
    {"productVersion", "Product version"},
    {"brandOrderCode", "Order code"},
    {"brandLabelName", "Label"},
    {"brandHwRevision", "Hardware revision"},
    {"mxVersion", "Version of the mx file"},
    {"gtin", "GTIN"},
    {"calibrationDate", "Calibration date"},
    {"deviceTypeId", "Device type"},
}};

// Shown as sizes, with units.
bool isOfData(const std::string& name)
{
    for (const char* end : {"DataSize", "DataOffset"}) {
        const std::string ending = end;
        if (name.size() > ending.size() &&
            name.compare(name.size() - ending.size(), ending.size(), ending) == 0) {
            return true;
        }
    }
    return false;
}

std::string wordsOf(const std::string& property)
{
    for (const auto& [name, words] : propertyWords) {
        if (property == name) {
            return words;
        }
    }
    return property;
}

text::HtmlCell placeCell(const DatasheetModule& module, bool isInput, std::uint32_t size)
{
    const ImageOffsets offsets = module.module.sizes().offsets;
    const std::string byte = std::to_string(isInput ? offsets.input : offsets.output);
    const std::string id = module.id((isInput ? "in-" : "out-") + byte);
    return {size == 0 ? "" : "from byte " + text::htmlLink(id, byte)};
}

} // namespace

std::string productImageHtml(const Module& module)
{
    const auto picture = pictureOf(module);
    return picture ? fmt::format("<img class=\"product\" alt=\"Product image of {}\" src=\"{}\">\n",
                                 text::htmlText(module.label()), text::htmlText(dataUrl(*picture)))
                   : "";
}

std::string identityHtml(const DatasheetModule& module)
{
    text::HtmlTable table({"Property", "Value"},
                          "Static properties, with their names in the device");
    const auto add = [&table](const std::string& name, const std::string& value) {
        const std::string words = wordsOf(name);
        table.addNamed(
            {{text::htmlText(words) +
              (words == name ? "" : " <code class=\"faint\">" + text::htmlText(name) + "</code>")},
             {text::htmlText(value)}});
    };
    for (const Property& property : module.module.properties()) {
        if (!isOfData(property.name)) {
            add(property.name, property.value);
        }
    }
    add("deviceTypeId", module.module.deviceTypeId());
    return module.heading("identity", "Identity") + table.html();
}

std::string sizesHtml(const DatasheetModule& module, bool isPlaced)
{
    const DataSizes sizes = module.module.sizes();
    const std::string registers =
        module.modbus ? text::counted(module.modbus->registers().size(), "Modbus register")
                      : "no Modbus registers";
    text::HtmlTable table({"Data", "Size", "Place, registers"}, "Sizes of the data");
    const auto add = [&](const char* data, std::uint32_t size, const text::HtmlCell& place) {
        table.addNamed({{data}, {text::counted(size, "byte")}, place});
    };
    add("Input process data", sizes.input,
        isPlaced ? placeCell(module, true, sizes.input) : text::HtmlCell{""});
    add("Output process data", sizes.output,
        isPlaced ? placeCell(module, false, sizes.output) : text::HtmlCell{""});
    add("Parameters", sizes.parameters, {registers});
    add("Diagnosis data", sizes.diagnosis, {""});
    return module.heading("sizes", "Sizes") + table.html(" class=\"sizes\"");
}

} // namespace mxmodule
