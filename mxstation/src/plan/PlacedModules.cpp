#include "plan/PlacedModules.h"

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/Counted.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace mxstation {

namespace {

using mxmodule::Severity;

constexpr std::uint64_t lastAddress = 0xFFFFFFFF;

const char* imageName(bool isInput)
{
    return isInput ? "input" : "output";
}

std::optional<std::uint32_t> pinOf(const std::optional<StatedByte>& stated)
{
    return stated ? std::optional(stated->value) : std::nullopt;
}

const std::optional<StatedByte>& ofImage(const StatedBytes& bytes, bool isInput)
{
    return isInput ? bytes.input : bytes.output;
}

bool isOfBits(const mxmodule::ChannelMap& map)
{
    const auto& channels = map.channels();
    return !channels.empty() &&
           std::all_of(channels.begin(), channels.end(),
                       [](const mxmodule::MappedChannel& channel) { return channel.bits < 8; });
}

// The byte after what an entry takes; 0 if it takes nothing, wherever that is.
std::uint64_t endOf(const Slot& slot, std::uint64_t offset)
{
    return slot.size() == 0 ? 0 : offset + slot.size();
}

// How an entry is called in messages about another one.
std::string entryName(const Entry& entry)
{
    const std::string& reserved = entry.reserve ? entry.reserve->name : entry.name;
    const std::string& name = entry.name.empty() ? reserved : entry.name;
    const std::string shown = name.empty() ? entry.reference : name;
    const std::string what = entry.module ? "the module" : "the reserved place";
    const std::string where =
        entry.place.line == 0 ? "" : fmt::format(" in line {}", entry.place.line);
    return what + (shown.empty() ? "" : " \"" + text::abbreviated(shown) + "\"") + where;
}

} // namespace

PlacedModules::PlacedModules(const Station& planned, PlanFindings& collected)
    : station(planned),
      findings(collected),
      inputCursor(planned.layout.input, true),
      outputCursor(planned.layout.output, false),
      entryShapes(planned.entries.size()),
      modules(planned.entries.size()),
      inputOffsets(planned.entries.size()),
      outputOffsets(planned.entries.size())
{
    translateInRow();
    placeInOrder();
    translateElsewhere();
    for (std::size_t i = 0; i < station.entries.size(); ++i) {
        requireFit(i, true);
        requireFit(i, false);
    }
    addImageFindings(inputCursor, true);
    addImageFindings(outputCursor, false);
}

const PlacedModule* PlacedModules::at(std::size_t index) const
{
    return modules[index] ? &*modules[index] : nullptr;
}

std::size_t PlacedModules::countOfChannels() const
{
    std::size_t count = 0;
    for (const auto& module : modules) {
        count += module ? module->map.channels().size() : 0;
    }
    return count;
}

bool PlacedModules::isComplete() const
{
    for (std::size_t i = 0; i < modules.size(); ++i) {
        const Entry& entry = station.entries[i];
        if (!modules[i] && (entry.module || !entry.reserve)) {
            return false;
        }
    }
    return true;
}

// The sizes of a module are known when it is translated. Most modules are placed as in the row:
// they are translated at that place, and once.
void PlacedModules::translateInRow()
{
    ImageCursor input(station.layout.input, true);
    ImageCursor output(station.layout.output, false);
    for (std::size_t i = 0; i < station.entries.size(); ++i) {
        const Entry& entry = station.entries[i];
        if (entry.module) {
            const auto known = shapes.find(entry.module->bytes().data());
            entryShapes[i] = known == shapes.end() ? nullptr : &known->second;
        }
        if (entry.module && entryShapes[i] == nullptr) {
            translate(i, input.next(pinOf(entry.at.input)), output.next(pinOf(entry.at.output)));
        }
        input.place(slotOf(i, true));
        output.place(slotOf(i, false));
    }
}

void PlacedModules::placeInOrder()
{
    for (const std::size_t index : orderOf(station.layout.input)) {
        inputOffsets[index] = inputCursor.place(slotOf(index, true));
    }
    for (const std::size_t index : orderOf(station.layout.output)) {
        outputOffsets[index] = outputCursor.place(slotOf(index, false));
    }
    inputCursor.finish();
    outputCursor.finish();
}

void PlacedModules::translateElsewhere()
{
    for (std::size_t i = 0; i < modules.size(); ++i) {
        const Entry& entry = station.entries[i];
        if (entryShapes[i] == nullptr) {
            continue;
        }
        const std::uint64_t end = std::max(endOf(slotOf(i, true), inputOffsets[i]),
                                           endOf(slotOf(i, false), outputOffsets[i]));
        if (end > lastAddress + 1) {
            findings.add(entry.place, Severity::Error,
                         fmt::format("the module ends at byte {}, the last address of an image is "
                                     "byte {}",
                                     end - 1, lastAddress));
            modules[i].reset();
        } else if (!modules[i] || modules[i]->map.data(true).firstByte != inputOffsets[i] ||
                   modules[i]->map.data(false).firstByte != outputOffsets[i]) {
            translate(i, inputOffsets[i], outputOffsets[i]);
        }
    }
}

void PlacedModules::translate(std::size_t index, std::uint64_t input, std::uint64_t output)
{
    const Entry& entry = station.entries[index];
    mxmodule::ModuleOptions options;
    options.offsets.input = static_cast<unsigned>(std::min(input, lastAddress));
    options.offsets.output = static_cast<unsigned>(std::min(output, lastAddress));
    try {
        const ModuleShape* const shape = entryShapes[index];
        const mxmodule::Module module = shape == nullptr ? mxmodule::Module(*entry.module, options)
                                                         : shape->module.at(options.offsets);
        modules[index].emplace(PlacedModule{module, module.channelMap()});
    } catch (const mxmodule::Failure& failure) {
        const mxmodule::Finding& reason = failure.reason();
        findings.add(entry.place, Severity::Error, fmt::format("{}: {}", reason.place, reason.text),
                     reason.hint);
        return;
    }
    if (entryShapes[index] == nullptr) {
        const mxmodule::ChannelMap& map = modules[index]->map;
        ModuleShape shape{modules[index]->module, map.data(true).size, map.data(false).size,
                          isOfBits(map)};
        entryShapes[index] =
            &shapes.emplace(entry.module->bytes().data(), std::move(shape)).first->second;
    }
}

Slot PlacedModules::slotOf(std::size_t index, bool isInput) const
{
    const Entry& entry = station.entries[index];
    const ModuleShape* const shape = entryShapes[index];
    Slot slot;
    slot.entry = index;
    slot.data = shape == nullptr ? 0 : isInput ? shape->input : shape->output;
    slot.pin = pinOf(ofImage(entry.at, isInput));
    if (entry.reserve) {
        const auto& size = ofImage(entry.reserve->size, isInput);
        slot.isPlace = true;
        slot.reserved = std::max(slot.data, std::uint64_t{size ? size->value : 0});
    }
    return slot;
}

// A reserved place is one for a module of bytes, whatever is in it: filling it moves nothing.
std::vector<std::size_t> PlacedModules::orderOf(const ImageLayout& layout) const
{
    std::vector<std::size_t> order(station.entries.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (layout.order == ImageOrder::BytesFirst) {
        std::stable_partition(order.begin(), order.end(), [this](std::size_t index) {
            const Entry& entry = station.entries[index];
            const ModuleShape* const shape = entryShapes[index];
            return entry.reserve || shape == nullptr || !shape->isOfBits;
        });
    }
    return order;
}

void PlacedModules::requireFit(std::size_t index, bool isInput)
{
    const Entry& entry = station.entries[index];
    const ModuleShape* const shape = entryShapes[index];
    if (!entry.reserve || shape == nullptr) {
        return;
    }
    const auto& size = ofImage(entry.reserve->size, isInput);
    const std::uint64_t reserved = size ? size->value : 0;
    const std::uint64_t data = isInput ? shape->input : shape->output;
    if (data > reserved) {
        findings.add(
            size ? size->place : entry.reserve->size.place, Severity::Error,
            fmt::format("the {} data of the module take {}, {} reserved", imageName(isInput),
                        text::counted(data, "byte"),
                        reserved == 1 ? "1 byte is" : fmt::format("{} bytes are", reserved)));
    }
}

void PlacedModules::addImageFindings(const ImageCursor& cursor, bool isInput)
{
    for (const WrongPin& wrong : cursor.wrongPins()) {
        addWrongPin(wrong, isInput);
    }
    if (cursor.exceedsMost()) {
        const auto beyond = cursor.firstBeyond();
        const auto& layout = isInput ? station.layout.input : station.layout.output;
        findings.add(beyond ? station.entries[*beyond].place : station.layoutPlace, Severity::Error,
                     fmt::format("the {} image takes {}, the layout allows {}", imageName(isInput),
                                 text::counted(cursor.image().size, "byte"), *layout.mostBytes));
    }
}

void PlacedModules::addWrongPin(const WrongPin& wrong, bool isInput)
{
    const Entry& entry = station.entries[wrong.entry];
    const auto& stated = ofImage(entry.at, isInput);
    const std::string what =
        fmt::format("byte {} of the {} image", stated->value, imageName(isInput));
    switch (wrong.reason) {
    case WrongPin::Reason::Occupied:
        findings.add(stated->place, Severity::Error,
                     fmt::format("{} is not free: {} comes before in the image", what,
                                 wrong.before ? entryName(station.entries[*wrong.before])
                                              : "the status of the coupler"),
                     fmt::format("byte {} is the first that is free there", wrong.possible),
                     {std::to_string(wrong.possible)});
        break;
    case WrongPin::Reason::Alignment:
        findings.add(
            stated->place, Severity::Error,
            fmt::format("{} is no multiple of {}, at which the layout begins a module", what,
                        (isInput ? station.layout.input : station.layout.output).alignment),
            fmt::format("byte {} is the next one", wrong.possible),
            {std::to_string(wrong.possible)});
        break;
    case WrongPin::Reason::NoData:
        findings.add(
            stated->place, Severity::Warning,
            fmt::format("there are no {} data, the address has no effect", imageName(isInput)));
        break;
    }
}

} // namespace mxstation
