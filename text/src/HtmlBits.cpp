#include "text/HtmlBits.h"

#include "text/Html.h"

#include <utility>

namespace text {

namespace {

constexpr const char* nothing = "\u2013";

std::string spanOf(const char* name, std::size_t count)
{
    return count == 1 ? "" : " " + std::string(name) + "=\"" + std::to_string(count) + "\"";
}

unsigned maskOf(const HtmlBits& bits)
{
    return (2U << bits.highBit) - (1U << bits.lowBit);
}

// The bits from `high` down to `low`, of which some are free and others in another lane.
std::string cellsBetween(unsigned high, unsigned end, unsigned occupied)
{
    std::string cells;
    while (high > end) {
        const bool isFree = (occupied >> (high - 1) & 1U) == 0;
        unsigned low = high - 1;
        while (low > end && ((occupied >> (low - 1) & 1U) == 0) == isFree) {
            --low;
        }
        cells += htmlElement("td", isFree ? nothing : "",
                             std::string(isFree ? " class=\"none\"" : " class=\"other\"") +
                                 spanOf("colspan", high - low));
        high = low;
    }
    return cells;
}

std::string laneCells(const HtmlByte& byte, std::size_t lane, unsigned occupied)
{
    std::string cells;
    unsigned next = 8; // one more than the next bit
    for (const HtmlBits& bits : byte.bits) {
        if (bits.lane == lane) {
            // Free bits are shown once, in the first lane.
            cells += cellsBetween(next, bits.highBit + 1, lane == 0 ? occupied : 0xFFU);
            cells += htmlElement("td", bits.html,
                                 " class=\"" + bits.kind + "\"" +
                                     spanOf("colspan", bits.highBit - bits.lowBit + 1));
            next = bits.lowBit;
        }
    }
    return cells + cellsBetween(next, 0, lane == 0 ? occupied : 0xFFU);
}

} // namespace

HtmlBitTable::HtmlBitTable(std::string caption, std::string prefix,
                           std::vector<std::string> headings)
    : title(std::move(caption)), idPrefix(std::move(prefix)), names(std::move(headings))
{}

std::string HtmlBitTable::rowBegin(std::uint64_t number, const std::string& shown,
                                   std::size_t lanes, const std::string& kind)
{
    const bool isNew = numbers.insert(number).second;
    const std::string id =
        isNew ? " id=\"" + htmlText(idPrefix) + std::to_string(number) + "\"" : "";
    return "<tr" + id + (kind.empty() ? "" : " class=\"" + kind + "\"") + ">" +
           htmlElement("th", shown, " scope=\"row\"" + spanOf("rowspan", lanes));
}

void HtmlBitTable::add(const HtmlByte& byte)
{
    unsigned occupied = 0;
    for (const HtmlBits& bits : byte.bits) {
        occupied |= maskOf(bits);
    }
    rows += rowBegin(byte.number, std::to_string(byte.number), byte.lanes, byte.kind);
    for (const std::string& cell : byte.cells) {
        rows += htmlElement("td", cell, " class=\"value\"" + spanOf("rowspan", byte.lanes));
    }
    for (std::size_t lane = 0; lane < byte.lanes; ++lane) {
        rows += (lane == 0 ? "" : "<tr>") + laneCells(byte, lane, occupied) + "</tr>\n";
    }
}

void HtmlBitTable::addRun(std::uint64_t first, std::uint64_t count, const std::string& html,
                          const std::string& kind)
{
    const std::string shown =
        std::to_string(first) + (count == 1 ? "" : nothing + std::to_string(first + count - 1));
    rows +=
        rowBegin(first, shown, 1, "") +
        htmlElement("td", html, " class=\"" + kind + "\"" + spanOf("colspan", 8 + names.size())) +
        "</tr>\n";
}

void HtmlBitTable::beginGroup(const std::string& html)
{
    rows += rows.empty() ? "" : "</tbody>\n<tbody>\n";
    if (html.empty()) {
        return;
    }
    rows += "<tr class=\"group\">" +
            htmlElement("th", html, " scope=\"rowgroup\"" + spanOf("colspan", 9 + names.size())) +
            "</tr>\n";
}

std::string HtmlBitTable::link(std::uint64_t byte) const
{
    const std::string shown = std::to_string(byte);
    return numbers.count(byte) == 0 ? shown : htmlLink(idPrefix + shown, shown);
}

std::string HtmlBitTable::link(std::uint64_t first, std::uint64_t size) const
{
    return size < 2 ? link(first) : link(first) + nothing + link(first + size - 1);
}

std::string HtmlBitTable::html() const
{
    std::string head = htmlElement("th", "Byte", " scope=\"col\" class=\"byte\"");
    for (const std::string& name : names) {
        head += htmlElement("th", name, " scope=\"col\" class=\"value\"");
    }
    for (unsigned bit = 8; bit-- > 0;) {
        head += htmlElement("th", std::to_string(bit), " scope=\"col\"");
    }
    return "<table class=\"bits\">\n" + htmlElement("caption", title) + "\n" +
           htmlElement("thead", htmlElement("tr", head)) + "\n<tbody>\n" + rows +
           "</tbody>\n</table>\n";
}

} // namespace text
