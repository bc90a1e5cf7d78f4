#include "Sections.h"
#include "text/FloatText.h"

#include <cmath>

namespace mxauthor {

namespace {

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
    const float factor = mxformat::floatOf(conversion.factor.value);
    const float offset = mxformat::floatOf(conversion.offset.value);
    const auto unit = section.find("unit");
    if (std::isfinite(factor) && factor != 0 && std::isfinite(offset)) {
        entry.scale = {factor, offset};
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
