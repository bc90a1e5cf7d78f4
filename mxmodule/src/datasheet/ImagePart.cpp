#include "configuration/ParameterPlace.h"
#include "datasheet/DatasheetModule.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Hexadecimal.h>
#include <text/Html.h>

#include <algorithm>

namespace mxmodule {

namespace {

using text::htmlText;

constexpr std::size_t colourCount = 10; // of the style sheet

std::string linkTo(const DatasheetModule& module, const Parameter& parameter)
{
    return text::htmlLink(module.parameterId(parameter), htmlText(longNameOf(parameter)));
}

// The bits of the parameter at `position` in the byte `byte` of its place.
text::HtmlBits parameterBits(const DatasheetModule& module, std::size_t position, std::size_t byte)
{
    const Parameter& parameter = module.parameters[position];
    const ImagePlace& place = parameter.place;
    const std::string more =
        byte == place.byte ? parameter.shown : fmt::format("+{}", byte - place.byte);
    const unsigned low = place.bitLength == 0 ? 0 : place.bitOffset;
    const unsigned high = place.bitLength == 0 ? 7 : low + place.bitLength - 1;
    return {std::min(high, 7U), std::min(low, 7U),
            linkTo(module, parameter) + " <span class=\"faint\">" + htmlText(more) + "</span>",
            fmt::format("c{}", position % colourCount)};
}

// Parameters that share bits get lanes of their own.
void addBits(text::HtmlBits bits, std::vector<unsigned>& lanes, text::HtmlByte& byte)
{
    const unsigned mask = (2U << bits.highBit) - (1U << bits.lowBit);
    const auto free = std::find_if(lanes.begin(), lanes.end(),
                                   [mask](unsigned taken) { return (taken & mask) == 0; });
    bits.lane = static_cast<std::size_t>(free - lanes.begin());
    if (free == lanes.end()) {
        lanes.push_back(mask);
    } else {
        *free |= mask;
    }
    byte.lanes = lanes.size();
    byte.bits.push_back(std::move(bits));
}

text::HtmlByte imageByte(const DatasheetModule& module, std::size_t number,
                         const std::vector<std::size_t>& parameters)
{
    text::HtmlByte byte;
    byte.number = number;
    byte.cells = {text::hexOfBytes(module.raw.image(), number, 1)};
    std::vector<unsigned> lanes;
    for (const std::size_t position : parameters) {
        addBits(parameterBits(module, position, number), lanes, byte);
    }
    std::stable_sort(
        byte.bits.begin(), byte.bits.end(),
        [](const text::HtmlBits& a, const text::HtmlBits& b) { return a.highBit > b.highBit; });
    return byte;
}

// For each byte of the image the positions of the parameters in it.
std::vector<std::vector<std::size_t>> parametersByByte(const DatasheetModule& module)
{
    std::vector<std::vector<std::size_t>> all(module.raw.image().size());
    for (std::size_t i = 0; i < module.parameters.size(); ++i) {
        const Parameter& parameter = module.parameters[i];
        const std::size_t end = parameter.place.byte + parameter.place.bytes;
        for (std::size_t byte = parameter.place.byte; byte < std::min(end, all.size()); ++byte) {
            if (!parameter.stored.empty()) {
                all[byte].push_back(i);
            }
        }
    }
    return all;
}

std::string hexHtml(const std::vector<char>& bytes)
{
    constexpr std::size_t perLine = 16;
    std::string lines;
    for (std::size_t at = 0; at < bytes.size(); at += perLine) {
        lines += (at == 0 ? "" : "\n") + fmt::format("{:04x}  ", at) +
                 text::hexOfBytes(bytes, at, perLine);
    }
    return text::htmlElement("pre", lines, " class=\"hex\"") + "\n";
}

void addRegisters(const DatasheetModule& module, const PlacedParameter& place,
                  const std::vector<std::uint16_t>& registers, const text::HtmlBitTable& image,
                  text::HtmlTable& table)
{
    const Parameter& parameter = module.parameters[place.parameter];
    const std::size_t count = place.size / registerSize;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t number = place.begin / registerSize + i;
        const std::string part =
            count == 1 ? "" : fmt::format(" <span class=\"faint\">{} of {}</span>", i + 1, count);
        std::vector<text::HtmlCell> cells = {{std::to_string(number)},
                                             {fmt::format("{:04x}", registers[number])},
                                             {std::to_string(registers[number])},
                                             {linkTo(module, parameter) + part},
                                             {imagePlaceHtml(parameter, image)}};
        if (const auto first = module.place.firstRegister) {
            cells.push_back({std::to_string(*first + number)});
        }
        table.addNamed(cells, " id=\"" + module.id(fmt::format("r-{}", number)) + "\"");
    }
}

std::string registerTable(const DatasheetModule& module, const text::HtmlBitTable& image)
{
    if (!module.modbus) {
        return "<p>The parameters have no Modbus form: " + htmlText(module.noRegisters) + "</p>\n";
    }
    const std::vector<std::uint16_t> registers = module.modbus->registers();
    std::vector<std::string> headings = {"Register", "Hexadecimal", "Decimal", "Parameter",
                                         "Byte of the image"};
    if (module.place.firstRegister) {
        headings.emplace_back("Address on the coupler");
    }
    text::HtmlTable table(headings, text::counted(registers.size(), "register") +
                                        ", counted from 0 for this module");
    for (const PlacedParameter& place : module.modbus->places()) {
        addRegisters(module, place, registers, image, table);
    }
    return table.empty() ? "<p>The module has no registers for parameters.</p>\n"
                         : table.html(" class=\"cards registers\"");
}

} // namespace

text::HtmlBitTable parameterImageTable(const DatasheetModule& module)
{
    text::HtmlBitTable table(
        "Parameter image: " + text::counted(module.raw.image().size(), "byte") +
            " with the highest byte of a number first",
        module.id("p-"), {"Hex"});
    const auto parameters = parametersByByte(module);
    for (std::size_t byte = 0; byte < parameters.size(); ++byte) {
        table.add(imageByte(module, byte, parameters[byte]));
    }
    return table;
}

std::string parameterBytesHtml(const DatasheetModule& module, const std::string& name)
{
    const text::HtmlBitTable image = parameterImageTable(module);
    return module.heading("bytes", name) +
           (image.empty() ? "<p>The module has no parameter image.</p>\n"
                          : hexHtml(module.raw.image()) + image.html()) +
           module.heading("registers", "Modbus registers") + registerTable(module, image);
}

} // namespace mxmodule
