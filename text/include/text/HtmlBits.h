#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace text {

/// Bits of a byte that belong together.
struct HtmlBits
{
    unsigned highBit = 7;
    unsigned lowBit = 0;
    std::string html;     ///< What they are.
    std::string kind;     ///< A class of the style sheet.
    std::size_t lane = 0; ///< Bits that are shared are in lanes of their own, from 0.
};

/// A byte of a picture of bytes.
struct HtmlByte
{
    std::uint64_t number = 0;
    std::vector<std::string> cells = {}; ///< HTML between the number and the bits.
    std::vector<HtmlBits> bits = {};     ///< Those of each lane in order, the highest first.
    std::size_t lanes = 1;               ///< At least one more than the largest lane.
    std::string kind = {};               ///< A class of the style sheet; empty: none.
};

/// A picture of bytes as a table of a page: a row for each byte, a cell for each run of bits.
class HtmlBitTable
{
public:
    /// `caption` and `headings`, those of `HtmlByte::cells`, contain no markup. The identifier of
    /// the row of byte 3 is `prefix` and "3".
    HtmlBitTable(std::string caption, std::string prefix, std::vector<std::string> headings = {});

    /// Appends a byte. Bits of it that no run contains are free.
    void add(const HtmlByte& byte);

    /// Appends a row for `count` bytes without bits of their own. `html` says why.
    void addRun(std::uint64_t first, std::uint64_t count, const std::string& html,
                const std::string& kind = "none");

    /// Begins a group of rows; `html` is its heading, empty: none.
    void beginGroup(const std::string& html);

    /// Returns "3" as a link to the row of byte 3; without a link if there is none.
    std::string link(std::uint64_t byte) const;

    /// Returns "3–4" in the same way, for `size` bytes; one at least.
    std::string link(std::uint64_t first, std::uint64_t size) const;

    bool empty() const { return rows.empty(); } ///< Whether it has no row.

    std::string html() const; ///< The table, its class is "bits".

private:
    std::string rowBegin(std::uint64_t number, const std::string& shown, std::size_t lanes,
                         const std::string& kind);

    std::string title;
    std::string idPrefix;
    std::vector<std::string> names;
    std::string rows;
    std::set<std::uint64_t> numbers;
};

} // namespace text
