#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The elements of the pages that the libraries write.
namespace text {

/// Returns `bytes` as the content of an element or of an attribute in double quotes: in UTF-8,
/// control characters and direction marks visible as on a terminal, markup escaped.
std::string htmlText(const std::string& bytes);

/// Returns the element `name` around `html`. `attributes` begin with a blank, or are empty.
std::string htmlElement(const std::string& name, const std::string& html,
                        const std::string& attributes = "");

/// Returns a link to the element `id` of the same page. `html` is its content.
std::string htmlLink(const std::string& id, const std::string& html);

/// A cell of a table.
struct HtmlCell
{
    std::string html;            ///< Its content.
    std::string attributes = {}; ///< Begin with a blank, or are empty.
};

/// A property by its name and its value.
struct HtmlFact
{
    std::string name; ///< Without markup.
    HtmlCell value;   ///< A fact with an empty one is left out.
};

/// Returns a list of facts, a `dl` of the class "facts".
std::string htmlFacts(const std::vector<HtmlFact>& facts);

/// A table of a page. On a narrow window each row is a block in which every cell has its heading,
/// its attribute data-name, if the style sheet says so.
class HtmlTable
{
public:
    /// `headings` and `caption` contain no markup. An empty caption is left out.
    explicit HtmlTable(std::vector<std::string> headings, std::string caption = "");

    /// Appends a row of texts, which may be any. `kind` is a class of the style sheet, or empty.
    void add(const std::vector<std::string>& cells, const std::string& kind = "");

    /// Appends a row whose first cell is its heading. `attributes` are those of the row.
    void addNamed(const std::vector<HtmlCell>& cells, const std::string& attributes = "");

    /// Begins a group of rows, with a row that is the heading `html` of it.
    void beginGroup(const std::string& html, const std::string& attributes = "");

    bool empty() const { return rows.empty(); } ///< Whether it has no row.

    /// Returns the table. `attributes` begin with a blank, or are empty.
    std::string html(const std::string& attributes = "") const;

private:
    std::vector<std::string> names;
    std::string title;
    std::string rows;
};

} // namespace text
