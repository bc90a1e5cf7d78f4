#include "RequiredEntries.h"
#include "explain/GroupParts.h"
#include <text/Counted.h>

#include <devices/parser/mx/HexText.h>
#include <mxformat/BigEndian.h>
#include <mxformat/DataSizes.h>

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

std::string identityMeaning(const Dataset& dataset)
{
    const Bytes& data = dataset.data.value;
    if (data.size() != mxformat::identitySize) {
        return "5 bytes expected: module type and identifier";
    }
    const auto id = mxformat::readBigEndian<std::uint32_t>(data.data() + mxformat::moduleIdOffset);
    return "module type " + std::to_string(data[0]) + ", module identifier " +
           devices::parser::mx::u32AsHex(id);
}

// Whether readers look for the entry.
bool isKeyRead(const std::string& key)
{
    return std::count(catalogueKeys.begin(), catalogueKeys.end(), key) != 0 ||
           std::count(componentKeys.begin(), componentKeys.end(), key) != 0;
}

// What a line of the data sizes adds to a size; empty for a line that is skipped.
std::string sizeMeaning(const std::string& line)
{
    for (const std::string key : mxformat::dataSizeKeys) {
        if (line.compare(0, key.size(), key) != 0) {
            continue;
        }
        std::uint64_t size = 0;
        for (const char code : line.substr(key.size())) {
            const auto more = mxformat::sizeOfDataCode(code);
            if (!more) {
                return "\"" + std::string(1, code) + "\" is not a size";
            }
            size += *more;
        }
        return text::counted(size, "byte");
    }
    return "";
}

} // namespace

void explainGroup(PartList& parts, const ModuleView& /*module*/, const RawGroup& group)
{
    parts.bytes(group.bytes, "payload", "");
}

void explainGroup(PartList& parts, const ModuleView& module, const Header& group)
{
    const Place& tail = module.file().tail.place;
    const std::uint32_t size = tail.offset + tail.length;
    parts.number(group.contentLength, "content_length",
                 group.contentLength.value == size ? "bytes, the whole file" : "bytes of groups");
    parts.bytes(group.rest, "rest", "");
    parts.unread();
}

void explainGroup(PartList& parts, const ModuleView& /*module*/, const Identity& group)
{
    bool isFound = false;
    for (std::size_t i = 0; i < group.datasets.size(); ++i) {
        const Dataset& dataset = group.datasets[i];
        const bool isIdentity = dataset.id.value == mxformat::identityDataset && !isFound;
        isFound |= isIdentity;
        parts.beginRecord(i, "dataset 0x" + devices::parser::mx::u8AsHex(dataset.id.value));
        parts.number(dataset.id, "id", isIdentity ? "module identity" : "");
        parts.number(dataset.size, "size", "bytes of data");
        parts.number(dataset.unread, "unread", "");
        parts.unread();
        parts.bytes(dataset.data, "data", isIdentity ? identityMeaning(dataset) : "");
        if (!isIdentity) {
            parts.unread();
        }
        parts.number(dataset.trailer, "trailer", "");
        parts.unread();
    }
}

void explainGroup(PartList& parts, const ModuleView& /*module*/, const DataSizes& group)
{
    for (std::size_t i = 0; i < group.lines.size(); ++i) {
        const std::string meaning = sizeMeaning(group.lines[i].value);
        parts.beginRecord(i, "");
        parts.text(group.lines[i], "line", meaning);
        if (meaning.empty()) {
            parts.unread();
        }
    }
}

void explainGroup(PartList& parts, const ModuleView& /*module*/, const Entries& group)
{
    std::set<std::string> seen;
    for (std::size_t i = 0; i < group.entries.size(); ++i) {
        const Entry& entry = group.entries[i];
        const bool isRead = isKeyRead(entry.key.value) && seen.insert(entry.key.value).second;
        parts.beginRecord(i, "entry \"" + entry.key.value + "\"");
        parts.text(entry.key, "key", "");
        parts.number(entry.kind, "kind", "any byte");
        parts.unread();
        parts.text(entry.value, "value", "");
        if (!isRead) {
            parts.unread();
        }
    }
}

void explainGroup(PartList& parts, const ModuleView& module, const Extension& group)
{
    parts.number(group.version, "version", "");
    parts.number(group.gtinId, "gtin_id", "GTIN: " + textMeaning(module, group.gtinId.value, true));
    parts.bytes(group.date, "date",
                "calibration date \"" +
                    dateText(group).substr(0, mxformat::calibrationDateReadLength) +
                    "\", the last byte is not read");
    parts.bytes(group.rest, "rest", "");
    parts.unread();
}

void explainGroup(PartList& parts, const ModuleView& /*module*/, const ProductImage& group)
{
    parts.bytes(group.bytes, "image", "SVG, compressed with gzip");
}

} // namespace mxauthor
