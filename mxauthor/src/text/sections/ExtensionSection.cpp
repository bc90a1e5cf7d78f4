#include "Sections.h"
#include <text/Counted.h>

#include <text/Hexadecimal.h>

#include <algorithm>

namespace mxauthor {

namespace {

Bytes dateOf(const std::string& text)
{
    Bytes date(text.begin(), text.end());
    date.resize(mxformat::calibrationDateSize);
    return date;
}

// The text of the date, up to the first byte 0.
std::string textOf(const Bytes& date)
{
    return {date.begin(), std::find(date.begin(), date.end(), 0)};
}

Bytes readDate(const Section& section)
{
    const auto text = section.find("calibrationDate");
    const auto bytes = section.find("dateBytes");
    if (!bytes) {
        const std::string date =
            text ? readText(*text, section.errors()).value_or("") : std::string();
        if (date.size() > mxformat::calibrationDateSize) {
            section.errors().add(*text, "a date has 10 characters at most, such as 2024-05-31");
        }
        return dateOf(date);
    }
    if (text) {
        section.errors().add(*bytes, "calibrationDate and dateBytes state the same");
    }
    Bytes date = section.hex("dateBytes", Bytes(mxformat::calibrationDateSize));
    if (date.size() != mxformat::calibrationDateSize) {
        section.errors().add(*bytes, text::counted(date.size(), "byte") + ", a date has 10");
        date.resize(mxformat::calibrationDateSize);
    }
    return date;
}

} // namespace

std::string dumpExtension(const DumpContext& context)
{
    const auto* group = context.group<Extension>(mxformat::group::extension);
    if (group == nullptr) {
        return "";
    }
    FlowMapping line;
    if (group->gtinId.value != 0) {
        line.add("gtin", context.text(group->gtinId.value));
    }
    const Bytes& date = group->date.value;
    const std::string text = textOf(date);
    if (dateOf(text) != date || text.find_first_of("\r\n") != std::string::npos) {
        line.add("dateBytes", yamlQuoted(text::toHex(date)));
    } else if (!text.empty()) {
        line.add("calibrationDate", yamlText(text));
    }
    if (group->version.value != mxformat::extensionVersion) {
        line.add("version", std::to_string(group->version.value));
    }
    if (!group->rest.value.empty()) {
        line.add("rest", yamlQuoted(text::toHex(group->rest.value)));
    }
    return "extension: " + line.text() + "\n";
}

void buildExtension(const YAML::Node& node, BuildContext& context)
{
    const Section section(node, "extension", context.errors);
    Extension group;
    group.version = section.byte("version", mxformat::extensionVersion);
    group.gtinId = readTextId(section, "gtin", context);
    group.date = readDate(section);
    group.rest = section.hex("rest");
    context.records[mxformat::group::extension].push_back(section.origin());
    context.setGroup(mxformat::group::extension, std::move(group), node);
}

} // namespace mxauthor
