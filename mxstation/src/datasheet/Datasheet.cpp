#include "mxstation/Datasheet.h"

#include "datasheet/StationSheet.h"
#include "export/PlanTotals.h"

#include <fmt/format.h>
#include <mxmodule/Datasheet.h>
#include <text/Counted.h>
#include <text/Html.h>

#include <map>

namespace mxstation {

namespace {

using text::htmlText;

// Paths belong to the computer on which the page was made.
std::string fileName(const std::string& path)
{
    return path.substr(path.find_last_of('/') + 1);
}

std::string imageFact(const ImageBytes& image, std::uint64_t data)
{
    return fmt::format("{}, {} of modules", text::counted(image.size, "byte"), data);
}

std::string headerHtml(const StationSheet& sheet, const std::string& title)
{
    const Plan& plan = sheet.plan;
    const PlanTotals totals(plan);
    const std::string modules =
        fmt::format("{} of {}", plan.modules.size(), text::counted(sheet.types.size(), "type"));
    const std::string parameters = fmt::format("{}, {}", text::counted(totals.parameters, "byte"),
                                               text::counted(totals.registers, "register"));
    return "<div>\n<p class=\"kind\">Data sheet of a station</p>\n" +
           text::htmlElement("h1", htmlText(title)) + "\n" +
           text::htmlFacts(
               {{"Modules", {modules}},
                {"Input image", {imageFact(plan.input, totals.input)}},
                {"Output image", {imageFact(plan.output, totals.output)}},
                {"Parameters", {parameters}},
                {"Channels", {std::to_string(plan.channels.size())}},
                {"File", {htmlText(fileName(plan.file))}},
                {"SHA-256 of the file", {sheet.provenance.stationSum(), " class=\"sum\""}}}) +
           "</div>\n";
}

} // namespace

StationSheet::StationSheet(const Plan& shown)
    : plan(shown),
      provenance(shown),
      inputs(imageTable(shown, true)),
      outputs(imageTable(shown, false))
{
    std::map<std::string, std::size_t> known; // by the sum of the file
    for (const PlannedModule& module : plan.modules) {
        const auto [found, isNew] =
            known.emplace(provenance.moduleSum(module.position), types.size());
        if (isNew) {
            types.push_back({&module, {}});
        }
        types[found->second].positions.push_back(module.position);
        typeOfFile.push_back(found->second);
    }
}

std::size_t StationSheet::typeOf(const PlannedModule& module) const
{
    return typeOfFile[module.position - 1];
}

std::string StationSheet::moduleLink(const PlannedModule& module)
{
    return text::htmlLink(fmt::format("module-{}", module.position),
                          fmt::format("{} {}", module.position, htmlText(module.name)));
}

std::string StationSheet::typeLink(std::size_t type) const
{
    return text::htmlLink(fmt::format("type-{}", type + 1),
                          htmlText(labelOf(types[type].first->module)));
}

std::string StationSheet::bytesLink(const ImageBytes& bytes, bool isInput) const
{
    return bytes.size == 0 ? "none" : (isInput ? inputs : outputs).link(bytes.offset, bytes.size);
}

std::string labelOf(const mxmodule::Module& module)
{
    const std::string label = module.label();
    return label.empty() ? "Module " + module.moduleId() : label;
}

std::string datasheet(const Plan& plan)
{
    const StationSheet sheet(plan);
    const std::string title = plan.station.empty() ? "Station" : plan.station;
    mxmodule::DatasheetPage page = {title, headerHtml(sheet, title), {}, "", rowStyle(sheet)};
    const auto add = [&page](const char* id, const char* words, const std::string& html) {
        if (!html.empty()) {
            page.contents.emplace_back(id, words);
            page.content += fmt::format("<h2 id=\"{}\">{}</h2>\n{}", id, words, html);
        }
    };
    add("row", "Row", rowHtml(sheet));
    add("images", "Process images", imagesHtml(sheet));
    add("channels", "Channels", channelsHtml(sheet));
    add("modbus", "Modbus registers", modbusHtml(sheet));
    add("modules", "Modules", modulesHtml(sheet));
    add("types", "Types of modules", typesHtml(sheet));
    return datasheetPage(page);
}

} // namespace mxstation
