#pragma once

#include <string>
#include <vector>

namespace mxonline {

/// Returns `text` as the content of an element: control characters visible, markup escaped.
std::string htmlText(const std::string& text);

/// A table of a page. On a narrow window each row is a block in which every cell has its heading.
class HtmlTable
{
public:
    /// `headings` contain no markup.
    explicit HtmlTable(std::vector<std::string> headings);

    /// Appends a row of texts, which may be any. `kind` is a class of the style sheet, or empty.
    void add(const std::vector<std::string>& cells, const std::string& kind = "");

    bool empty() const { return rows.empty(); }

    std::string html() const;

private:
    std::vector<std::string> names;
    std::string rows;
};

} // namespace mxonline
