#include "report/HtmlTable.h"

#include <fmt/format.h>
#include <text/ShownText.h>
#include <text/Svg.h>

#include <utility>

namespace mxonline {

std::string htmlText(const std::string& text)
{
    return text::xmlEscaped(text::forTerminal(text));
}

HtmlTable::HtmlTable(std::vector<std::string> headings) : names(std::move(headings)) {}

void HtmlTable::add(const std::vector<std::string>& cells, const std::string& kind)
{
    rows += kind.empty() ? "<tr>" : fmt::format("<tr class=\"{}\">", kind);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        rows += fmt::format("<td data-name=\"{}\">{}</td>", names[i], htmlText(cells[i]));
    }
    rows += "</tr>\n";
}

std::string HtmlTable::html() const
{
    std::string head;
    for (const std::string& name : names) {
        head += "<th scope=\"col\">" + name + "</th>";
    }
    return fmt::format("<table>\n<thead><tr>{}</tr></thead>\n<tbody>\n{}</tbody>\n</table>\n", head,
                       rows);
}

} // namespace mxonline
