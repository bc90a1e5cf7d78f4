#include "mxmodule/IecVariable.h"

#include <fmt/format.h>
#include <text/IecNames.h>

namespace mxmodule {

namespace {

constexpr unsigned mostSeparateBits = 32;

char areaOf(bool isInput)
{
    return isInput ? 'I' : 'Q';
}

const char* typeOf(const MappedChannel& channel)
{
    switch (channel.kind) {
    case 'X':
        return "BOOL";
    case 'B':
        return channel.isSigned ? "SINT" : "BYTE";
    case 'W':
        return channel.isSigned ? "INT" : "WORD";
    case 'D':
        return channel.isSigned ? "DINT" : "DWORD";
    default:
        return channel.isSigned ? "LINT" : "LWORD";
    }
}

bool fillsBytes(const MappedChannel& channel)
{
    return channel.bits != 0 && channel.firstBit % 8 == 0 && channel.bits % 8 == 0;
}

IecVariable wholeVariable(const MappedChannel& channel)
{
    return {"",           typeOf(channel),  0, channel.isInput,
            channel.kind, channel.firstBit, 0, channel.bits};
}

IecVariable bytesVariable(const MappedChannel& channel)
{
    const unsigned bytes = channel.bits / 8;
    return {"", "BYTE",      bytes == 1 ? 0 : bytes, channel.isInput, 'B', channel.firstBit,
            0,  channel.bits};
}

// No type is wide enough for a long field that shares its bytes.
std::vector<IecVariable> bitVariables(const MappedChannel& channel)
{
    std::vector<IecVariable> variables;
    for (unsigned bit = 0; channel.bits <= mostSeparateBits && bit < channel.bits; ++bit) {
        variables.push_back({"_Bit" + std::to_string(bit), "BOOL", 0, channel.isInput, 'X',
                             channel.firstBit + bit, bit, channel.bits});
    }
    return variables;
}

} // namespace

std::vector<IecVariable> iecVariables(const MappedChannel& channel)
{
    if (!channel.isBitField || channel.kind == 'X') {
        return {wholeVariable(channel)};
    }
    return fillsBytes(channel) ? std::vector{bytesVariable(channel)} : bitVariables(channel);
}

std::string iecIdentifier(const MappedChannel& channel)
{
    const std::string identifier = text::iecIdentifier(channel.name);
    return identifier.empty() ? fmt::format("Channel_{}", channel.number) : identifier;
}

std::string iecTypeText(const IecVariable& variable)
{
    return variable.elements == 0
               ? variable.type
               : fmt::format("ARRAY [0..{}] OF {}", variable.elements - 1, variable.type);
}

std::string iecByteAddress(const IecVariable& variable)
{
    return variable.size == 'X' ? iecBitAddress(variable.isInput, variable.firstBit)
                                : fmt::format("%{}{}{}", areaOf(variable.isInput), variable.size,
                                              variable.firstBit / 8);
}

std::string iecBitAddress(bool isInput, std::uint64_t bit)
{
    return fmt::format("%{}X{}.{}", areaOf(isInput), bit / 8, bit % 8);
}

} // namespace mxmodule
