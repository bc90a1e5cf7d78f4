#include "simulator/ServedRequest.h"

#include "bus/ModbusException.h"
#include "bus/WordBytes.h"

#include <algorithm>

namespace mxonline {

namespace {

using Pdu = std::vector<std::uint8_t>;

constexpr std::uint32_t mostWrittenWhileReading = 121; // of function 23, by the protocol

RegisterRange rangeOf(const Pdu& pdu, std::size_t at)
{
    return {wordAt(pdu, at), wordAt(pdu, at + 2)};
}

std::vector<std::uint16_t> wordsFrom(const Pdu& pdu, std::size_t at)
{
    std::vector<std::uint16_t> words;
    for (; at + 1 < pdu.size(); at += 2) {
        words.push_back(wordAt(pdu, at));
    }
    return words;
}

bool isCount(const RegisterRange& range, std::uint32_t most)
{
    return range.count >= 1 && range.count <= most;
}

// A range, the number of bytes, and the values.
bool readValues(const Pdu& pdu, std::size_t at, std::uint32_t most, ServedRequest& request)
{
    request.written = rangeOf(pdu, at);
    request.values = wordsFrom(pdu, at + 5);
    return isCount(request.written, most) && pdu[at + 4] == 2 * request.written.count;
}

// False: its numbers are against the protocol. The size is that of the function.
bool readContent(const Pdu& pdu, std::uint32_t mostRead, std::uint32_t mostWritten,
                 ServedRequest& request)
{
    switch (request.function) {
    case 6:
        request.written = {wordAt(pdu, 1), 1};
        request.values = wordsFrom(pdu, 3);
        return true;
    case 16:
        return readValues(pdu, 1, mostWritten, request);
    case 22:
        request.written = {wordAt(pdu, 1), 1};
        request.keptBits = wordAt(pdu, 3);
        request.values = wordsFrom(pdu, 5);
        return true;
    case 23:
        request.read = rangeOf(pdu, 1);
        return isCount(request.read, mostRead) &&
               readValues(pdu, 5, std::min(mostWritten, mostWrittenWhileReading), request);
    default: // 3 and 4
        request.read = rangeOf(pdu, 1);
        return isCount(request.read, mostRead);
    }
}

} // namespace

ServedRequest servedRequest(const Pdu& pdu, std::uint32_t mostRead, std::uint32_t mostWritten)
{
    ServedRequest request;
    request.function = pdu[0];
    const int size = servedRequestSize(pdu.data(), pdu.size());
    if (size < 0) {
        request.exception = illegalFunction;
    } else if (static_cast<std::size_t>(size) != pdu.size() ||
               !readContent(pdu, mostRead, mostWritten, request)) {
        request.exception = illegalDataValue;
    }
    return request;
}

int servedRequestSize(const std::uint8_t* pdu, std::size_t known)
{
    switch (pdu[0]) {
    case 3:
    case 4:
    case 6:
        return 5;
    case 16:
        return known < 6 ? 0 : 6 + pdu[5];
    case 22:
        return 7;
    case 23:
        return known < 10 ? 0 : 10 + pdu[9];
    default:
        return -1;
    }
}

} // namespace mxonline
