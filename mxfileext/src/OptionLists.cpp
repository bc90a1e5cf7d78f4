#include "OptionLists.h"

#include <devices/parser/mx/ByteReaders.h>

namespace mxfileext {

namespace {

using devices::parser::mx::readU16BE;
using devices::parser::mx::readU64BE;

constexpr std::size_t listHeaderSize = 2; // identifier and number of options
constexpr std::size_t optionSize = 10;    // slot and text identifier

} // namespace

std::vector<Option> OptionLists::options(std::uint8_t id) const
{
    std::vector<Option> found;
    if (id == 0) {
        return found;
    }
    for (std::size_t pos = 0; bytes.size() - pos >= listHeaderSize;) {
        const std::size_t size = optionSize * bytes[pos + 1];
        const bool isAskedFor = bytes[pos] == id;
        pos += listHeaderSize;
        if (size > bytes.size() - pos) {
            break;
        }
        const std::uint8_t* const first = bytes.data() + pos;
        for (std::size_t at = 0; isAskedFor && at < size; at += optionSize) {
            found.push_back({readU64BE(first + at), readU16BE(first + at + 8)});
        }
        pos += size;
    }
    return found;
}

} // namespace mxfileext
