#include "HarmlessOutput.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <regex>

namespace tooltest {

namespace {

using Json = nlohmann::json;

bool isBetween(char byte, unsigned char first, unsigned char last)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= first && value <= last;
}

// Whether a character at `at` controls a terminal or reverses a line: control characters except NUL
// and the line feed, those of U+0080 to U+009F, line and paragraph separators, direction marks. A
// regular expression would take longer than the calls.
bool acts(const std::string& text, std::size_t at)
{
    const char* const byte = text.c_str() + at; // a NUL follows the text
    switch (*byte) {
    case '\n':
        return false;
    case '\x7f':
        return true;
    case '\xC2':
        return isBetween(byte[1], 0x80, 0x9F);
    case '\xD8':
        return byte[1] == '\x9C';
    case '\xE2':
        return (byte[1] == '\x80' &&
                (isBetween(byte[2], 0x8E, 0x8F) || isBetween(byte[2], 0xA8, 0xAE))) ||
               (byte[1] == '\x81' && isBetween(byte[2], 0xA6, 0xA9));
    default:
        return isBetween(*byte, 0x01, 0x1F);
    }
}

std::string actingCharacters(const std::string& text)
{
    std::string found;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (acts(text, at)) {
            found += "at " + std::to_string(at) + ": " +
                     text.substr(at - std::min<std::size_t>(at, 30), 60) + "\n";
        }
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
