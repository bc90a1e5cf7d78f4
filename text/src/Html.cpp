#include "text/Html.h"

#include "text/ShownText.h"
#include "text/Svg.h"

#include <utility>

namespace text {

namespace {

std::string quotesEscaped(const std::string& escaped)
{
    std::string html;
    for (const char c : escaped) {
        html += c == '"' ? std::string("&quot;") : std::string(1, c);
    }
    return html;
}

std::string dataName(const std::string& heading)
{
    return " data-name=\"" + htmlText(heading) + "\"";
}

} // namespace

std::string htmlText(const std::string& bytes)
{
    return quotesEscaped(xmlEscaped(forTerminal(bytes)));
}

std::string htmlElement(const std::string& name, const std::string& html,
                        const std::string& attributes)
{
    return "<" + name + attributes + ">" + html + "</" + name + ">";
}

std::string htmlLink(const std::string& id, const std::string& html)
{
    return htmlElement("a", html, " href=\"#" + htmlText(id) + "\"");
}

std::string htmlFacts(const std::vector<HtmlFact>& facts)
{
    std::string list;
    for (const HtmlFact& fact : facts) {
        if (!fact.value.html.empty()) {
            list += htmlElement("dt", fact.name) +
                    htmlElement("dd", fact.value.html, fact.value.attributes);
        }
    }
    return htmlElement("dl", list, " class=\"facts\"") + "\n";
}

HtmlTable::HtmlTable(std::vector<std::string> headings, std::string caption)
    : names(std::move(headings)), title(std::move(caption))
{}

void HtmlTable::add(const std::vector<std::string>& cells, const std::string& kind)
{
    rows += kind.empty() ? "<tr>" : "<tr class=\"" + kind + "\">";
    for (std::size_t i = 0; i < cells.size(); ++i) {
        rows += htmlElement("td", htmlText(cells[i]), dataName(names[i]));
    }
    rows += "</tr>\n";
}

void HtmlTable::addNamed(const std::vector<HtmlCell>& cells, const std::string& attributes)
{
    std::string row;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        row += htmlElement(i == 0 ? "th" : "td", cells[i].html,
                           (i == 0 ? " scope=\"row\"" : "") + dataName(names[i]) +
                               cells[i].attributes);
    }
    rows += htmlElement("tr", row, attributes) + "\n";
}

void HtmlTable::beginGroup(const std::string& html, const std::string& attributes)
{
    const std::string span = " colspan=\"" + std::to_string(names.size()) + "\"";
    rows += rows.empty() ? "" : "</tbody>\n<tbody>\n";
    rows += htmlElement("tr", htmlElement("th", html, span + " scope=\"rowgroup\"" + attributes),
                        " class=\"group\"") +
            "\n";
}

std::string HtmlTable::html(const std::string& attributes) const
{
    std::string head;
    for (const std::string& name : names) {
        head += htmlElement("th", name, " scope=\"col\"");
    }
    return "<table" + attributes + ">\n" +
           (title.empty() ? "" : htmlElement("caption", title) + "\n") +
           htmlElement("thead", htmlElement("tr", head)) + "\n<tbody>\n" + rows +
           "</tbody>\n</table>\n";
}

} // namespace text
