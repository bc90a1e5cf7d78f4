#include "mxstation/Declarations.h"

#include "export/CChannel.h"
#include "export/ChannelIdentifiers.h"
#include "export/ChannelWarning.h"
#include "export/CommentText.h"
#include "export/Provenance.h"

#include <Poco/String.h>
#include <fmt/format.h>
#include <text/TextWidth.h>
#include <text/Utf8.h>

namespace mxstation {

namespace {

constexpr std::size_t longestPrefix = 40;

constexpr const char* beginning = R"(#ifndef $P_H
#define $P_H

#include <assert.h>
#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
#define $P_AS(type, value) static_cast<type>(value)
#else
#define $P_AS(type, value) ((type)(value))
#endif

/* A function that a program may leave unused. */
#ifdef __GNUC__
#define $P_FUNCTION static inline __attribute__((unused))
#else
#define $P_FUNCTION static inline
#endif

)";

// The order of bytes is that of the loops: the same on any host.
constexpr const char* bytesBigEndian =
    R"(/* Values of several bytes: the most significant byte first. */
$P_FUNCTION uint64_t $p_get_bytes(const uint8_t *bytes, unsigned size)
{
    uint64_t value = 0u;
    unsigned i;
    for (i = 0u; i < size; ++i) {
        value = (value << 8) | bytes[i];
    }
    return value;
}
$P_FUNCTION void $p_put_bytes(uint8_t *bytes, unsigned size, uint64_t value)
{
    unsigned i;
    for (i = size; i > 0u; --i) {
        bytes[i - 1u] = $P_AS(uint8_t, value & 0xffu);
        value >>= 8;
    }
}
)";

constexpr const char* bytesLittleEndian =
    R"(/* Values of several bytes: the least significant byte first. */
$P_FUNCTION uint64_t $p_get_bytes(const uint8_t *bytes, unsigned size)
{
    uint64_t value = 0u;
    unsigned i;
    for (i = size; i > 0u; --i) {
        value = (value << 8) | bytes[i - 1u];
    }
    return value;
}
$P_FUNCTION void $p_put_bytes(uint8_t *bytes, unsigned size, uint64_t value)
{
    unsigned i;
    for (i = 0u; i < size; ++i) {
        bytes[i] = $P_AS(uint8_t, value & 0xffu);
        value >>= 8;
    }
}
)";

constexpr const char* otherFunctions = R"(/* The value of a signed number, `mask` has its bits. */
$P_FUNCTION int64_t $p_signed(uint64_t value, uint64_t mask)
{
    return value > (mask >> 1) ? -$P_AS(int64_t, mask - value) - 1 : $P_AS(int64_t, value);
}
/* Bit fields: bit 0 of the value is the bit `first` of the first byte, the other bits follow upwards. */
$P_FUNCTION uint64_t $p_get_bits(const uint8_t *bytes, unsigned first, unsigned count)
{
    uint64_t value = 0u;
    unsigned i;
    for (i = count; i > 0u; --i) {
        const unsigned bit = first + i - 1u;
        value = (value << 1) | ((bytes[bit / 8u] >> (bit % 8u)) & 1u);
    }
    return value;
}
$P_FUNCTION void $p_put_bits(uint8_t *bytes, unsigned first, unsigned count, uint64_t value)
{
    unsigned i;
    for (i = 0u; i < count; ++i) {
        const unsigned bit = first + i;
        const unsigned others = bytes[bit / 8u] & ~(1u << (bit % 8u));
        const unsigned own = $P_AS(unsigned, value & 1u) << (bit % 8u);
        bytes[bit / 8u] = $P_AS(uint8_t, others | own);
        value >>= 1;
    }
}

/* Constants of a channel: OFFSET, its first byte in the array; SIZE, how many bytes it is in; MASK, the bits of its
 * value. Of a bit field also BIT, its lowest bit in the first byte, and BITS. A value that is too large for a bit
 * field is cut. */

)";

std::string cComment(const std::string& text)
{
    return "/* " + commentText(text, {"/*", "*/", "??"}) + " */\n";
}

std::string prefixOf(const Plan& plan)
{
    std::string prefix = text::iecIdentifier(plan.station).substr(0, longestPrefix);
    prefix.erase(prefix.find_last_not_of('_') + 1);
    return prefix.empty() ? "Station" : prefix;
}

class CHeaderText
{
public:
    explicit CHeaderText(const Plan& exported)
        : plan(exported),
          prefix(prefixOf(plan)),
          words({{'p', prefix}, {'P', Poco::toUpper(prefix)}})
    {}

    Declarations make()
    {
        made.text = cComment(text::labelOf(plan.station) + ": its process images and channels.");
        for (const std::string& line : Provenance(plan).lines()) {
            made.text += cComment(line);
        }
        add(beginning);
        addImage(plan.input, "input");
        addImage(plan.output, "output");
        add(plan.layout.byteOrder == ByteOrder::Big ? bytesBigEndian : bytesLittleEndian);
        add(otherFunctions);
        addChannels();
        add("#endif\n");
        return std::move(made);
    }

private:
    void add(const std::string& pattern) { made.text += filledWith(words, pattern); }

    // There is no array without elements.
    void addImage(const ImageBytes& image, const std::string& name)
    {
        if (image.size == 0) {
            made.text += cComment(fmt::format("There is no {} image.", name)) + "\n";
            return;
        }
        words['i'] = name;
        words['I'] = Poco::toUpper(name);
        words['s'] = std::to_string(image.size);
        words['f'] = std::to_string(image.offset);
        made.text +=
            cComment(fmt::format("The {} image: bytes {} to {}, the first one is bytes[0].", name,
                                 image.offset, image.end() - 1));
        add("#define $P_FIRST_BYTE_OF_$I $fu\n"
            "#define $P_SIZE_OF_$I $su\n"
            "typedef struct $p_$i_image {\n"
            "    uint8_t bytes[$P_SIZE_OF_$I];\n"
            "} $p_$i_image;\n"
            "static_assert(sizeof($p_$i_image) == $P_SIZE_OF_$I, \"an image is its bytes\");\n\n");
    }

    void addChannels()
    {
        text::IecNames names;
        const auto identifiers = channelIdentifiers(
            plan, [](const Channel&) { return std::vector<std::string>{""}; }, names);
        for (std::size_t i = 0; i < plan.channels.size(); ++i) {
            addChannel(plan.channels[i], identifiers[i].front());
        }
    }

    void addChannel(const Channel& channel, const std::string& identifier)
    {
        const CChannel inC(plan, channel, prefix, identifier);
        const auto reason = inC.reason();
        const std::string comment =
            channel.comment.empty() ? "" : ": " + text::toUtf8(channel.comment);
        const std::string missing =
            reason ? fmt::format(" ({} is not declared: {})", identifier, *reason) : "";
        made.text += cComment(channel.symbol + ", " + channelText(channel) + missing + comment);
        if (reason) {
            made.findings.push_back(channelWarning(
                plan, channel, fmt::format("({}) is not declared: {}", channel.symbol, *reason)));
        } else {
            made.text += inC.text();
        }
        made.text += "\n";
    }

    const Plan& plan;
    std::string prefix;
    CWords words;
    Declarations made;
};

} // namespace

Declarations cHeader(const Plan& plan)
{
    return CHeaderText(plan).make();
}

} // namespace mxstation
