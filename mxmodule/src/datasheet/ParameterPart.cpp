#include "configuration/ParameterPlace.h"
#include "datasheet/DatasheetModule.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Html.h>

#include <algorithm>
#include <functional>

namespace mxmodule {

namespace {

using text::htmlText;

// "10 to 20 mA", or the options with their numbers.
std::string acceptedHtml(const Parameter& parameter)
{
    if (!parameter.hasOptions) {
        const std::string unit = parameter.unit.empty() ? "" : " " + parameter.unit;
        return htmlText(parameter.minimum + " to " + parameter.maximum + unit);
    }
    std::string items;
    for (const Option& option : parameter.options) {
        items += text::htmlElement("li", "<span class=\"number\">" + htmlText(option.value) +
                                             "</span> " + htmlText(option.text));
    }
    return items.empty() ? "no option" : "<ul class=\"options\">" + items + "</ul>";
}

// The value, and the number in the image where that is another text.
std::string valueHtml(const Parameter& parameter)
{
    if (parameter.stored.empty()) {
        return "<span class=\"faint\">outside the parameter image</span>";
    }
    const bool isSame = parameter.shown == parameter.stored ||
                        parameter.shown == parameter.stored + " " + parameter.unit;
    return htmlText(parameter.shown) +
           (isSame ? "" : " <span class=\"faint\">" + htmlText(parameter.stored) + "</span>");
}

std::string typeHtml(const Parameter& parameter)
{
    const unsigned bits = parameter.place.bitLength;
    return htmlText(parameter.type) + (bits == 0 ? "" : ", " + text::counted(bits, "bit"));
}

std::string linksOrNone(const std::string& links)
{
    return links.empty() ? "\u2013" : links;
}

text::HtmlCell nameCell(const std::string& name, const Parameter& parameter)
{
    return {htmlText(name) + " <span class=\"faint\">#" + htmlText(parameter.id) + "</span>"};
}

// A row of a table of parameters; `name` is that of the parameter, with its channel if needed.
using AddParameter = std::function<void(std::size_t position, const std::string& name)>;

// Calls `add` for all parameters in their groups. Channels with one parameter each have no heading.
void addInGroups(const std::vector<Parameter>& parameters, text::HtmlTable& table,
                 const AddParameter& add)
{
    const auto groups = groupsOf(parameters);
    const bool isList = std::all_of(groups.begin(), groups.end(), [&](const auto& group) {
        return group.size() == 1 || !parameters[group.front()].channel;
    });
    for (const std::vector<std::size_t>& group : groups) {
        if (!isList) {
            table.beginGroup(htmlText(groupOf(parameters[group.front()])));
        }
        for (const std::size_t i : group) {
            add(i, isList ? longNameOf(parameters[i]) : parameters[i].name);
        }
    }
}

std::string rowId(const DatasheetModule& module, const Parameter& parameter)
{
    return " id=\"" + htmlText(module.parameterId(parameter)) + "\"";
}

} // namespace

std::string imagePlaceHtml(const Parameter& parameter, const text::HtmlBitTable& image)
{
    const ImagePlace& place = parameter.place;
    if (parameter.stored.empty()) {
        return "\u2013";
    }
    if (place.bitLength == 0) {
        return image.link(place.byte, place.bytes);
    }
    return image.link(place.byte) + (place.bitLength == 1
                                         ? fmt::format(", bit {}", place.bitOffset)
                                         : fmt::format(", bits {}\u2013{}", place.bitOffset,
                                                       place.bitOffset + place.bitLength - 1));
}

std::vector<std::string> registerLinks(const DatasheetModule& module)
{
    std::vector<std::string> links(module.parameters.size());
    if (!module.modbus) {
        return links;
    }
    const auto link = [&](std::size_t number) {
        return text::htmlLink(module.id(fmt::format("r-{}", number)), std::to_string(number));
    };
    for (const PlacedParameter& place : module.modbus->places()) {
        const std::size_t first = place.begin / registerSize;
        const std::size_t count = place.size / registerSize;
        std::string& all = links[place.parameter];
        all += (all.empty() ? "" : ", ") + link(first);
        all += count < 2 ? "" : "\u2013" + link(first + count - 1);
    }
    return links;
}

std::string parametersHtml(const DatasheetModule& module, bool withPlaces)
{
    std::vector<std::string> headings = {"Parameter", "Type", "Range or options", "Default"};
    if (withPlaces) {
        headings.insert(headings.end(), {"Byte", "Register"});
    }
    text::HtmlTable table(headings, "Parameters with what they accept");
    const text::HtmlBitTable image = parameterImageTable(module);
    const std::vector<std::string> registers = registerLinks(module);
    addInGroups(module.defaults, table, [&](std::size_t i, const std::string& name) {
        const Parameter& parameter = module.defaults[i];
        std::vector<text::HtmlCell> cells = {nameCell(name, parameter),
                                             {typeHtml(parameter)},
                                             {acceptedHtml(parameter)},
                                             {valueHtml(parameter)}};
        if (withPlaces) {
            cells.push_back({imagePlaceHtml(parameter, image)});
            cells.push_back({linksOrNone(registers[i])});
        }
        table.addNamed(cells, rowId(module, parameter));
    });
    return module.heading("parameters", "Parameters") +
           (table.empty() ? "<p>The module has no parameters.</p>\n"
                          : table.html(" class=\"cards\""));
}

std::string valuesHtml(const DatasheetModule& module)
{
    text::HtmlTable table({"Parameter", "Value", "Default", "Byte", "Register"},
                          "Values of the parameters; those that differ from the default are bold");
    const text::HtmlBitTable image = parameterImageTable(module);
    const std::vector<std::string> registers = registerLinks(module);
    addInGroups(module.parameters, table, [&](std::size_t i, const std::string& name) {
        const Parameter& parameter = module.parameters[i];
        const bool isChanged = module.raw.isChanged(i);
        const std::string value = valueHtml(parameter);
        table.addNamed({nameCell(name, parameter),
                        {isChanged ? text::htmlElement("strong", value) : value},
                        {isChanged ? valueHtml(module.defaults[i]) : "the same"},
                        {imagePlaceHtml(parameter, image)},
                        {linksOrNone(registers[i])}},
                       rowId(module, parameter) + (isChanged ? " class=\"changed\"" : ""));
    });
    return module.heading("values", "Parameters") + (table.empty()
                                                         ? "<p>The module has no parameters.</p>\n"
                                                         : table.html(" class=\"cards\""));
}

} // namespace mxmodule
