#pragma once

#include <mxstation/Plan.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace mxstation {

/// What an entry of the row takes of one process image.
struct Slot
{
    std::size_t entry = 0;                 ///< Index of the entry in the station.
    std::uint64_t data = 0;                ///< Bytes of the module's data.
    std::uint64_t reserved = 0;            ///< Bytes of the place, at least `data` if not 0.
    std::optional<std::uint32_t> pin = {}; ///< Address that the station states.
    bool isPlace = false;                  ///< A reserved place, with or without a module.

    std::uint64_t size() const { return isPlace ? reserved : data; }
};

/// A pinned address that the layout does not allow.
struct WrongPin
{
    enum class Reason
    {
        Occupied,  ///< What comes before it in the image ends later.
        Alignment, ///< Not a multiple of the alignment.
        NoData     ///< There are no data to pin.
    };

    std::size_t entry;
    Reason reason;
    std::uint64_t possible;            ///< The least address that is possible.
    std::optional<std::size_t> before; ///< The entry that it follows in the image.
};

/// Lays out one process image, slot by slot in the order of the image.
class ImageCursor
{
public:
    /// `ofInputs`: the image is that of the inputs, otherwise of the outputs.
    ImageCursor(const ImageLayout& image, bool ofInputs);

    /// Returns where the data of the next slot begin: at the pinned address, else after what is
    /// before it, aligned.
    std::uint64_t next(const std::optional<std::uint32_t>& pin) const;

    /// Places `slot` and returns where its data begin. A slot without bytes takes no place.
    std::uint64_t place(const Slot& slot);

    /// Ends the image. No slot can be placed after it.
    void finish();

    const ImageBytes& image() const { return whole; } ///< Complete after `finish`.
    const std::vector<Gap>& gaps() const { return allGaps; }
    const std::vector<WrongPin>& wrongPins() const { return wrong; }

    /// The first entry that does not fit into the largest size of the image; empty: all fit, or the
    /// status bytes or the padding of the whole exceed it.
    std::optional<std::size_t> firstBeyond() const { return beyond; }

    /// Whether the image is larger than it may be. Known after `finish`.
    bool exceedsMost() const;

private:
    void checkPin(const Slot& slot);
    void addGap(GapReason reason, std::uint64_t begin, std::uint64_t end,
                std::optional<std::size_t> entry = {});

    ImageLayout layout;
    bool isInput;
    std::uint64_t position;          // after what is placed
    std::optional<std::size_t> last; // the entry placed last
    ImageBytes whole;
    std::vector<Gap> allGaps;
    std::vector<WrongPin> wrong;
    std::optional<std::size_t> beyond;
};

} // namespace mxstation
