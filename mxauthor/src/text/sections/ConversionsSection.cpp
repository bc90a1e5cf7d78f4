#include "Sections.h"
#include "module/ParameterScale.h"

#include <devices/parser/mx/HexText.h>

#include <charconv>
#include <cmath>
#include <cstring>

namespace mxauthor {

namespace {

const std::string bitsPrefix = "bits ";

std::optional<std::uint32_t> parseBits(const std::string& digits)
{
    std::uint32_t bits = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, bits, 16);
    return error == std::errc() && stop == end ? std::optional(bits) : std::nullopt;
}

// The shortest text of the number with these bits that reads back as it; "bits 7fc00001" for
// infinities and NaNs.
std::string floatText(std::uint32_t bits)
{
    const float number = mxformat::floatOf(bits);
    return std::isfinite(number) ? numberText(number)
                                 : bitsPrefix + devices::parser::mx::u32AsHex(bits);
}

// The bits of the binary32 nearest to the number that `text` spells, or those after "bits ". Empty
// if it is not a number or is out of range.
std::optional<std::uint32_t> parseFloat(const std::string& text)
{
    if (text.compare(0, bitsPrefix.size(), bitsPrefix) == 0) {
        return parseBits(text.substr(bitsPrefix.size()));
    }
    float number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    std::uint32_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

std::uint32_t readFloat(const Section& section, const std::string& key)
{
    const auto node = section.find(key);
    const auto text = node ? readScalar(*node, section.errors()) : std::nullopt;
    if (!text) {
        return 0;
    }
    const auto bits = parseFloat(*text);
    if (!bits) {
        section.errors().add(
            *node, "\"" + *text + "\" is not a 32-bit number such as 0.1 or -2e3, without a unit");
    }
    return bits.value_or(0);
}

Conversion readConversion(const Section& section, BuildContext& context)
{
    section.require("factor");
    Conversion conversion;
    conversion.factor = readFloat(section, "factor");
    conversion.offset = readFloat(section, "offset");
    conversion.unitId = readTextId(section, "unit", context);
    return conversion;
}

// The scale for physical values of parameters. As in readers, non-finite numbers and a factor 0
// mean no conversion and no unit.
void takeScale(const Section& section, const Conversion& conversion, NamedEntry& entry)
{
    const mxformat::PhysicalScale scale{mxformat::floatOf(conversion.factor.value),
                                        mxformat::floatOf(conversion.offset.value)};
    const auto unit = section.find("unit");
    if (mxformat::isUsable(scale)) {
        entry.scale = scale;
        entry.unit = unit && unit->IsScalar() ? unit->Scalar() : "";
    }
}

std::string conversionText(const Conversion& conversion, const DumpContext& context)
{
    FlowMapping line;
    line.add("id", std::to_string(conversion.id.value));
    line.add("factor", floatText(conversion.factor.value));
    if (conversion.offset.value != 0) {
        line.add("offset", floatText(conversion.offset.value));
    }
    if (conversion.unitId.value != 0) {
        line.add("unit", context.text(conversion.unitId.value));
    }
    return line.text();
}

} // namespace

std::string dumpConversions(const DumpContext& context)
{
    const auto* group = context.group<Conversions>(mxformat::group::conversions);
    if (group == nullptr) {
        return "";
    }
    if (group->entries.empty()) {
        return "conversions: {}\n";
    }
    std::string text = "conversions:\n";
    for (std::size_t i = 0; i < group->entries.size(); ++i) {
        text += "  " + context.conversionNames()[i] + ": " +
                conversionText(group->entries[i], context) + "\n";
    }
    return text;
}

void buildConversions(const YAML::Node& node, BuildContext& context)
{
    Conversions group;
    for (const auto& [key, value] : readMapping(node, context.errors)) {
        const std::size_t errorsBefore = context.errors.size();
        const Section section(value, "conversion", context.errors);
        NamedEntry entry = namedEntry(key, section, context.conversions);
        Conversion conversion = readConversion(section, context);
        conversion.id = entry.id;
        takeScale(section, conversion, entry);
        entry.isCertain = context.errors.size() == errorsBefore;
        group.entries.push_back(conversion);
        context.records[mxformat::group::conversions].push_back(section.origin());
        context.conversions.push_back(std::move(entry));
    }
    context.setGroup(mxformat::group::conversions, std::move(group), node);
}

} // namespace mxauthor
