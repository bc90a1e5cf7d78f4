#include "ParameterDefaults.h"
#include "ParameterNumbers.h"
#include "Sections.h"
#include "module/ParameterValues.h"
#include "text/RepeatedLines.h"
#include "text/TypeWords.h"
#include <text/Counted.h>

namespace mxauthor {

namespace {

// Visible and writable, and shown in physical units when there is a conversion.
std::uint8_t usualFlags(std::uint8_t conversion)
{
    constexpr std::uint8_t flags = mxformat::parameterFlag0 | mxformat::parameterFlag1;
    return conversion == 0 ? flags : std::uint8_t{flags | mxformat::convertedFlag};
}

// The line of a parameter except its place.
void addContent(FlowMapping& line, const ParameterRecord& record, const StatedDefault& initial,
                const DumpContext& context)
{
    if (initial.text) {
        line.add("default", *initial.text);
    }
    if (record.minimum.value != 0 || record.maximum.value != 0) {
        line.add("range", flowList({slotText(record.minimum.value, record.datatype.value),
                                    slotText(record.maximum.value, record.datatype.value)}));
    }
    if (record.optionList.value != 0) {
        line.add("options", context.optionListWord(record.optionList.value));
    }
    if (record.conversion.value != 0) {
        line.add("conversion", context.conversionWord(record.conversion.value));
    }
    if (record.unitId.value != 0) {
        line.add("unit", context.text(record.unitId.value));
    }
    if (record.flags.value != usualFlags(record.conversion.value)) {
        line.add("flags", std::to_string(record.flags.value));
    }
    if (initial.overlaps) {
        line.add("overlaps", "true");
    }
}

std::string parameterLine(const ParameterRecord& record, const StatedDefault& initial,
                          std::uint8_t usualNumber, const DumpContext& context)
{
    FlowMapping line;
    line.add("name", context.text(record.nameId.value));
    if (record.number.value != usualNumber) {
        line.add("number", std::to_string(record.number.value));
    }
    if (record.channel.value != mxformat::moduleLevel) {
        line.add("channel", std::to_string(record.channel.value));
    }
    line.add("at", std::to_string(blockFieldOf(record).begin()));
    line.add("type", typeWord(record.datatype.value));
    if (record.bitLength.value != 0 || record.bitOffset.value != 0) {
        line.add("bits", std::to_string(record.bitLength.value));
        line.add("bit", std::to_string(record.bitOffset.value));
    }
    addContent(line, record, initial, context);
    return line.text();
}

void readRange(const Section& section, const BuildContext& context, BuiltParameter& parameter)
{
    ParameterRecord& record = parameter.record;
    const auto node = section.find("range");
    if (!node || node->IsNull()) {
        return;
    }
    if (!node->IsSequence() || node->size() != 2) {
        section.errors().add(*node, "least and greatest value expected, such as [0, 10]");
        return;
    }
    const ParameterUnit unit = unitOf(section, parameter, context);
    const mxformat::BlockField field = blockFieldOf(record);
    auto least = readParameterNumber((*node)[0], unit, field, {}, section.errors());
    auto greatest = readParameterNumber((*node)[1], unit, field, {}, section.errors());
    if (!least || !greatest) {
        return;
    }
    // The least physical value has the greatest raw one.
    if (least->isPhysical && greatest->isPhysical && unit.scale.factor < 0) {
        std::swap(least, greatest);
    }
    record.minimum = least->raw.bits();
    record.maximum = greatest->raw.bits();
}

void addBitError(const Section& section, const ParameterRecord& record)
{
    const unsigned bits = record.bitLength.value;
    const unsigned bit = record.bitOffset.value;
    const auto node = section.find("bit");
    if (bits > 8 || !node) {
        section.errors().add(section.find("bits").value_or(section.node()),
                             text::counted(bits, "bit") +
                                 " do not fit into a byte, 1 to 8 is accepted");
    } else {
        section.errors().add(*node,
                             text::counted(bits, "bit") + " from bit " + std::to_string(bit) +
                                 (bits == 1 ? " leaves its" : " leave their") + " byte, bit 0 to " +
                                 std::to_string(8 - std::max(bits, 1U)) + " is accepted");
    }
}

// A default needs a place in the block; other errors of the type are reported where it is read.
void checkHasField(const Section& section, const ParameterRecord& record)
{
    const auto type = section.find("type");
    if (!section.has("default") || blockFieldOf(record).exists()) {
        return;
    }
    if (record.datatype.value == mxformat::bitFieldDatatype) {
        addBitError(section, record);
    } else if (type && type->IsScalar() && parseInteger(type->Scalar())) {
        section.errors().add(*type, "a parameter of type " + type->Scalar() + " has no default, " +
                                        datatypeNumbers() + " are the types of values");
    }
}

std::uint8_t readChannel(const Section& section)
{
    const auto node = section.find("channel");
    if (node && node->IsScalar() && !parseInteger(node->Scalar())) {
        const bool isPlaceholder = node->Scalar().find_first_of("<>") != std::string::npos;
        section.errors().add(*node,
                             "\"" + node->Scalar() +
                                 (isPlaceholder ? "\" is not a placeholder: with repeat, <n-1> is "
                                                  "the number of each channel from 0"
                                                : "\" is not a channel number: the first has 0; a "
                                                  "parameter of the module has none, or 255"));
        return mxformat::moduleLevel;
    }
    return section.byte("channel", mxformat::moduleLevel);
}

// The default place of the next parameter in a block: after the previous one; bit fields share a
// byte as long as they fit.
class BlockCursor
{
public:
    // The byte for a parameter of this datatype and number of bits.
    std::uint32_t byteFor(std::uint8_t datatype, std::uint8_t bits) const
    {
        return bit == 0 || fits(datatype, bits) ? byte : byte + 1;
    }

    // The first bit for it in byte `at`.
    std::uint8_t bitFor(std::uint8_t datatype, std::uint8_t bits, std::uint32_t at) const
    {
        return fits(datatype, bits) && at == byte ? static_cast<std::uint8_t>(bit)
                                                  : std::uint8_t{0};
    }

    // Moves past the parameter.
    void pass(const ParameterRecord& record)
    {
        const mxformat::BlockField field = blockFieldOf(record);
        if (!field.exists()) {
            return;
        }
        const std::uint32_t endBit = field.firstBit() + field.bits();
        const bool opensByte = field.size() == 1 && endBit < bitsOfByte;
        byte = opensByte ? field.begin() : field.end();
        bit = opensByte ? endBit : 0;
    }

private:
    static constexpr std::uint32_t bitsOfByte = 8;

    // Whether it is a bit field with space in the open byte.
    bool fits(std::uint8_t datatype, std::uint8_t bits) const
    {
        return datatype == mxformat::bitFieldDatatype && bits != 0 && bit + bits <= bitsOfByte;
    }

    std::uint32_t byte = 0;
    std::uint32_t bit = 0; // first free one of `byte`
};

// Returns whether there is a place for the parameter.
bool readPlace(const Section& section, const BlockCursor& cursor, ParameterRecord& record)
{
    const auto type = section.require("type");
    record.datatype =
        type ? readTypeWord(*type, typeWords(), 0xFF, section.errors()) : std::uint8_t{0};
    record.bitLength = section.byte("bits", 0);
    const std::uint8_t datatype = record.datatype.value;
    const std::uint8_t bits = record.bitLength.value;
    const std::uint32_t usualByte = cursor.byteFor(datatype, bits);
    const bool hasPlace = usualByte <= 0xFF || section.has("at");
    if (!hasPlace) {
        section.errors().add(section.node(), "no place is left after the previous parameter, byte "
                                             "255 is the last that can be stated");
    }
    const std::uint8_t at = section.byte("at", static_cast<std::uint8_t>(usualByte));
    record.position = mxformat::statedPosition(at);
    record.bitOffset = section.byte("bit", cursor.bitFor(datatype, bits, at));
    return hasPlace;
}

EntryReference readReference(const Section& section, const std::string& key,
                             const std::vector<NamedEntry>& entries, const std::string& what,
                             bool entriesAreKnown)
{
    const auto node = section.find(key);
    if (!node) {
        return {0, !section.isMisspelt(key)};
    }
    return entriesAreKnown ? readEntryReference(*node, entries, what, section.errors())
                           : EntryReference{0, false};
}

// The references come in the order in which texts get their identifiers.
void readContent(const Section& section, BuildContext& context, BuiltParameter& parameter)
{
    ParameterRecord& record = parameter.record;
    if (const auto name = section.require("name")) {
        record.nameId = readTextId(*name, context);
    }
    record.unitId = readTextId(section, "unit", context);
    const EntryReference options = readReference(section, "options", context.optionLists,
                                                 "option list", context.listsAreKnown);
    const EntryReference conversion = readReference(section, "conversion", context.conversions,
                                                    "conversion", context.conversionsAreKnown);
    record.optionList = options.id;
    record.conversion = conversion.id;
    parameter.isCertain = options.isCertain && conversion.isCertain && !section.isMisspelt("unit");
    record.channel = readChannel(section);
    record.flags = section.byte("flags", usualFlags(record.conversion.value));
    readRange(section, context, parameter);
}

std::string shownName(const Section& section)
{
    const auto name = section.find("name");
    return name && name->IsScalar() ? name->Scalar() : "";
}

} // namespace

std::string dumpParameters(const DumpContext& context)
{
    const auto* group = context.group<Parameters>(mxformat::group::parameters);
    if (group == nullptr) {
        return "";
    }
    if (group->records.empty()) {
        return "parameters: []\n";
    }
    const std::vector<StatedDefault> defaults = defaultsOf(context).stated;
    std::string text = "parameters:\n";
    std::uint8_t usualNumber = 1;
    for (std::size_t i = 0; i < group->records.size(); ++i) {
        const ParameterRecord& record = group->records[i];
        text += "  - " + parameterLine(record, defaults[i], usualNumber, context) + "\n";
        usualNumber = static_cast<std::uint8_t>(record.number.value + 1);
    }
    return text;
}

void buildParameters(const YAML::Node& node, BuildContext& context)
{
    Parameters group;
    BlockCursor cursor;
    std::uint8_t usualNumber = 1;
    const RepeatableList form{
        "parameters", {"name", "channel"}, largestPayload / mxformat::parameterRecordSize};
    for (const YAML::Node& item : writtenOutLines(node, form, context.errors)) {
        const Section section(item, "parameter", context.errors);
        BuiltParameter parameter;
        const bool hasPlace = readPlace(section, cursor, parameter.record);
        readContent(section, context, parameter);
        parameter.record.number = section.byte("number", usualNumber);
        parameter.name = shownName(section);
        parameter.node = item;
        parameter.initial = section.find("default");
        parameter.mayOverlap = section.flag("overlaps") || !hasPlace;
        parameter.placeIsCertain = !section.hasUnknownKeys();
        cursor.pass(parameter.record);
        usualNumber = static_cast<std::uint8_t>(parameter.record.number.value + 1);
        checkHasField(section, parameter.record);
        readDefault(parameter, unitOf(section, parameter, context), context);
        group.records.push_back(parameter.record);
        context.records[mxformat::group::parameters].push_back(section.origin());
        context.parameters.push_back(std::move(parameter));
    }
    context.setGroup(mxformat::group::parameters, std::move(group), node);
}

} // namespace mxauthor
