#include "datasheet/StationSheet.h"
#include "export/LayoutText.h"
#include "export/ReservedPlaces.h"

#include <mxmodule/ProductPicture.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Html.h>

namespace mxstation {

namespace {

using text::htmlText;

// The picture is a background of the type's class: a row has many modules of one type.
std::string picturesHtml(const StationSheet& sheet)
{
    std::string items;
    for (const PlannedModule& module : sheet.plan.modules) {
        const std::string picture =
            fmt::format("<span class=\"picture picture-{}\"></span>", sheet.typeOf(module) + 1);
        items += text::htmlElement(
            "li", text::htmlLink(fmt::format("module-{}", module.position),
                                 picture + fmt::format("<span>{} {}</span>", module.position,
                                                       htmlText(module.name))));
    }
    return items.empty() ? "" : "<ol class=\"row\">" + items + "</ol>\n";
}

void addReserved(const StationSheet& sheet, const ReservedPlace& place, text::HtmlTable& table)
{
    table.addNamed({{"\u2013"},
                    {"reserved" + (place.name.empty() ? "" : ": " + htmlText(place.name))},
                    {"\u2013"},
                    {sheet.bytesLink(place.input, true)},
                    {sheet.bytesLink(place.output, false)},
                    {"\u2013"},
                    {"\u2013"}});
}

void addModule(const StationSheet& sheet, const PlannedModule& module, text::HtmlTable& table)
{
    table.addNamed(
        {{std::to_string(module.position)},
         {text::htmlLink(fmt::format("module-{}", module.position), htmlText(module.name))},
         {sheet.typeLink(sheet.typeOf(module))},
         {sheet.bytesLink(module.input, true)},
         {sheet.bytesLink(module.output, false)},
         {std::to_string(module.image.size())},
         {module.noRegisters ? "none" : std::to_string(module.registers.size())}});
}

std::string rowTable(const StationSheet& sheet)
{
    text::HtmlTable table(
        {"Position", "Name", "Type", "Input bytes", "Output bytes", "Parameter bytes", "Registers"},
        "Modules and reserved places in their order");
    const auto places = reservedPlaces(sheet.plan);
    auto place = places.begin();
    const auto addPlaces = [&](std::size_t end) {
        for (; place != places.end() && place->first < end; ++place) {
            addReserved(sheet, place->second, table);
        }
    };
    for (const PlannedModule& module : sheet.plan.modules) {
        addPlaces(module.entry);
        addModule(sheet, module, table);
    }
    addPlaces(std::string::npos);
    return table.empty() ? "<p>The station has no modules.</p>\n" : table.html(" class=\"cards\"");
}

} // namespace

std::string rowStyle(const StationSheet& sheet)
{
    std::string rules;
    for (std::size_t type = 0; type < sheet.types.size(); ++type) {
        if (const auto picture = mxmodule::pictureOf(sheet.types[type].first->module)) {
            rules += fmt::format(".picture-{} {{ background-image: url(\"{}\"); }}\n", type + 1,
                                 dataUrl(*picture));
        }
    }
    return rules;
}

std::string rowHtml(const StationSheet& sheet)
{
    return picturesHtml(sheet) + rowTable(sheet) + "<p>Layout " +
           htmlText(layoutText(sheet.plan.layout)) + ".</p>\n";
}

} // namespace mxstation
