#include "datasheet/StationSheet.h"
#include "export/ModuleParameters.h"

#include <fmt/format.h>
#include <mxmodule/Datasheet.h>
#include <text/Counted.h>
#include <text/Html.h>

namespace mxstation {

namespace {

using text::htmlText;

constexpr unsigned partLevel = 4; // of the headings in a chapter

std::string factsOf(const StationSheet& sheet, const PlannedModule& module)
{
    const std::string parameters =
        fmt::format("{}, {} differ from the default", module.module.parameters().size(),
                    changedParameters(module).size());
    return text::htmlFacts({{"Type", {sheet.typeLink(sheet.typeOf(module))}},
                            {"Reference", {htmlText(module.reference)}},
                            {"Input bytes", {sheet.bytesLink(module.input, true)}},
                            {"Output bytes", {sheet.bytesLink(module.output, false)}},
                            {"Parameters", {parameters}}});
}

std::string chapterHtml(const StationSheet& sheet, const PlannedModule& module)
{
    mxmodule::DatasheetPlace place = {fmt::format("m{}-", module.position), partLevel};
    if (sheet.plan.modbus) {
        place.firstRegister = firstRegisterOf(sheet.plan.modbus->parameters, module.position);
    }
    return fmt::format("<section id=\"module-{0}\">\n<h3>{0} {1}</h3>\n", module.position,
                       htmlText(module.name)) +
           factsOf(sheet, module) + datasheetOfValues(module.module, module.image, place) +
           "</section>\n";
}

std::string modulesOf(const StationSheet& sheet, const SheetType& type)
{
    std::string links;
    for (const std::size_t position : type.positions) {
        links += (links.empty() ? "" : ", ") +
                 StationSheet::moduleLink(sheet.plan.modules[position - 1]);
    }
    return links;
}

} // namespace

std::string modulesHtml(const StationSheet& sheet)
{
    std::string chapters;
    for (const PlannedModule& module : sheet.plan.modules) {
        chapters += chapterHtml(sheet, module);
    }
    return chapters;
}

std::string typesHtml(const StationSheet& sheet)
{
    std::string chapters;
    for (std::size_t i = 0; i < sheet.types.size(); ++i) {
        const SheetType& type = sheet.types[i];
        chapters += fmt::format("<section id=\"type-{}\">\n", i + 1) +
                    text::htmlElement("h3", htmlText(labelOf(type.first->module))) + "\n" +
                    text::htmlFacts({{"Modules", {modulesOf(sheet, type)}}}) +
                    datasheetOfType(type.first->module, {fmt::format("t{}-", i + 1), partLevel}) +
                    "</section>\n";
    }
    return chapters;
}

} // namespace mxstation
