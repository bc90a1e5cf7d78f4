#include "explain/ExplanationParts.h"

#include <fmt/format.h>
#include <text/Html.h>

namespace mxmodule {

namespace {

using text::htmlText;

constexpr const char* style = R"(
body { font: 14px/1.45 system-ui, sans-serif; margin: 2em auto; max-width: 75em; color: #222;
       background: #fff; padding: 0 1em; }
h1 { font-size: 1.3em; }
h2 { font-size: 1.05em; margin: 1.6em 0 .3em; }
table { border-collapse: collapse; width: 100%; }
td { padding: .1em .7em .1em 0; vertical-align: top; }
td.offset, td.bytes { font-family: ui-monospace, monospace; white-space: pre-wrap; }
td.offset { color: #666; white-space: nowrap; width: 6em; }
td.bytes { width: 17em; overflow-wrap: anywhere; }
td.field { white-space: nowrap; width: 9em; }
tr.record td { padding-top: .6em; font-weight: 600; }
tr.unread td { color: #8a8a8a; font-style: italic; }
tr:hover td { background: #fff3c4; }
nav a { margin-right: 1em; white-space: nowrap; }
@media (prefers-color-scheme: dark) {
  body { background: #1b1b1b; color: #ddd; } tr:hover td { background: #4a4120; }
  td.offset { color: #999; } nav a { color: #8ab4f8; }
}
)";

std::string rowOf(const Explanation& explanation, const ExplainedPart& part)
{
    const std::string value = valueOfPart(part);
    const std::string meaning = meaningOfPart(part);
    const std::string gap = value.empty() || meaning.empty() ? "" : " – ";
    return fmt::format("<tr{}><td class=\"offset\">{:#08x}</td><td class=\"bytes\">{}</td>"
                       "<td class=\"field\">{}</td><td>{}{}{}</td></tr>\n",
                       part.isRead ? "" : " class=\"unread\"", part.offset,
                       hexOfPart(explanation, part), htmlText(part.field), htmlText(value), gap,
                       htmlText(meaning));
}

std::string navigation(const Explanation& explanation)
{
    std::string html = "<nav>";
    for (std::size_t i = 0; i < explanation.groups().size(); ++i) {
        const ExplainedGroup& group = explanation.groups()[i];
        html +=
            fmt::format("<a href=\"#group-{}\">{:04x} {}</a> ", i, group.id, htmlText(group.name));
    }
    return html + "</nav>\n";
}

std::string groupHeading(const Explanation& explanation, const ExplainedPart& part)
{
    return part.group ? fmt::format("<h2 id=\"group-{}\">{}</h2>\n", *part.group,
                                    htmlText(headingOf(explanation.groups()[*part.group])))
                      : "";
}

std::string groupTables(const Explanation& explanation)
{
    std::string html;
    const ExplainedPart* previous = nullptr;
    for (const ExplainedPart& part : explanation.parts()) {
        if (beginsGroup(part, previous)) {
            html += previous == nullptr ? "" : "</table>\n";
            html += groupHeading(explanation, part) + "<table>\n";
        }
        if (beginsRecord(part, previous) && !part.subject.empty()) {
            html += fmt::format("<tr class=\"record\"><td></td><td colspan=\"3\">{}</td></tr>\n",
                                htmlText(part.subject));
        }
        html += rowOf(explanation, part);
        previous = &part;
    }
    return html + (previous == nullptr ? "" : "</table>\n");
}

} // namespace

std::string Explanation::html() const
{
    const std::string name = htmlText(file().name());
    return fmt::format(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width\">\n"
        "<title>{}</title>\n<style>{}</style>\n</head>\n<body>\n"
        "<h1>{}, {} bytes</h1>\n{}{}{}</body>\n</html>\n",
        name, style, name, file().bytes().size(),
        !failure() ? "" : fmt::format("<p><strong>{}</strong></p>\n", htmlText(failure()->text)),
        navigation(*this), groupTables(*this));
}

} // namespace mxmodule
