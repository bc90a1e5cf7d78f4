#pragma once

#include <gtest/gtest.h>

#include <algorithm>
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
        std::vector<std::string> open;
        std::size_t end = html.find('\n');
        for (std::size_t begin = html.find('<', end); begin < html.size();
             begin = html.find('<', end)) {
            end = html.find('>', begin);
            if (end == std::string::npos) {
                ADD_FAILURE() << html.substr(begin);
                break;
            }
            takeTag(html.substr(begin + 1, end - begin - 1), open);
        }
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
        std::string cells = between(" id=\"" + id + "\"", "</tr>");
        cells.erase(0, cells.find('>') + 1);
        for (const std::string end : {"</td><t", "</th><t"}) {
            for (std::size_t at = cells.find(end); at != std::string::npos; at = cells.find(end)) {
                cells.replace(at, end.size(), " | <t");
            }
        }
        return words(cells);
    }

    /// Returns `markup` without its elements.
    static std::string words(const std::string& markup)
    {
        std::string text;
        bool isTag = false;
        for (const char c : markup) {
            isTag = isTag || c == '<';
            text += isTag ? "" : std::string(1, c);
            isTag = isTag && c != '>';
        }
        return text;
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
    // The content of a tag: "/td", "td", "td class=\"a\"". No regular expression: that of the
    // standard library needs much memory for long values.
    void takeTag(const std::string& tag, std::vector<std::string>& open)
    {
        if (tag[0] == '/') {
            ASSERT_FALSE(open.empty());
            EXPECT_EQ(open.back(), tag.substr(1));
            open.pop_back();
            return;
        }
        const std::string name = tag.substr(0, tag.find(' '));
        static const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789";
        EXPECT_EQ(name.find_first_not_of(letters), std::string::npos) << tag;
        names.insert(name);
        if (name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6') {
            headings.push_back(name[1] - '0');
        }
        if (name != "meta" && name != "img") {
            open.push_back(name);
        }
        takeAttributes(tag, name.size());
    }

    // From `at` on, each is a blank, its name, an equals sign and its value in double quotes.
    void takeAttributes(const std::string& tag, std::size_t at)
    {
        while (at < tag.size()) {
            const std::size_t equals = tag.find("=\"", at);
            ASSERT_NE(equals, std::string::npos) << tag;
            const std::size_t end = tag.find('"', equals + 2);
            ASSERT_NE(end, std::string::npos) << tag;
            EXPECT_EQ(tag[at], ' ') << tag;
            takeAttribute(tag.substr(at + 1, equals - at - 1),
                          tag.substr(equals + 2, end - equals - 2));
            at = end + 1;
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
