#include "groups/GroupListing.h"

#include <mxformat/Groups.h>

#include <text/Csv.h>
#include <text/Hexadecimal.h>
#include <text/JsonText.h>
#include <text/TextTable.h>
#include <text/Utf8.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using mxauthor::Group;
using mxauthor::ReadGroups;

// A group as every output lists it.
struct ListedGroup
{
    std::string id;
    std::string name;
    std::uint32_t offset; // of the payload
    std::uint32_t size;   // of the payload
};

std::vector<ListedGroup> listed(const ReadGroups& read)
{
    std::vector<ListedGroup> list;
    for (const Group& group : read.file.groups) {
        list.push_back({text::hexOf(group.id, 4), mxformat::groupName(group.id),
                        group.place.offset + mxformat::groupHeaderSize,
                        group.place.length - mxformat::groupOverhead});
    }
    return list;
}

text::Json groupJson(const ListedGroup& group)
{
    return {{"id", group.id}, {"name", group.name}, {"offset", group.offset}, {"size", group.size}};
}

} // namespace

std::string groupsText(const ReadGroups& read)
{
    text::TextTable table({"Group", "Name", "Payload at", "Size"});
    for (const ListedGroup& group : listed(read)) {
        table.add({group.id, group.name, fmt::format("{0:#08x} ({0})", group.offset),
                   std::to_string(group.size)});
    }
    return table.text();
}

std::string groupsCsv(const ReadGroups& read, const mxmodule::CsvStyle& style)
{
    std::vector<text::CsvRow> rows = {{"group", "name", "offset", "size"}};
    for (const ListedGroup& group : listed(read)) {
        rows.push_back(
            {group.id, group.name, std::to_string(group.offset), std::to_string(group.size)});
    }
    return text::csvText(rows, style.separator, style.byteOrderMark);
}

std::string groupsJson(const ReadGroups& read, const std::string& file, std::size_t size)
{
    return text::jsonText({{"schema", text::jsonSchema("mxtool.groups", 1)},
                           {"file", text::toUtf8(file)},
                           {"size", size},
                           {"groups", text::listJson(listed(read), groupJson)},
                           {"failure", read.failure ? text::Json(*read.failure) : text::Json()}});
}

} // namespace mxtool
