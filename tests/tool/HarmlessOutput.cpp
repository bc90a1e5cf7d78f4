#include "HarmlessOutput.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <regex>

namespace tooltest {

namespace {

using Json = nlohmann::json;

// Characters that control a terminal or reverse a line: control characters except the line feed,
// those of U+0080 to U+009F, line and paragraph separators, direction marks.
std::string actingCharacters(const std::string& text)
{
    static const std::regex acting("[\\x01-\\x09\\x0b-\\x1f\\x7f]|\xC2[\x80-\x9F]|\xD8\x9C|"
                                   "\xE2\x80[\x8E\x8F\xA8-\xAE]|\xE2\x81[\xA6-\xA9]");
    std::string found;
    for (auto at = std::sregex_iterator(text.begin(), text.end(), acting);
         at != std::sregex_iterator(); ++at) {
        found +=
            "at " + std::to_string(at->position()) + ": " +
            text.substr(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, at->position() - 30)),
                        60) +
            "\n";
    }
    return found + (text.find('\0') == std::string::npos ? "" : "NUL");
}

std::string withoutCsvLineEnds(const std::string& csv)
{
    return std::regex_replace(csv, std::regex("\r\n"), "\n");
}

} // namespace

void expectHarmless(const std::string& text)
{
    EXPECT_EQ(actingCharacters(text), "");
    EXPECT_NO_THROW(static_cast<void>(Json(text).dump())); // valid UTF-8
}

Rows csvRows(const std::string& csv)
{
    Rows rows(1, {""});
    bool quoted = false;
    for (std::size_t at = 0; at < csv.size(); ++at) {
        const char c = csv[at];
        if (c == '"' && quoted && csv[at + 1] == '"') {
            rows.back().back() += csv[++at];
        } else if (c == '"') {
            EXPECT_TRUE(quoted || rows.back().back().empty()) << at;
            quoted = !quoted;
        } else if (!quoted && c == ',') {
            rows.back().emplace_back();
        } else if (!quoted && c == '\r') {
            EXPECT_EQ(csv[++at], '\n') << at;
            rows.push_back({""});
        } else {
            EXPECT_NE(c, '\n') << at;
            rows.back().back() += c;
        }
    }
    rows.pop_back();
    return rows;
}

void expectHarmlessCsv(const std::string& csv)
{
    expectHarmless(withoutCsvLineEnds(csv));
    const Rows rows = csvRows(csv);
    ASSERT_GT(rows.size(), 1U);
    static const std::regex formula("^([=@\t\r]|＝|＠|([+\\-]|＋|－).*([=(!|@]|＝|（|！|｜|＠))");
    for (const auto& row : rows) {
        EXPECT_EQ(row.size(), rows.front().size());
        for (const std::string& cell : row) {
            EXPECT_FALSE(std::regex_search(cell, formula)) << cell;
        }
    }
}

std::set<std::string> elementsOf(const std::string& markup)
{
    static const std::regex tag("<([^\\s/>!][^\\s/>]*)");
    std::set<std::string> names;
    for (auto at = std::sregex_iterator(markup.begin(), markup.end(), tag);
         at != std::sregex_iterator(); ++at) {
        names.insert((*at)[1]);
    }
    return names;
}

} // namespace tooltest
