#include "datasheet/DatasheetModule.h"

#include <mxauthor/Explain.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Html.h>
#include <text/Sha256.h>

namespace mxmodule {

namespace {

// Paths belong to the computer on which the page was made.
std::string withoutFolder(const std::string& path)
{
    return path.substr(path.find_last_of('/') + 1);
}

std::string groupsTable(const std::vector<char>& bytes)
{
    text::HtmlTable table({"Group", "Content", "Offset", "Offset in hexadecimal", "Size"},
                          "Groups of the file");
    for (const mxauthor::ExplainedGroup& group : mxauthor::explain(bytes).groups) {
        table.addNamed({{fmt::format("<code>{:04x}</code>", group.id)},
                        {text::htmlText(group.name.empty() ? "unknown" : group.name) +
                         (group.isRead ? "" : " <span class=\"faint\">not read</span>")},
                        {std::to_string(group.place.offset)},
                        {fmt::format("<code>{:06x}</code>", group.place.offset)},
                        {text::counted(group.place.length, "byte")}});
    }
    return table.html(" class=\"cards\"");
}

} // namespace

std::string fileHtml(const DatasheetModule& module)
{
    const std::vector<char> bytes = module.mxBytes();
    return module.heading("file", "Mx file") +
           text::htmlFacts(
               {{"File", {text::htmlText(withoutFolder(module.module.name()))}},
                {"Size", {text::counted(bytes.size(), "byte")}},
                {"SHA-256", {text::sha256({bytes.data(), bytes.size()}), " class=\"sum\""}}}) +
           groupsTable(bytes);
}

} // namespace mxmodule
