#include "export/CChannel.h"

#include "export/ImagePlace.h"

#include <Poco/String.h>
#include <fmt/format.h>
#include <text/Counted.h>

namespace mxstation {

namespace {

constexpr unsigned mostBits = 64; // of the widest type

// The bits of the narrowest type for a value.
unsigned bitsOfType(unsigned bits)
{
    unsigned width = 8;
    while (width < bits) {
        width *= 2;
    }
    return width;
}

} // namespace

std::string filledWith(const CWords& words, const std::string& pattern)
{
    std::string filled;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        filled += pattern[i] == '$' ? words.at(pattern[++i]) : std::string(1, pattern[i]);
    }
    return filled;
}

CChannel::CChannel(const Plan& planned, const Channel& declared, const std::string& prefix,
                   const std::string& identifier)
    : plan(planned), channel(declared)
{
    words = {{'p', prefix},
             {'P', Poco::toUpper(prefix)},
             {'n', identifier},
             {'N', Poco::toUpper(identifier)},
             {'i', channel.isInput ? "input" : "output"},
             {'I', channel.isInput ? "INPUT" : "OUTPUT"}};
    if (!reason()) {
        words['t'] = type();
        words['o'] = std::to_string(byteInImage(plan, channel));
        words['s'] = std::to_string(size());
        words['m'] = maskText();
        words['b'] = std::to_string(channel.firstBit % 8);
        words['c'] = std::to_string(channel.bits);
    }
}

std::optional<std::string> CChannel::reason() const
{
    if (channel.bits == 0) {
        return "it has no bits";
    }
    if (!liesInImage(plan, channel)) {
        return fmt::format("it is outside the {} image", words.at('i'));
    }
    return channel.bits > mostBits
               ? std::optional(fmt::format("no type holds {}", text::counted(channel.bits, "bit")))
               : std::nullopt;
}

std::string CChannel::text() const
{
    return constants() + assertion() + functions();
}

std::string CChannel::type() const
{
    if (channel.isBitField && channel.bits == 1) {
        return "bool";
    }
    return fmt::format("{}int{}_t", channel.isSigned ? "" : "u", bitsOfType(channel.bits));
}

unsigned CChannel::size() const
{
    return static_cast<unsigned>((channel.firstBit % 8 + channel.bits + 7) / 8);
}

std::string CChannel::maskText() const
{
    const std::uint64_t mask = ~std::uint64_t{0} >> (mostBits - channel.bits);
    return channel.bits > 32 ? fmt::format("UINT64_C({:#x})", mask) : fmt::format("{:#x}u", mask);
}

std::string CChannel::constants() const
{
    const std::string all = "#define $P_$N_OFFSET $ou\n"
                            "#define $P_$N_SIZE $su\n"
                            "#define $P_$N_MASK $m\n";
    const std::string ofField = "#define $P_$N_BIT $bu\n"
                                "#define $P_$N_BITS $cu\n";
    return filledWith(words, channel.isBitField ? all + ofField : all);
}

std::string CChannel::assertion() const
{
    const std::string inImage = "static_assert($P_$N_OFFSET + $P_$N_SIZE <= $P_SIZE_OF_$I,\n"
                                "              \"$n is in the $i image\");\n";
    const std::string ofField = "static_assert($P_$N_BIT + $P_$N_BITS <= 8u * $P_$N_SIZE,\n"
                                "              \"$n is in its bytes\");\n"
                                "static_assert($P_$N_MASK >> ($P_$N_BITS - 1u) == 1u,\n"
                                "              \"$n has a mask of its bits\");\n";
    const std::string ofBytes = "static_assert($P_$N_SIZE == sizeof($t),\n"
                                "              \"$n has the size of its type\");\n"
                                "static_assert($P_$N_MASK >> (8u * $P_$N_SIZE - 1u) == 1u,\n"
                                "              \"$n has a mask of its bits\");\n";
    return filledWith(words, inImage + (channel.isBitField ? ofField : ofBytes));
}

std::string CChannel::functions() const
{
    const std::string at = "&image->bytes[$P_$N_OFFSET]";
    std::string read = "$p_get_bytes(" + at + ", $P_$N_SIZE)";
    std::string write = "$p_put_bytes(" + at + ", $P_$N_SIZE, ";
    if (channel.isBitField) {
        read = "$p_get_bits(" + at + ", $P_$N_BIT, $P_$N_BITS)";
        write = "$p_put_bits(" + at + ", $P_$N_BIT, $P_$N_BITS, ";
    } else if (channel.isSigned) {
        read = "$p_signed(" + read + ", $P_$N_MASK)";
    }
    const std::string& type = words.at('t');
    const bool isWidest = type == "uint64_t" || type == "int64_t";
    return filledWith(words, "$P_FUNCTION $t $p_read_$n(const $p_$i_image *image)\n"
                             "{\n"
                             "    return " +
                                 (isWidest         ? read
                                  : type == "bool" ? read + " != 0u"
                                                   : "$P_AS($t, " + read + ")") +
                                 ";\n"
                                 "}\n"
                                 "$P_FUNCTION void $p_write_$n($p_$i_image *image, $t value)\n"
                                 "{\n"
                                 "    " +
                                 write + (type == "uint64_t" ? "value" : "$P_AS(uint64_t, value)") +
                                 ");\n"
                                 "}\n");
}

} // namespace mxstation
