#include "RowModules.h"

#include "MxBuffer.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace randomstations {

namespace {

using testkit::Bytes;

unsigned byteAt(const std::vector<char>& bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes.at(at));
}

unsigned u16At(const std::vector<char>& bytes, std::size_t at)
{
    return byteAt(bytes, at) << 8 | byteAt(bytes, at + 1);
}

// The payload of the group `id`; empty if there is none.
std::vector<char> payloadOf(const std::vector<char>& file, unsigned id)
{
    for (std::size_t at = 0; at + 6 <= file.size(); at += u16At(file, at + 2)) {
        if (u16At(file, at) == id) {
            const auto begin = file.begin() + static_cast<std::ptrdiff_t>(at);
            return {begin + 4, begin + static_cast<std::ptrdiff_t>(u16At(file, at + 2)) - 2};
        }
    }
    return {};
}

std::uint64_t statedSize(const std::vector<char>& file, const std::string& key)
{
    static const std::map<char, unsigned> sizes{{'D', 4}, {'W', 2}, {'B', 1}};
    const std::vector<char> lines = payloadOf(file, 0x0011);
    std::uint64_t size = 0;
    for (auto line = lines.begin(); line != lines.end();) {
        const auto end = std::find(line, lines.end(), '\n');
        const std::string text(line, end);
        for (std::size_t i = key.size(); text.compare(0, key.size(), key) == 0 && i < text.size();
             ++i) {
            size += sizes.count(text[i]) != 0 ? sizes.at(text[i]) : 0;
        }
        line = end == lines.end() ? end : end + 1;
    }
    return size;
}

bool isModule(const std::vector<char>& file, const std::string& identifier)
{
    const std::vector<char> identity = payloadOf(file, 0x0001);
    return std::search(identity.begin(), identity.end(), identifier.begin(), identifier.end()) !=
           identity.end();
}

// Two modules have other sizes than they state.
std::uint64_t dataSize(const std::vector<char>& file, const std::string& key)
{
    if (isModule(file, std::string("\x0b\xc1\xe8\0", 4))) {
        return 0;
    }
    return statedSize(file, key) + (isModule(file, "\x0e\x81\x27\x6d") ? 2 : 0);
}

// The identifiers of the texts "-".
std::set<unsigned> hidingTexts(const std::vector<char>& file)
{
    const std::vector<char> table = payloadOf(file, 0x20D3);
    std::set<unsigned> found;
    for (std::size_t at = 2; at + 2 < table.size();) {
        const auto begin = table.begin() + static_cast<std::ptrdiff_t>(at) + 2;
        const auto end = std::find(begin, table.end(), '\r');
        if (std::string(begin, end) == "-") {
            found.insert(u16At(table, at));
        }
        at = static_cast<std::size_t>(end - table.begin()) + 2;
    }
    return found;
}

// The numbers of the channels that are called "-".
std::set<unsigned> hiddenNumbers(const std::vector<char>& file)
{
    const std::set<unsigned> texts = hidingTexts(file);
    const std::vector<char> names = payloadOf(file, 0x20D7);
    std::map<unsigned, unsigned> textOfNumber;
    for (std::size_t at = 0; at + 3 <= names.size(); at += 3) {
        textOfNumber.emplace(byteAt(names, at), u16At(names, at + 1));
    }
    std::set<unsigned> hidden;
    for (const auto& [number, text] : textOfNumber) {
        if (texts.count(text) != 0) {
            hidden.insert(number);
        }
    }
    return hidden;
}

std::vector<Record> recordsOf(const std::vector<char>& file)
{
    const std::vector<char> payload = payloadOf(file, 0x20D0);
    const std::set<unsigned> hidden = hiddenNumbers(file);
    std::vector<Record> records;
    for (std::size_t at = 0; at + 7 <= payload.size(); at += 7 + 2 * byteAt(payload, at + 6)) {
        records.push_back({static_cast<std::uint8_t>(byteAt(payload, at + 1)),
                           static_cast<std::uint8_t>(byteAt(payload, at + 3)),
                           static_cast<std::uint8_t>(byteAt(payload, at + 4)),
                           hidden.count(byteAt(payload, at)) != 0});
    }
    return records;
}

// The next free byte of an image, and the next free bit in it.
struct Next
{
    std::uint64_t byte;
    unsigned bit = 0;
};

Place takeBits(const Record& record, Next& next)
{
    const bool isOne = record.bitLength == 1;
    const std::uint64_t mask =
        record.bitLength >= 32 ? 0xFFFFFFFF : (std::uint64_t{1} << record.bitLength) - 1;
    Place place;
    place.symbol = (isOne ? "X" : "B") + std::to_string(next.byte) + (isOne ? "_" : "#") +
                   std::to_string(record.bitOffset) + (isOne ? "" : "," + std::to_string(mask));
    place.firstBit = next.byte * 8 + record.bitOffset; // not the counted bit
    place.bits = record.bitLength;
    const unsigned bit = next.bit + record.bitLength;
    next = {next.byte + (bit >= 8 ? 1 : 0), bit % 8};
    return place;
}

std::uint64_t afterBitsOf(std::uint64_t byte, unsigned size)
{
    switch (size) {
    case 1:
        return byte + 1;
    case 2:
        return (byte + 2) / 2 * 2;
    default:
        return byte + 1 + (byte + 1) % size; // no alignment, and meant so
    }
}

// A channel without a symbol takes no place.
Place take(const Record& record, Next& next)
{
    static const std::map<unsigned, std::pair<const char*, unsigned>> sizes{
        {1, {"B", 1}}, {3, {"B", 1}}, {2, {"W", 2}}, {4, {"W", 2}},
        {6, {"D", 4}}, {7, {"D", 4}}, {8, {"L", 8}}, {9, {"L", 8}}};
    const unsigned kind = record.kind & 31U;
    if (kind == 5) {
        return takeBits(record, next);
    }
    const auto found = sizes.find(kind);
    if (found == sizes.end()) {
        return {};
    }
    const auto [letter, size] = found->second;
    const std::uint64_t byte = next.bit == 0 ? next.byte : afterBitsOf(next.byte, size);
    next = {byte + size, 0};
    return {false, letter + std::to_string(byte), byte * 8, std::uint64_t{size} * 8};
}

bool ofInputs(const Record& record)
{
    return (record.kind & 0x80U) != 0;
}

Place takeOf(const Record& record, Next& input, Next& output)
{
    Place place = take(record, ofInputs(record) ? input : output);
    place.isInput = ofInputs(record);
    if (!place.symbol.empty()) {
        place.symbol.insert(0, place.isInput ? "I" : "Q");
    }
    return place;
}

Bytes randomRecord(std::mt19937& random, unsigned number)
{
    static const std::vector<std::uint8_t> kinds{5, 5, 5, 5, 5, 1, 2, 3, 4, 6, 7, 8, 9, 0, 10, 31};
    static const std::vector<std::uint8_t> lengths{1, 1, 1, 2, 3, 7, 8, 0, 12, 16, 40};
    testkit::ChannelRecord record;
    record.number = static_cast<std::uint8_t>(number);
    record.kind = static_cast<std::uint8_t>(kinds[below(random, 16)] | below(random, 2) << 7);
    record.bitLength = lengths[below(random, 11)];
    record.bitOffset = static_cast<std::uint8_t>(below(random, 8));
    record.words = static_cast<std::uint8_t>(below(random, 3));
    return record.bytes();
}

// The bytes that the channels of an image end at, in a module at byte 0.
std::uint64_t usedBytes(const RowModule& module, bool isInput)
{
    std::uint64_t end = 0;
    for (const Place& place : module.places(0, 0)) {
        if (place.isInput == isInput) {
            end = std::max(end, (place.firstBit + place.bits + 7) / 8);
        }
    }
    return end;
}

testkit::MxBuffer withChannels(const std::vector<std::string>& dataSizes, const Bytes& channels)
{
    testkit::MxBuffer buffer = testkit::minimalModule(dataSizes);
    buffer.group(0x20D3, testkit::textTablePayload({{100, "-"}}))
        .group(0x20D7, testkit::join({{3}, testkit::u16(100), {7}, testkit::u16(100)}))
        .group(0x20D0, channels);
    return buffer;
}

} // namespace

RowModule::RowModule(std::string name, std::vector<char> bytes)
    : fileName(std::move(name)),
      content(std::move(bytes)),
      records(recordsOf(content)),
      inputSize(dataSize(content, "InData")),
      outputSize(dataSize(content, "OutData"))
{}

std::vector<Place> RowModule::places(std::uint64_t input, std::uint64_t output) const
{
    Next nextInput{input};
    Next nextOutput{output};
    std::vector<Place> all;
    for (const Record& record : records) {
        const Place place = takeOf(record, nextInput, nextOutput);
        if (!record.isHidden && !place.symbol.empty()) {
            all.push_back(place);
        }
    }
    return all;
}

bool RowModule::isOfBits() const
{
    const std::vector<Place> all = places(0, 0);
    return !all.empty() &&
           std::all_of(all.begin(), all.end(), [](const Place& place) { return place.bits < 8; });
}

std::vector<Place> RowModule::placesOf(bool isInput, std::uint64_t first) const
{
    std::vector<Place> all = places(first, first);
    all.erase(std::remove_if(all.begin(), all.end(),
                             [isInput](const Place& place) { return place.isInput != isInput; }),
              all.end());
    return all;
}

bool RowModule::isDisplaced(bool isInput, std::uint64_t first) const
{
    const std::vector<Place> here = placesOf(isInput, first);
    const std::vector<Place> atZero = placesOf(isInput, 0);
    return !std::equal(here.begin(), here.end(), atZero.begin(),
                       [first](const Place& a, const Place& b) {
                           return a.firstBit / 8 == b.firstBit / 8 + first;
                       });
}

bool RowModule::isOutside(bool isInput, std::uint64_t first) const
{
    const std::vector<Place> here = placesOf(isInput, first);
    const std::uint64_t end = (first + size(isInput)) * 8;
    return std::any_of(here.begin(), here.end(), [first, end](const Place& place) {
        return place.bits != 0 && (place.firstBit < first * 8 || place.firstBit + place.bits > end);
    });
}

std::vector<char> randomModule(std::mt19937& random)
{
    std::vector<Bytes> records;
    for (unsigned i = below(random, 12); i > 0; --i) {
        records.push_back(randomRecord(random, i));
    }
    const Bytes channels = testkit::join(records);
    const RowModule sizeless("", withChannels({}, channels).chars());
    const auto line = [&](const char* key, bool isInput) {
        const std::uint64_t odd = below(random, 8) == 0 ? below(random, 4) : 0;
        const std::uint64_t used = usedBytes(sizeless, isInput);
        const std::uint64_t size = below(random, 2) == 0 ? used + odd : used - std::min(used, odd);
        return std::string(key) + ",s=" + std::string(size, 'B');
    };
    return withChannels({line("InData", true), line("OutData", false)}, channels).chars();
}

} // namespace randomstations
