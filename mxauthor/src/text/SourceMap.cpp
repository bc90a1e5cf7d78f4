#include "mxauthor/SourceMap.h"

#include "GroupWords.h"
#include "SourceErrors.h"
#include "TextOrigins.h"
#include "mxauthor/Explain.h"

#include <algorithm>

namespace mxauthor {

namespace {

// A value of the text: the one of `key`, or an item of it, counted from 1.
struct Value
{
    const char* key;
    std::size_t item = 0;
    bool itemPerField = false; // the item is the number of the field in its record, from 0
};

// Where a text states something.
struct TextPlace
{
    YAML::Mark mark = YAML::Mark::null_mark();
    Repetition repetition{};
};

// What the text form calls a field of a group's records.
using FieldNames = std::map<std::string, Value>;

const std::map<std::uint16_t, FieldNames>& fieldsOfGroups()
{
    static const std::map<std::uint16_t, FieldNames> fields = {
        {mxformat::group::identity,
         {{"id", {"id"}}, {"unread", {"unread"}}, {"trailer", {"trailer"}}}},
        {mxformat::group::catalogue, {{"key", {"key"}}, {"kind", {"kind"}}, {"value", {"value"}}}},
        {mxformat::group::component, {{"key", {"key"}}, {"kind", {"kind"}}, {"value", {"value"}}}},
        {mxformat::group::extension,
         {{"version", {"version"}},
          {"gtin_id", {"gtin"}},
          {"date", {"calibrationDate"}},
          {"rest", {"rest"}}}},
        {mxformat::group::channels,
         {{"number", {"number"}},
          {"unread_2", {"unread"}},
          {"bit_length", {"bits"}},
          {"bit_offset", {"bit"}},
          {"unread_5", {"unread"}},
          {"word_count", {"words"}},
          {"word", {"words", 1, true}}}},
        {mxformat::group::channelNames, {{"channel", {"channel"}}, {"text_id", {"name"}}}},
        {mxformat::group::parameters,
         {{"number", {"number"}},
          {"name_id", {"name"}},
          {"position", {"at"}},
          {"datatype", {"type"}},
          {"flags", {"flags"}},
          {"conversion", {"conversion"}},
          {"option_list", {"options"}},
          {"minimum", {"range", 1}},
          {"maximum", {"range", 2}},
          {"unit_id", {"unit"}},
          {"bit_length", {"bits"}},
          {"bit_offset", {"bit"}},
          {"channel", {"channel"}}}},
        {mxformat::group::optionLists,
         {{"id", {"id"}}, {"value", {"values", 0, true}}, {"text_id", {"texts", 0, true}}}},
        {mxformat::group::conversions,
         {{"id", {"id"}}, {"factor", {"factor"}}, {"offset", {"offset"}}, {"unit_id", {"unit"}}}},
    };
    return fields;
}

const Value* valueOfField(std::uint16_t group, const std::string& field)
{
    const auto fields = fieldsOfGroups().find(group);
    if (fields == fieldsOfGroups().end()) {
        return nullptr;
    }
    const auto found = fields->second.find(field);
    return found == fields->second.end() ? nullptr : &found->second;
}

YAML::Mark markOf(const RecordOrigin& record, const std::string& key, std::size_t item)
{
    const auto found = record.values.find(key);
    if (found == record.values.end() || found->second.empty()) {
        return record.mark;
    }
    return found->second[item < found->second.size() ? item : 0];
}

// Where a record states the part's field; `number` is that of the field in its record.
YAML::Mark markOf(const RecordOrigin& record, const ExplainedPart& part, std::size_t number)
{
    if (part.place.group == mxformat::group::channels && part.field == "kind") {
        return markOf(record, record.values.count("in") != 0 ? "in" : "out", 0);
    }
    if (part.place.group == mxformat::group::extension && record.values.count("dateBytes") != 0 &&
        part.field == "date") {
        return markOf(record, "dateBytes", 0);
    }
    const Value* const value = valueOfField(part.place.group, part.field);
    if (value == nullptr) {
        return record.mark;
    }
    return markOf(record, value->key, value->item + (value->itemPerField ? number : 0));
}

// The parameters whose defaults make the block: the first group of them counts.
const Parameters* parametersOf(const MxFile& file)
{
    for (const Group& group : file.groups) {
        if (const auto* parameters = std::get_if<Parameters>(&group.content)) {
            return parameters;
        }
    }
    return nullptr;
}

// The number of the parameter that holds a byte of the block; empty when none does.
std::optional<std::size_t> parameterAt(const Parameters& parameters, std::uint32_t byte)
{
    for (std::size_t i = 0; i < parameters.records.size(); ++i) {
        const mxformat::BlockField field = blockFieldOf(parameters.records[i]);
        if (field.exists() && field.begin() <= byte && byte < field.end()) {
            return i;
        }
    }
    return std::nullopt;
}

} // namespace

class SourceMap::Content
{
public:
    Content(const std::string& source, const BuildResult& built)
        : positions(source), origins(built.origins)
    {
        if (const Parameters* const parameters = parametersOf(built.file)) {
            defaults = *parameters;
        }
        const Bytes bytes = writeMxFile(built.file);
        parts = explain({bytes.begin(), bytes.end()}).parts;
    }

    TextPlace placeAt(std::uint32_t offset) const
    {
        const ExplainedPart* const part = partAt(offset);
        const GroupOrigin* const group = part == nullptr ? nullptr : originOf(part->group);
        if (group == nullptr) {
            return {};
        }
        const TextPlace place =
            part->place.group == mxformat::group::parameterBlock && part->field == "block"
                ? placeOfBlockByte(*part, offset)
                : placeInRecord(*group, *part);
        return place.mark.is_null() ? TextPlace{group->mark} : place;
    }

    // Where the default of the parameter is stated whose record has a byte at `offset`.
    TextPlace placeOfDefault(std::uint32_t offset) const
    {
        const ExplainedPart* const part = partAt(offset);
        const GroupOrigin* const group = part == nullptr ? nullptr : originOf(part->group);
        const bool isStated = group != nullptr && part->record >= 0 &&
                              static_cast<std::size_t>(part->record) < group->records.size();
        return isStated ? placeOfDefaultIn(group->records[static_cast<std::size_t>(part->record)])
                        : TextPlace{};
    }

    TextPlace placeOf(const Finding& finding) const
    {
        if (finding.parameter.length != 0) {
            return placeOfDefault(finding.parameter.offset);
        }
        return finding.inGroup ? placeAt(finding.place.offset) : TextPlace{};
    }

    SourceErrors positions;

private:
    const ExplainedPart* partAt(std::uint32_t offset) const
    {
        const auto next = std::upper_bound(
            parts.begin(), parts.end(), offset,
            [](std::uint32_t at, const ExplainedPart& part) { return at < part.place.offset; });
        return next == parts.begin() ? nullptr : &*(next - 1);
    }

    // Null for what is outside the groups.
    const GroupOrigin* originOf(int group) const
    {
        const bool isGroup = group >= 0 && static_cast<std::size_t>(group) < origins->groups.size();
        return isGroup ? &origins->groups[static_cast<std::size_t>(group)] : nullptr;
    }

    static TextPlace placeOfDefaultIn(const RecordOrigin& record)
    {
        return {mxauthor::markOf(record, "default", 0), record.repetition};
    }

    TextPlace placeInRecord(const GroupOrigin& group, const ExplainedPart& part) const
    {
        // A group without a list of records is its only one.
        const std::size_t record = part.record < 0 ? 0 : static_cast<std::size_t>(part.record);
        if (record >= group.records.size() || (part.record < 0 && !isRecord(part))) {
            return {};
        }
        std::size_t number = 0;
        for (const ExplainedPart* other = &part;
             other != parts.data() && (other - 1)->group == part.group &&
             (other - 1)->record == part.record;
             --other) {
            number += (other - 1)->field == part.field ? 1 : 0;
        }
        return {mxauthor::markOf(group.records[record], part, number),
                group.records[record].repetition};
    }

    static bool isRecord(const ExplainedPart& part)
    {
        return part.place.group == mxformat::group::extension && part.field != "id" &&
               part.field != "length" && part.field != "checksum";
    }

    TextPlace placeOfBlockByte(const ExplainedPart& part, std::uint32_t offset) const
    {
        const auto start = std::find_if(parts.begin(), parts.end(), [&part](const auto& other) {
            return other.group == part.group && other.field == part.field;
        });
        const auto parameter = parameterAt(defaults, offset - start->place.offset);
        for (const GroupOrigin& group : origins->groups) {
            if (parameter && group.id == mxformat::group::parameters &&
                *parameter < group.records.size()) {
                return placeOfDefaultIn(group.records[*parameter]);
            }
        }
        return {};
    }

    std::shared_ptr<const TextOrigins> origins;
    std::vector<ExplainedPart> parts;
    Parameters defaults;
};

SourceMap::SourceMap(const std::string& source, const BuildResult& built)
    : content(std::make_unique<Content>(source, built))
{}

SourceMap::~SourceMap() = default;

SourceError SourceMap::at(std::uint32_t offset, const std::string& what) const
{
    return content->positions.located(content->placeAt(offset).mark, what);
}

SourceError SourceMap::of(const Finding& finding, const std::string& what) const
{
    return content->positions.located(content->placeOf(finding).mark, what);
}

Repetition SourceMap::repetitionOf(const Finding& finding) const
{
    return content->placeOf(finding).repetition;
}

} // namespace mxauthor
