#include "plan/ChannelFit.h"

#include <fmt/format.h>
#include <text/Beginning.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <string>

namespace mxstation {

namespace {

using mxmodule::MappedChannel;

std::string bytesOf(std::uint64_t first, std::uint64_t last)
{
    return first == last ? fmt::format("byte {}", first)
                         : fmt::format("bytes {} to {}", first, last);
}

std::string nameOf(const MappedChannel& channel)
{
    return fmt::format("\"{}\" ({})", text::shortened(channel.name), channel.symbol);
}

// The first channel of `positions` that is in the image, and how many these are.
struct OfImage
{
    const MappedChannel* first = nullptr;
    std::size_t count = 0;
};

OfImage ofImage(const mxmodule::ChannelMap& map, const std::vector<std::size_t>& positions,
                bool isInput)
{
    OfImage found;
    for (const std::size_t position : positions) {
        const MappedChannel& channel = map.channels()[position];
        if (channel.isInput == isInput) {
            found.first = found.first == nullptr ? &channel : found.first;
            ++found.count;
        }
    }
    return found;
}

// "the channel "A" (IW2) is", "the channel "A" (IW2) and 3 more are".
std::string subject(const OfImage& channels, const char* verb, const char* verbOfSeveral)
{
    const std::string first = "the channel " + nameOf(*channels.first);
    return channels.count == 1
               ? first + " " + verb
               : fmt::format("{} and {} more {}", first, channels.count - 1, verbOfSeveral);
}

std::string outsideText(const mxmodule::ImageBytes& area, const OfImage& outside)
{
    const std::uint64_t last =
        (outside.first->firstBit + std::max(outside.first->bits, 1U) - 1) / 8;
    const std::string data =
        area.size == 0
            ? "which has no data there"
            : "whose data are " + bytesOf(area.firstByte, area.firstByte + area.size - 1);
    return fmt::format("{} in {}, outside the module, {}", subject(outside, "is", "are, the first"),
                       bytesOf(outside.first->firstBit / 8, last), data);
}

// The next address at which the layout lets the module begin and no channel is displaced.
std::uint64_t cureOf(const mxmodule::ChannelMap& map, bool isInput, std::uint32_t alignment)
{
    const std::uint64_t next = map.undisplacedFrom(isInput);
    const std::uint64_t always = std::lcm(std::uint64_t{8}, std::uint64_t{alignment});
    return next % alignment == 0 ? next : (next + always - 1) / always * always;
}

std::string cureText(std::uint64_t cure, const char* image)
{
    return cure <= mostBytesStated
               ? fmt::format("at byte {} of the {} image its channels lie as at byte 0", cure,
                             image)
               : fmt::format("its channels lie as at byte 0 at a multiple of 8, but byte {} of the "
                             "{} image is the last that can be stated",
                             mostBytesStated, image);
}

std::optional<mxmodule::Finding> fitFinding(const mxmodule::ChannelMap& map, bool isInput,
                                            std::uint32_t alignment)
{
    const OfImage displaced = ofImage(map, map.displaced(), isInput);
    const OfImage outside = ofImage(map, map.outside(), isInput);
    if (displaced.count == 0 && outside.count == 0) {
        return std::nullopt;
    }
    const mxmodule::ImageBytes area = map.data(isInput);
    const char* const image = isInput ? "input" : "output";
    mxmodule::Finding finding{mxmodule::Severity::Warning, "", ""};
    finding.text = outside.count != 0
                       ? outsideText(area, outside)
                       : fmt::format("{} elsewhere in the module's data than at byte 0",
                                     subject(displaced, "lies", "lie"));
    if (displaced.count == 0) {
        finding.hint = "the module itself says so, at every address";
    } else {
        const std::uint64_t cure = cureOf(map, isInput, alignment);
        finding.hint = cureText(cure, image);
        if (cure <= mostBytesStated) {
            finding.accepted = {std::to_string(cure)};
        }
    }
    return finding;
}

} // namespace

std::vector<mxmodule::Finding> fitFindings(const mxmodule::ChannelMap& map, const Layout& layout)
{
    if (map.displaced().empty() && map.outside().empty()) {
        return {};
    }
    std::vector<mxmodule::Finding> findings;
    for (const bool isInput : {true, false}) {
        const ImageLayout& image = isInput ? layout.input : layout.output;
        if (const auto finding = fitFinding(map, isInput, image.alignment)) {
            findings.push_back(*finding);
        }
    }
    return findings;
}

} // namespace mxstation
