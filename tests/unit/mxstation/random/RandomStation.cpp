#include "RandomStation.h"

#include <algorithm>

namespace randomstations {

namespace {

std::uint64_t roundedUp(std::uint64_t number, std::uint64_t multiple)
{
    return (number + multiple - 1) / multiple * multiple;
}

std::vector<RowEntry*> inOrder(std::vector<RowEntry>& entries, bool isBytesFirst)
{
    std::vector<RowEntry*> order;
    std::vector<RowEntry*> last;
    for (RowEntry& entry : entries) {
        const bool isOfBits = !entry.reserve && entry.module->isOfBits();
        (isBytesFirst && isOfBits ? last : order).push_back(&entry);
    }
    order.insert(order.end(), last.begin(), last.end());
    return order;
}

// Returns the end of the image.
std::uint64_t layOutImage(RandomStation& station, bool isInput, std::mt19937* random)
{
    const Rules& rules = station.rules.of(isInput);
    std::uint64_t next = rules.start + rules.statusBefore;
    for (RowEntry* const entry : inOrder(station.entries, rules.isBytesFirst)) {
        if (entry->size(isInput) == 0) {
            continue;
        }
        std::uint64_t begin = roundedUp(next, rules.align);
        auto& pin = entry->pin.of(isInput);
        if (random != nullptr && below(*random, 5) == 0) {
            pin = begin + rules.align * below(*random, 4);
        }
        begin = pin.value_or(begin);
        entry->begin.of(isInput) = begin;
        next = begin + roundedUp(entry->size(isInput), rules.padModule);
    }
    return rules.start + roundedUp(next + rules.statusBehind - rules.start, rules.padImage);
}

std::uint64_t oneOf(std::mt19937& random, const std::vector<std::uint64_t>& numbers)
{
    return numbers[below(random, static_cast<std::uint32_t>(numbers.size()))];
}

Rules randomRules(std::mt19937& random)
{
    Rules rules;
    rules.start = oneOf(random, {0, 0, 1, 2, 3, 100, 517});
    rules.align = oneOf(random, {1, 1, 1, 2, 3, 4, 8});
    rules.padModule = oneOf(random, {1, 1, 2, 3, 4});
    rules.padImage = oneOf(random, {1, 1, 2, 5, 8});
    rules.statusBefore = oneOf(random, {0, 0, 1, 3});
    rules.statusBehind = oneOf(random, {0, 0, 1, 2});
    rules.isBytesFirst = below(random, 3) == 0;
    return rules;
}

// Every fourth entry is a place in which one of `modules` has room, empty or not.
RowEntry randomEntry(std::mt19937& random, const std::vector<RowModule>& modules)
{
    RowEntry entry;
    entry.module = &modules[below(random, static_cast<std::uint32_t>(modules.size()))];
    if (below(random, 4) == 0) {
        entry.reserve.emplace();
        entry.reserve->input = entry.module->size(true) + 1 + below(random, 4); // not empty
        entry.reserve->output = entry.module->size(false) + below(random, 5);
        entry.module = below(random, 3) == 0 ? entry.module : nullptr;
    }
    return entry;
}

template <typename Numbers>
std::string both(const char* key, const Numbers& input, const Numbers& output)
{
    return std::string(key) + ": {in: " + input + ", out: " + output + "}";
}

std::string textOf(const OfImages<Rules>& rules)
{
    const auto pair = [&rules](const char* key, std::uint64_t Rules::*rule) {
        return both(key, std::to_string(rules.input.*rule), std::to_string(rules.output.*rule));
    };
    const auto order = [](const Rules& one) -> std::string {
        return one.isBytesFirst ? "bytes-first" : "row";
    };
    return "layout: {" + pair("start", &Rules::start) + ", " + pair("align", &Rules::align) + ", " +
           pair("pad_module", &Rules::padModule) + ", " + pair("pad_image", &Rules::padImage) +
           ", " + pair("status_before", &Rules::statusBefore) + ", " +
           pair("status_behind", &Rules::statusBehind) + ", " +
           both("order", order(rules.input), order(rules.output)) + "}\n";
}

std::string textOf(const RowEntry& entry)
{
    std::vector<std::string> parts;
    if (entry.module != nullptr) {
        parts.push_back("module: " + entry.module->name());
    }
    if (entry.reserve) {
        parts.push_back(both("reserve", std::to_string(entry.reserve->input),
                             std::to_string(entry.reserve->output)));
    }
    std::string pins;
    for (const bool isInput : {true, false}) {
        if (const auto& pin = entry.pin.of(isInput)) {
            pins += (pins.empty() ? "" : ", ") + std::string(isInput ? "in: " : "out: ") +
                    std::to_string(*pin);
        }
    }
    if (!pins.empty()) {
        parts.push_back("at: {" + pins + "}");
    }
    if (parts.size() == 1 && entry.module != nullptr) {
        return entry.module->name();
    }
    std::string all;
    for (const std::string& part : parts) {
        all += (all.empty() ? "" : ", ") + part;
    }
    return "{" + all + "}";
}

} // namespace

std::uint64_t RowEntry::size(bool isInput) const
{
    return reserve ? reserve->of(isInput) : module->size(isInput);
}

void RandomStation::layOut(std::mt19937* random)
{
    end.input = layOutImage(*this, true, random);
    end.output = layOutImage(*this, false, random);
}

std::string RandomStation::text() const
{
    std::string all = textOf(rules) + "modules:\n";
    for (const RowEntry& entry : entries) {
        all += "  - " + textOf(entry) + "\n";
    }
    return all;
}

RandomStation randomStation(std::mt19937& random, const std::vector<RowModule>& modules)
{
    RandomStation station;
    station.rules.input = randomRules(random);
    station.rules.output = randomRules(random);
    for (std::uint32_t i = 1 + below(random, 12); i > 0; --i) {
        station.entries.push_back(randomEntry(random, modules));
    }
    station.layOut(&random);
    return station;
}

} // namespace randomstations
