#include "plan/ImageCursor.h"

#include <algorithm>

namespace mxstation {

namespace {

std::uint64_t roundedUp(std::uint64_t number, std::uint32_t multiple)
{
    return (number + multiple - 1) / multiple * multiple;
}

} // namespace

ImageCursor::ImageCursor(const ImageLayout& image, bool ofInputs)
    : layout(image),
      isInput(ofInputs),
      position(std::uint64_t{image.start} + image.statusBefore),
      whole{image.start, 0}
{
    addGap(GapReason::Status, layout.start, position);
}

std::uint64_t ImageCursor::next(const std::optional<std::uint32_t>& pin) const
{
    return pin ? *pin : roundedUp(position, layout.alignment);
}

std::uint64_t ImageCursor::place(const Slot& slot)
{
    if (slot.size() == 0) {
        if (slot.pin) {
            wrong.push_back({slot.entry, WrongPin::Reason::NoData, *slot.pin, {}});
        }
        return next({});
    }
    checkPin(slot);
    const std::uint64_t begin = next(slot.pin);
    const std::uint64_t end = begin + slot.size();
    const std::uint64_t padded = begin + roundedUp(slot.size(), layout.modulePadding);
    addGap(GapReason::Padding, position, begin);
    addGap(GapReason::Reserved, begin + slot.data, end, slot.entry);
    addGap(GapReason::Padding, end, padded);
    position = std::max(position, padded);
    last = slot.entry;
    if (!beyond && layout.mostBytes &&
        position + layout.statusBehind > layout.start + *layout.mostBytes) {
        beyond = slot.entry;
    }
    return begin;
}

void ImageCursor::checkPin(const Slot& slot)
{
    if (!slot.pin) {
        return;
    }
    const std::uint64_t possible = next({});
    if (*slot.pin < position) {
        wrong.push_back({slot.entry, WrongPin::Reason::Occupied, possible, last});
    } else if (*slot.pin % layout.alignment != 0) {
        wrong.push_back({slot.entry, WrongPin::Reason::Alignment,
                         roundedUp(*slot.pin, layout.alignment), last});
    }
}

void ImageCursor::finish()
{
    const std::uint64_t statusEnd = position + layout.statusBehind;
    const std::uint64_t end =
        layout.start + roundedUp(statusEnd - layout.start, layout.imagePadding);
    addGap(GapReason::Status, position, statusEnd);
    addGap(GapReason::Padding, statusEnd, end);
    whole.size = end - layout.start;
}

bool ImageCursor::exceedsMost() const
{
    return layout.mostBytes && whole.size > *layout.mostBytes;
}

void ImageCursor::addGap(GapReason reason, std::uint64_t begin, std::uint64_t end,
                         std::optional<std::size_t> entry)
{
    if (begin < end) {
        Gap gap;
        gap.isInput = isInput;
        gap.reason = reason;
        gap.firstBit = begin * 8;
        gap.bits = (end - begin) * 8;
        gap.entry = entry;
        allGaps.push_back(gap);
    }
}

} // namespace mxstation
