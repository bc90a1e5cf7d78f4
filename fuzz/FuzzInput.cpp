#include "FuzzInput.h"

#include <Poco/Channel.h>
#include <Poco/Logger.h>

#include <algorithm>
#include <cstring>
#include <iostream>

namespace fuzz {

namespace {

class NoLines : public Poco::Channel
{
public:
    void log(const Poco::Message& /*message*/) override {}
};

const std::uint8_t* findSeparator(const std::uint8_t* begin, const std::uint8_t* end)
{
    const char* const separator = FuzzInput::separator;
    return std::search(begin, end, separator, separator + std::strlen(separator),
                       [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); });
}

std::vector<std::uint8_t> afterSeparator(const std::uint8_t* begin, const std::uint8_t* end)
{
    const std::uint8_t* const found = findSeparator(begin, end);
    return {found == end ? end : found + std::strlen(FuzzInput::separator), end};
}

} // namespace

std::uint8_t Words::takeByte()
{
    return empty() ? std::uint8_t{0} : content[next++];
}

std::uint16_t Words::takeU16()
{
    const unsigned high = takeByte();
    return static_cast<std::uint16_t>(high << 8 | takeByte());
}

std::uint32_t Words::takeU32()
{
    const std::uint32_t high = takeU16();
    return high << 16 | takeU16();
}

std::vector<std::uint8_t> Words::takeBytes(std::size_t count)
{
    const std::size_t taken = std::min(count, content.size() - next);
    const auto begin = content.begin() + static_cast<std::ptrdiff_t>(next);
    next += taken;
    return {begin, begin + static_cast<std::ptrdiff_t>(taken)};
}

std::string Words::takeLine()
{
    std::string line;
    while (!empty()) {
        const std::uint8_t byte = takeByte();
        if (byte == '\n') {
            break;
        }
        line += static_cast<char>(byte);
    }
    return line;
}

FuzzInput::FuzzInput(const std::uint8_t* data, std::size_t size)
    : file(data, findSeparator(data, data + size)), words(afterSeparator(data, data + size))
{}

void silence()
{
    Poco::Logger::root().setChannel(new NoLines);
    Poco::Logger::get("mxparser-kv38").setChannel(Poco::Logger::root().getChannel());
    std::cerr.rdbuf(nullptr);
    std::cout.rdbuf(nullptr);
}

} // namespace fuzz
