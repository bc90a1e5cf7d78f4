#pragma once

#include "mxmodule/CsvStyle.h"
#include "mxmodule/Values.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace mxmodule {

/// A channel that has a place in a process image.
struct MappedChannel
{
    std::string id;                ///< Identifier in the device, decimal.
    std::uint8_t number = 0;       ///< Several channels may have the same.
    std::string name;              ///< May be empty.
    bool isInput = false;          ///< In the input image, otherwise in the output image.
    std::string symbol;            ///< IEC address such as "IW4".
    char kind = 0;                 ///< Size letter 'X', 'B', 'W', 'D' or 'L'.
    std::uint32_t byteAddress = 0; ///< First byte in the image.
    std::uint8_t bitOffset = 0;    ///< As in the mx file; may be above 7.
    std::uint8_t bitLength = 0;    ///< In bits.
    std::uint8_t mask = 0;         ///< 2^(number of bits) - 1, cut to eight bits.
    bool isSigned = false;         ///< Whether the value is signed; false for a bit field.
    std::uint64_t firstBit = 0;    ///< First bit in the image, counted from byte 0.
    unsigned bits = 0;             ///< Number of bits in the image.
    bool isBitField = false; ///< Addressed by bits; otherwise whole bytes, as the kind states.
};

/// Consecutive bits of a process image.
struct BitRun
{
    std::uint64_t firstBit = 0; ///< Counted from byte 0.
    std::uint64_t bits = 0;     ///< Number of bits.
};

/// Consecutive bytes of a process image.
struct ImageBytes
{
    std::uint64_t firstByte = 0; ///< In the process image.
    std::uint64_t size = 0;      ///< Number of bytes.
};

/// The part of a process image that belongs to a module.
struct ImageArea
{
    std::uint64_t firstByte = 0;     ///< In the process image.
    std::uint64_t size = 0;          ///< In bytes.
    std::vector<BitRun> free;        ///< Bits of the data without a channel, in order.
    std::vector<BitRun> overlapping; ///< Bits of more than one channel, in order.
};

/// The places of a module's channels in the process images. Immutable; a copy shares the content.
class MXMODULE_API ChannelMap
{
public:
    struct Content;
    /// For the library: see `Module::channelMap`.
    explicit ChannelMap(std::shared_ptr<const Content> content);

    /// Returns where the module's data lies in the input or the output image. Unlike `input()` and
    /// `output()`, which look for free bits at the first call, it computes nothing.
    ImageBytes data(bool input) const;

    const ImageArea& input() const;  ///< The module's part of the input image.
    const ImageArea& output() const; ///< The module's part of the output image.

    const std::vector<MappedChannel>& channels() const; ///< In the order of the device.
    const std::vector<Channel>& withoutSymbol() const;  ///< Channels in no image.

    /// Returns the positions in `channels()` of those that lie elsewhere from the first byte of the
    /// module's data of their image than in a module at offset 0. Modules align channels on the
    /// byte of the image, so not every offset moves all channels of a module alike.
    std::vector<std::size_t> displaced() const;

    /// Returns the least byte, from the first of the module's data in an image on, at which none of
    /// the channels there would be displaced. A multiple of 8 always is one. At most 2^32, one more
    /// than the greatest offset.
    std::uint64_t undisplacedFrom(bool input) const;

    /// Returns the positions in `channels()` of those with a bit outside the module's data of their
    /// image.
    std::vector<std::size_t> outside() const;

    std::string text() const;                          ///< A table for people.
    std::string csv(const CsvStyle& style = {}) const; ///< The same table.

    /// Returns the channels, those without an address, and the free and overlapping bits of both
    /// images as JSON, schema "mxtool.channels" version 1.
    std::string json() const;

    /// Returns the channels as IEC 61131-3 declarations of global variables, in their order.
    ///
    /// Addresses count bytes. A bit field becomes one BOOL per bit, because a variable of whole
    /// bytes would include, and write, bits of its neighbours. A bit field that fills whole bytes
    /// becomes a BYTE or an array of BYTE; any other of more than 32 bits becomes a comment.
    std::string declarations() const;

    /// Returns the picture of the images as a self-contained SVG document, always the same for the
    /// same map.
    std::string svg() const;

    /// Returns the picture as text of 80 columns: a line per byte, more where channels overlap.
    /// `coloured`: with terminal colour codes.
    std::string drawing(bool coloured = false) const;

    /// Copying and moving share the content.
    ChannelMap(const ChannelMap&) = default;
    /// The same.
    ChannelMap& operator=(const ChannelMap&) = default;
    ~ChannelMap() = default;

private:
    std::shared_ptr<const Content> content;
};

} // namespace mxmodule
