#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace testkit {

/// A page as a browser takes it: its elements, and their identifiers and links. Markup that is not
/// well formed is a test failure.
class HtmlPage
{
public:
    explicit HtmlPage(const std::string& html) : page(html)
    {
        EXPECT_EQ(html.rfind("<!DOCTYPE html>\n", 0), 0U);
        static const std::regex tag("<(/?)([a-z0-9]+)((?: [a-z-]+=\"[^\"<>]*\")*)>");
        std::vector<std::string> open;
        std::string rest = html.substr(html.find('\n'));
        for (std::smatch match; std::regex_search(rest, match, tag); rest = match.suffix()) {
            EXPECT_EQ(match.prefix().str().find('<'), std::string::npos) << match.prefix();
            take(match[1].length() != 0, match[2], match[3], open);
        }
        EXPECT_EQ(rest.find('<'), std::string::npos) << rest;
        EXPECT_TRUE(open.empty());
    }

    /// Returns the markup between `from`, which must be there, and the next `to`.
    std::string between(const std::string& from, const std::string& to) const
    {
        const std::size_t begin = page.find(from);
        EXPECT_NE(begin, std::string::npos) << from;
        const std::size_t start = std::min(begin, page.size()) + from.size();
        return begin == std::string::npos ? "" : page.substr(start, page.find(to, start) - start);
    }

    /// Returns the words of the row `id` of a table, its cells with " | " between them.
    std::string row(const std::string& id) const
    {
        const std::string cells = between(" id=\"" + id + "\"", "</tr>");
        return words(std::regex_replace(cells.substr(cells.find('>') + 1),
                                        std::regex("</t[hd]><t[hd]"), " | <"));
    }

    /// Returns `markup` without its elements.
    static std::string words(const std::string& markup)
    {
        return std::regex_replace(markup, std::regex("<[^>]*>"), "");
    }

    /// Expects that each link leads to an element of the page.
    void expectLinksLead() const
    {
        for (const std::string& link : links) {
            EXPECT_EQ(link.substr(0, 1), "#") << link;
            EXPECT_EQ(ids.count(link.substr(1)), 1U) << link;
        }
    }

    bool has(const std::string& id) const { return ids.count(id) != 0; }

    std::set<std::string> names;     ///< Of the elements.
    std::multiset<std::string> ids;  ///< Identifiers.
    std::vector<std::string> links;  ///< Of `href`, as they are.
    std::vector<std::string> images; ///< Of `src`.
    std::vector<int> headings;       ///< Their levels, in their order.
    std::string page;                ///< The page itself.

private:
    void take(bool isEnd, const std::string& name, const std::string& attributes,
              std::vector<std::string>& open)
    {
        static const std::set<std::string> empty = {"meta", "img"};
        if (isEnd) {
            ASSERT_FALSE(open.empty());
            EXPECT_EQ(open.back(), name);
            open.pop_back();
            return;
        }
        names.insert(name);
        if (name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6') {
            headings.push_back(name[1] - '0');
        }
        if (empty.count(name) == 0) {
            open.push_back(name);
        }
        static const std::regex attribute("([a-z-]+)=\"([^\"]*)\"");
        for (std::sregex_iterator one(attributes.begin(), attributes.end(), attribute), end;
             one != end; ++one) {
            takeAttribute((*one)[1], (*one)[2]);
        }
    }

    void takeAttribute(const std::string& name, const std::string& value)
    {
        static const std::set<std::string> known = {
            "alt",       "aria-label", "charset",    "class",   "colspan", "content",
            "data-name", "href",       "http-equiv", "id",      "lang",    "name",
            "rowspan",   "scope",      "src",        "tabindex"};
        EXPECT_EQ(known.count(name), 1U) << name;
        if (name == "id") {
            EXPECT_EQ(ids.count(value), 0U) << value;
            ids.insert(value);
        } else if (name == "href") {
            links.push_back(value);
        } else if (name == "src") {
            images.push_back(value);
        }
    }
};

} // namespace testkit
