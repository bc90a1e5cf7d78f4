#include "mxmodule/Datasheet.h"

#include "datasheet/DatasheetModule.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Html.h>
#include <text/TextWidth.h>

namespace mxmodule {

namespace {

using text::htmlText;

constexpr std::size_t longestTitle = 50; // columns; browsers cut longer ones

std::string titleOf(const Module& module)
{
    const std::string label = text::labelOf(module.label());
    return label.empty() ? "Module " + module.moduleId() : label;
}

std::string propertyOf(const Module& module, const std::string& name)
{
    for (const Property& property : module.properties()) {
        if (property.name == name) {
            return property.value;
        }
    }
    return "";
}

std::string headerOf(const Module& module)
{
    const DataSizes sizes = module.sizes();
    const std::string data = fmt::format("{} in, {} out", text::counted(sizes.input, "byte"),
                                         text::counted(sizes.output, "byte"));
    const std::string parameters = fmt::format("{} in {}", module.parameters().size(),
                                               text::counted(sizes.parameters, "byte"));
    const text::HtmlCell orderCode = {htmlText(propertyOf(module, "brandOrderCode"))};
    return "<div>\n<p class=\"kind\">Data sheet</p>\n" +
           text::htmlElement("h1", htmlText(titleOf(module))) + "\n" +
           text::htmlFacts({{"Order code", orderCode},
                            {"Module", {htmlText(module.moduleId())}},
                            {"Process data", {data}},
                            {"Channels", {std::to_string(module.channels().size())}},
                            {"Parameters", {parameters}}}) +
           "</div>\n" + productImageHtml(module);
}

std::string navigation(const DatasheetPage& page)
{
    std::string items;
    for (const auto& [id, words] : page.contents) {
        items += text::htmlElement("li", text::htmlLink(id, htmlText(words)));
    }
    return "<nav aria-label=\"Contents\">\n<ol>" + items + "</ol>\n</nav>\n";
}

} // namespace

std::string datasheetPage(const DatasheetPage& page)
{
    const std::string title = htmlText(text::shortened(text::labelOf(page.title), longestTitle));
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
           "style-src 'unsafe-inline'; img-src data:\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
           title + " \u2013 data sheet</title>\n<style>" + datasheetStyle(page.title) + page.style +
           "</style>\n</head>\n<body>\n<a class=\"skip\" href=\"#content\">To the content</a>\n"
           "<header>\n" +
           page.header + "</header>\n" + navigation(page) +
           "<main id=\"content\" tabindex=\"-1\">\n" + page.content +
           "</main>\n<footer>\n<p>Written by mxtool " + MXMODULE_VERSION +
           "</p>\n</footer>\n</body>\n</html>\n";
}

std::string datasheet(const Module& shown)
{
    const DatasheetModule module(shown, shown.defaultImage(), {});
    return datasheetPage({titleOf(shown),
                          headerOf(shown),
                          {{"identity", "Identity"},
                           {"sizes", "Sizes"},
                           {"image", "Process image"},
                           {"channels", "Channels"},
                           {"parameters", "Parameters"},
                           {"bytes", "Default parameter image"},
                           {"registers", "Modbus registers"},
                           {"file", "Mx file"}},
                          identityHtml(module) + sizesHtml(module, true) + channelsHtml(module) +
                              parametersHtml(module, true) +
                              parameterBytesHtml(module, "Default parameter image") +
                              fileHtml(module)});
}

std::string datasheetOfType(const Module& shown, const DatasheetPlace& place)
{
    const DatasheetModule module(shown, shown.defaultImage(), place);
    return "<div class=\"beside\">\n<div>\n" + identityHtml(module) + "</div>\n" +
           productImageHtml(shown) + "</div>\n" + sizesHtml(module, false) +
           parametersHtml(module, false) + fileHtml(module);
}

std::string datasheetOfValues(const Module& shown, const std::vector<char>& image,
                              const DatasheetPlace& place)
{
    const DatasheetModule module(shown, image, place);
    return valuesHtml(module) + parameterBytesHtml(module, "Parameter image");
}

} // namespace mxmodule
