#include "bus/RtuFrame.h"

#include "bus/ModbusException.h"

namespace mxonline {

namespace {

constexpr std::size_t checksumSize = 2;

// The CRC-16 with the polynomial 0xA001, beginning with 0xFFFF.
std::uint16_t rtuChecksum(const std::vector<std::uint8_t>& bytes)
{
    unsigned checksum = 0xFFFF;
    for (const std::uint8_t byte : bytes) {
        checksum ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            checksum = checksum >> 1 ^ ((checksum & 1) != 0 ? 0xA001U : 0U);
        }
    }
    return static_cast<std::uint16_t>(checksum);
}

} // namespace

std::vector<std::uint8_t> rtuFrame(std::uint8_t unit, const std::vector<std::uint8_t>& request)
{
    std::vector<std::uint8_t> frame{unit};
    frame.insert(frame.end(), request.begin(), request.end());
    const std::uint16_t checksum = rtuChecksum(frame);
    frame.push_back(static_cast<std::uint8_t>(checksum));
    frame.push_back(static_cast<std::uint8_t>(checksum >> 8));
    return frame;
}

bool hasRtuChecksum(const std::vector<std::uint8_t>& frame)
{
    const std::vector<std::uint8_t> content(frame.begin(), frame.end() - checksumSize);
    const int stated = frame[frame.size() - 2] | frame[frame.size() - 1] << 8;
    return rtuChecksum(content) == stated;
}

std::optional<std::size_t> rtuAnswerSize(const std::vector<std::uint8_t>& beginning)
{
    const std::uint8_t function = beginning[1];
    if ((function & exceptionBit) != 0) {
        return 3 + checksumSize;
    }
    switch (function) {
    case 3:
    case 4:
        return 3 + beginning[2] + checksumSize;
    case 6:
    case 16:
        return 6 + checksumSize;
    case 22:
        return 8 + checksumSize;
    default:
        return std::nullopt;
    }
}

} // namespace mxonline
