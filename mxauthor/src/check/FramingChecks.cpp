#include "check/Checks.h"
#include <text/Counted.h>

#include <devices/parser/mx/ByteReaders.h>
#include <devices/parser/mx/HexText.h>

namespace mxauthor {

namespace {

const CheckRule fileRows[] = {
    {"no-groups", error,
     "The file holds no group. Readers accept it and fail at the first group that they look for.",
     "no group in 4 bytes"},
    {"framing", error,
     "The length of a group exceeds the data or is below the minimum, or the content length is "
     "above the size of the file. Nothing after it can be read.",
     "content length 755, the file has 754 bytes"},
    {"content-length", warning,
     "The content length of the header is not the size of the file. Readers stop at it.",
     "group 0000: content length 689, the file has 755 bytes"},
    {"header-missing", note, "Without a header a cut between two groups cannot be detected.",
     "no group 0000 states how long the file is"},
    {"trailing-bytes", warning,
     "Bytes after the last group or the content length. They are not read.",
     "3 bytes after the last group, not read"},
};
const auto& [noGroups, framing, contentLength, headerMissing, trailingBytes] = fileRows;

namespace mx = devices::parser::mx;

using mxformat::groupHeaderSize;

// Whether the header itself is well framed, and only the content length exceeds the file.
bool isCutOff(const std::uint8_t* data, std::uint32_t start, std::size_t size)
{
    constexpr std::uint32_t smallest = mxformat::smallestGroup(mxformat::group::header);
    return start == 0 && size >= smallest && mx::readU16BE(data) == mxformat::group::header &&
           mx::readU16BE(data + 2) >= smallest && mx::readU16BE(data + 2) <= size &&
           mx::readU16BE(data + groupHeaderSize) > size;
}

// Describes the bytes at `start`, where the container reader failed.
std::string statedLength(const std::uint8_t* data, std::uint32_t start, std::size_t left)
{
    const std::uint16_t id = mx::readU16BE(data + start);
    const std::uint16_t length = mx::readU16BE(data + start + 2);
    std::string text = "group " + mx::u16AsHex(id) + " states a length of " +
                       text::counted(length, "byte") + ", " + std::to_string(left) +
                       " are left and the minimum is " +
                       std::to_string(mxformat::smallestGroup(id));
    if (id == mxformat::group::header && left >= mxformat::contentLengthEnd) {
        text += "; content length " + std::to_string(mx::readU16BE(data + start + groupHeaderSize));
    }
    return text;
}

// The bytes from `start` that may hold groups: up to the content length, if an earlier header
// states one.
std::size_t bytesLeft(const MxFile& file, std::uint32_t start, std::size_t size)
{
    for (const Group& group : file.groups) {
        if (const auto* header = std::get_if<Header>(&group.content)) {
            size = std::min<std::size_t>(size, header->contentLength.value);
        }
    }
    return size > start ? size - start : 0;
}

void checkContentLength(const ModuleView& module, Findings& findings)
{
    const auto* const header = module.content<Header>(mxformat::group::header);
    if (header == nullptr) {
        findings.addToFile(headerMissing, {}, "no group 0000 states how long the file is");
        return;
    }
    const Place& tail = module.file().tail.place;
    const std::uint32_t size = tail.offset + tail.length;
    if (header->contentLength.value != size) {
        findings.add(contentLength, header->contentLength.place, "",
                     "content length " + std::to_string(header->contentLength.value) +
                         ", the file has " + text::counted(size, "byte"));
    }
}

void checkFileEnds(const ModuleView& module, Findings& findings)
{
    const Place& tail = module.file().tail.place;
    if (module.file().groups.empty()) {
        findings.addToFile(noGroups, tail, "no group in " + text::counted(tail.length, "byte"));
        return;
    }
    checkContentLength(module, findings);
    if (tail.length > 0) {
        findings.addToFile(trailingBytes, tail,
                           text::counted(tail.length, "byte") + " after the last group, not read");
    }
}

} // namespace

const Check fileCheck(fileRows, checkFileEnds);

void checkFraming(const std::vector<char>& bytes, const MxFile& file, Findings& findings)
{
    const std::uint32_t start = file.tail.place.offset;
    const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const std::size_t left = bytesLeft(file, start, bytes.size());
    findings.addToFile(framing, {mx::readU16BE(data + start), start, groupHeaderSize},
                       isCutOff(data, start, bytes.size())
                           ? "content length " +
                                 std::to_string(mx::readU16BE(data + groupHeaderSize)) +
                                 ", the file has " + text::counted(bytes.size(), "byte")
                           : statedLength(data, start, left));
}

} // namespace mxauthor
