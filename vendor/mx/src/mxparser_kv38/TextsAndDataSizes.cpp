#include "devices/parser/mx/ByteReaders.h"
#include "devices/parser/mx/Parser_kv38.h"

#include "LogLine.h"
#include "TextIndex.h"

#include <mxformat/DataSizes.h>
#include <mxformat/Datatype.h>
#include <mxformat/Groups.h>
#include <mxformat/TextTable.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <stdexcept>

namespace devices::parser::mx {

namespace {

using mxformat::lineEndSize;
using mxformat::textIdSize;

[[noreturn]] void failTextTermination()
{
    throw std::runtime_error("Invalid textstring termination");
}

// Cuts the length of a text so that neither the text nor the terminator after it leaves the mx
// buffer, which holds `available` bytes from the text's start.
unsigned lengthWithin(std::size_t available, unsigned length)
{
    if (available == 0) {
        failTextTermination();
    }
    return static_cast<unsigned>(std::min<std::size_t>(length, available - 1));
}

// Returns where the line end of the skipped text at `pos` begins. A bare line feed ends the text
// too; the byte before it then counts into the two-byte line end.
std::uint32_t findLineEnd(const std::uint8_t* payload, std::uint32_t size, std::uint32_t pos)
{
    for (; pos < size; ++pos) {
        if (payload[pos] == '\r' || payload[pos + 1] == '\n') {
            return pos;
        }
    }
    failTextTermination();
}

} // namespace

const std::string& Parser_kv38::mxTextToStdString(const std::uint8_t* text, unsigned length)
{
    traceEntry(logger, "mxTextToStdString");
    static std::string result;
    result.clear();
    const std::uint8_t* const limit = text + length + 1;
    const std::uint8_t* const end = std::find_if(text, limit, mxformat::endsText);
    if (end == limit) {
        failTextTermination();
    }
    result.assign(reinterpret_cast<const char*>(text), static_cast<std::size_t>(end - text));
    return result;
}

const std::string& Parser_kv38::getTextStringById(std::uint16_t id)
{
    traceEntry(logger, "getTextStringById");
    TextIndex& index = texts();
    if (index.payload == nullptr) {
        throw std::runtime_error("Cannot find group 20d3");
    }
    const std::uint32_t start = findText(index, id);
    if (start == 0 || start == index.size) {
        throw std::runtime_error("Cannot find requested text string: ID = " + std::to_string(id));
    }
    const unsigned length = lengthWithin(bytesFrom(index.payload, start), index.size - start);
    return mxTextToStdString(index.payload + start, length);
}

TextIndex& Parser_kv38::texts()
{
    if (!textIndex->isAttachedTo(indexings())) {
        std::uint32_t size = 0;
        const std::uint8_t* const payload = getGroup(mxformat::group::texts, &size);
        textIndex->attachTo(indexings(), payload, size);
    }
    return *textIndex;
}

std::uint32_t Parser_kv38::findText(TextIndex& index, std::uint16_t id)
{
    while (index.startOf(id) == 0) {
        if (index.skippedText != 0) {
            index.next = findLineEnd(index.payload, index.size, index.skippedText) + lineEndSize;
            index.skippedText = 0;
        }
        // For an empty payload the subtraction wraps: one record is then read after the group.
        if (index.size - 1 <= index.next) {
            return 0;
        }
        const std::uint8_t* const record =
            bytesAt(index.payload, index.next, textIdSize, mxformat::group::texts);
        // Where memory runs out, the record is read again by the next look-up.
        index.add(readU16BE(record), index.next + textIdSize);
        index.skippedText = index.next + textIdSize;
    }
    return index.startOf(id);
}

std::uint32_t Parser_kv38::getDatatypeSize(MxParameterDatatype type)
{
    traceEntry(logger, "getDatatypeSize");
    const auto* const datatype = mxformat::findDatatype(static_cast<std::uint8_t>(type));
    if (datatype == nullptr) {
        throw std::runtime_error("Invalid datatype");
    }
    return 8U * datatype->bytes;
}

// The assertions name the parameters, which are called like the members that they usually point to.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"

void Parser_kv38::getDataArraySizes(std::uint32_t* inDataSize, std::uint32_t* outDataSize,
                                    std::uint32_t* paramDataSize, std::uint32_t* diagDataSize)
{
    traceEntry(logger, "getDataArraySizes");
    assert(inDataSize);
    assert(outDataSize);
    assert(paramDataSize);
    assert(diagDataSize);

    std::uint32_t remaining = 0;
    const std::uint8_t* payload = getGroup(mxformat::group::dataSizes, &remaining);
    if (payload == nullptr) {
        throw std::runtime_error("Missing group 0x0011");
    }
    const std::array<std::uint32_t*, mxformat::dataSizeKeys.size()> sizes = {
        inDataSize, outDataSize, paramDataSize, diagDataSize};
    for (std::uint32_t* const size : sizes) {
        *size = 0;
    }
    // The lines have to fill the payload exactly: otherwise `remaining` wraps and the walk goes on
    // after the payload, to the end of the mx buffer at most.
    for (std::uint32_t pos = 0; remaining != 0;) {
        const unsigned length = lengthWithin(bytesFrom(payload, pos), remaining);
        const std::string line = mxTextToStdString(payload + pos, length);
        std::uint32_t used = 0;
        for (std::size_t i = 0; i < sizes.size() && used == 0; ++i) {
            used = updateDataArraySize(line, mxformat::dataSizeKeys[i], sizes[i]);
        }
        if (used == 0) {
            used = static_cast<std::uint32_t>(line.size()) + lineEndSize;
        }
        remaining -= used;
        pos += used;
    }

    *inDataSize = mxformat::correctedDataSize(moduleId, *inDataSize);
    *outDataSize = mxformat::correctedDataSize(moduleId, *outDataSize);
}

#pragma GCC diagnostic pop

std::uint32_t Parser_kv38::updateDataArraySize(const std::string& line, const std::string& key,
                                               std::uint32_t* size)
{
    traceEntry(logger, "updateDataArraySize");
    if (line.compare(0, key.size(), key) != 0) {
        return 0;
    }
    for (auto code = line.begin() + static_cast<std::ptrdiff_t>(key.size()); code != line.end();
         ++code) {
        const auto more = mxformat::sizeOfDataCode(*code);
        if (!more) {
            throw std::runtime_error("Error in group 0x0011: Unknown datatype identifier");
        }
        *size += *more;
    }
    return static_cast<std::uint32_t>(line.size()) + lineEndSize;
}

} // namespace devices::parser::mx
