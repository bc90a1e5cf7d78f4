// The verdict on stored parameter images, compared with every image of two bytes. The meaning of an
// image is worked out here bit by bit, independently of the library.

#include "MxBuffer.h"

#include <mxauthor/Diff.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace {

constexpr unsigned imageBytes = 2;
constexpr unsigned imageCount = 1U << (8 * imageBytes);

struct Parameter
{
    unsigned name = 0;
    unsigned byte = 0;
    unsigned datatype = 1; // UInt8, UInt16, SInt8, SInt16, Byte
    unsigned bits = 0;     // of a Byte
    unsigned bit = 0;
    int minimum = 0;
    int maximum = 0;
    std::vector<int> options; // empty: the range holds

    unsigned size() const { return datatype == 2 || datatype == 4 ? 2 : 1; }
    bool isSigned() const { return datatype == 3 || datatype == 4; }

    // The bits of the image that hold the value; byte 0 is the high byte of `image`.
    unsigned mask() const
    {
        if (size() == 2) {
            return 0xFFFF;
        }
        const unsigned inByte = datatype == 5 ? ((1U << bits) - 1U) << bit : 0xFFU;
        return byte == 0 ? inByte << 8 : inByte;
    }

    unsigned lowestBit() const { return mask() & (~mask() + 1U); }

    int numberIn(unsigned image) const
    {
        const unsigned value = (image & mask()) / lowestBit();
        const int limit = size() == 2 ? 0x8000 : 0x80;
        const int number = static_cast<int>(value);
        return isSigned() && number >= limit ? number - 2 * limit : number;
    }

    bool accepts(int number) const
    {
        if (!options.empty()) {
            return std::find(options.begin(), options.end(), number) != options.end();
        }
        const bool statesNone = minimum == 0 && maximum == 0;
        const bool isReversed = minimum < 0 && !isSigned(); // -1 is 255 there, above each maximum
        return statesNone || (!isReversed && minimum <= number && number <= maximum);
    }
};

struct Module
{
    std::vector<Parameter> parameters;
    unsigned defaults = 0;

    const Parameter* called(unsigned name) const
    {
        const auto found =
            std::find_if(parameters.begin(), parameters.end(),
                         [name](const Parameter& candidate) { return candidate.name == name; });
        return found == parameters.end() ? nullptr : &*found;
    }

    unsigned held() const
    {
        unsigned bits = 0;
        for (const Parameter& parameter : parameters) {
            bits |= parameter.mask();
        }
        return bits;
    }

    bool hasOverlaps() const
    {
        unsigned bits = 0;
        for (const Parameter& parameter : parameters) {
            if ((bits & parameter.mask()) != 0) {
                return true;
            }
            bits |= parameter.mask();
        }
        return false;
    }

    bool isStored(unsigned image) const
    {
        return ((image ^ defaults) & ~held() & 0xFFFFU) == 0 &&
               std::all_of(parameters.begin(), parameters.end(),
                           [image](const Parameter& p) { return p.accepts(p.numberIn(image)); });
    }

    mxauthor::MxFile file() const
    {
        testkit::Bytes records;
        testkit::Bytes lists;
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            const Parameter& parameter = parameters[i];
            testkit::ParameterRecord record;
            record.number = static_cast<std::uint8_t>(10 + parameter.name);
            record.nameId = static_cast<std::uint16_t>(100 + parameter.name);
            record.position = static_cast<std::uint8_t>(4 + parameter.byte);
            record.datatype = static_cast<std::uint8_t>(parameter.datatype);
            record.bitLength = static_cast<std::uint8_t>(parameter.bits);
            record.bitOffset = static_cast<std::uint8_t>(parameter.bit);
            record.minimum = slot(parameter.minimum);
            record.maximum = slot(parameter.maximum);
            if (!parameter.options.empty()) {
                record.mapId = static_cast<std::uint8_t>(i + 1);
                std::vector<std::pair<std::uint64_t, unsigned>> options;
                for (const int option : parameter.options) {
                    options.emplace_back(slot(option), 110); // one text: wording is irrelevant
                }
                lists = testkit::join({lists, testkit::optionList(record.mapId, options)});
            }
            records = testkit::join({records, record.bytes()});
        }
        testkit::MxBuffer buffer = testkit::minimalModule({"Parameter,s=W"});
        buffer.group(0x0010, testkit::join({testkit::hexBytes("0000"), testkit::u16(defaults)}));
        buffer.group(0x20C0, records);
        buffer.group(0x20C1, lists);
        buffer.group(0x20D3, testkit::textTablePayload(
                                 {{100, "A"}, {101, "B"}, {102, "C"}, {110, "option"}}));
        return mxauthor::readMxFile(buffer.chars());
    }

private:
    static std::uint64_t slot(int number)
    {
        return static_cast<std::uint64_t>(static_cast<std::int64_t>(number));
    }
};

// Whether `after` accepts the image, and every earlier parameter keeps its number.
bool keepsMeaning(const Module& before, const Module& after, unsigned image)
{
    return std::all_of(after.parameters.begin(), after.parameters.end(), [&](const Parameter& now) {
        const int number = now.numberIn(image);
        const Parameter* const old = before.called(now.name);
        return now.accepts(number) && (old == nullptr || old->numberIn(image) == number);
    });
}

struct Truth
{
    unsigned stored = 0; // images that the old description accepts
    unsigned kept = 0;   // of these, those that mean the same under the new one
};

Truth truthOf(const Module& before, const Module& after)
{
    Truth truth;
    for (unsigned image = 0; image < imageCount; ++image) {
        if (before.isStored(image)) {
            ++truth.stored;
            truth.kept += keepsMeaning(before, after, image) ? 1 : 0;
        }
    }
    return truth;
}

class Dice
{
public:
    explicit Dice(unsigned seed) : source(seed) {}

    unsigned below(unsigned count) { return static_cast<unsigned>(source() % count); }
    bool oneIn(unsigned count) { return below(count) == 0; }

    Parameter parameter(unsigned name)
    {
        Parameter made;
        made.name = name;
        place(made);
        acceptance(made);
        return made;
    }

    void place(Parameter& made)
    {
        made.datatype = 1 + below(5);
        made.byte = made.size() == 2 ? 0 : below(2);
        made.bit = made.datatype == 5 ? below(8) : 0;
        made.bits = made.datatype == 5 ? 1 + below(8 - made.bit) : 0;
    }

    void acceptance(Parameter& made)
    {
        const int highest = made.datatype == 5 ? (1 << made.bits) - 1 : 100;
        const int lowest = made.isSigned() ? -3 : 0;
        made.options.clear();
        made.minimum = oneIn(3) ? 0 : lowest + static_cast<int>(below(4));
        made.maximum = oneIn(3) ? 0 : static_cast<int>(below(static_cast<unsigned>(highest) + 1));
        made.maximum = std::max(made.maximum, made.minimum);
        for (unsigned i = oneIn(2) ? 1 + below(3) : 0; i > 0; --i) {
            made.options.push_back(static_cast<int>(below(4)));
        }
    }

    Module module()
    {
        Module made;
        made.defaults = oneIn(2) ? 0 : below(imageCount);
        for (unsigned name = 0; name < 1 + below(3); ++name) {
            made.parameters.push_back(parameter(name));
        }
        return made;
    }

    // One or two small changes of `before`.
    Module changed(const Module& before)
    {
        Module after = before;
        for (unsigned i = 1 + below(2); i > 0; --i) {
            Parameter& one =
                after.parameters[below(static_cast<unsigned>(after.parameters.size()))];
            switch (below(5)) {
            case 0:
                place(one);
                break;
            case 1:
                acceptance(one);
                break;
            case 2:
                one = parameter(2);
                break;
            case 3:
                one.datatype = one.size() == 2 ? 2 + 2 * below(2) : 1 + 2 * below(2);
                one.bit = 0;
                one.bits = 0;
                break;
            default:
                one.maximum += static_cast<int>(below(3));
            }
        }
        std::map<unsigned, Parameter> byName;
        for (const Parameter& parameter : after.parameters) {
            byName.emplace(parameter.name, parameter);
        }
        after.parameters.clear();
        for (const auto& entry : byName) {
            after.parameters.push_back(entry.second);
        }
        return after;
    }

private:
    std::mt19937 source;
};

std::string described(const Module& module)
{
    std::string text = "default " + std::to_string(module.defaults) + "\n";
    for (const Parameter& p : module.parameters) {
        text += "  " + std::to_string(p.name) + ": byte " + std::to_string(p.byte) + " type " +
                std::to_string(p.datatype) + " bits " + std::to_string(p.bits) + "@" +
                std::to_string(p.bit) + " range " + std::to_string(p.minimum) + ".." +
                std::to_string(p.maximum) + " options";
        for (const int option : p.options) {
            text += " " + std::to_string(option);
        }
        text += "\n";
    }
    return text;
}

// Whether a parameter ends at another bit of the image.
bool movesAny(const Module& before, const Module& after)
{
    return std::any_of(after.parameters.begin(), after.parameters.end(), [&](const Parameter& now) {
        const Parameter* const old = before.called(now.name);
        return old != nullptr && old->lowestBit() != now.lowestBit();
    });
}

// The verdict may be "no" too often, but never wrongly "yes": for parameters that share bits, since
// setting one changes the other, and for one that moves to bits that happen to hold its only value.
TEST(DiffImages, theVerdictHoldsForEveryStoredImage)
{
    constexpr unsigned pairs = 600;
    Dice dice(20261121);
    unsigned yes = 0;
    unsigned no = 0;
    for (unsigned i = 0; i < pairs; ++i) {
        const Module before = dice.module();
        const Module after = dice.changed(before);
        const Truth truth = truthOf(before, after);
        if (truth.stored == 0) {
            continue; // a parameter that accepts nothing its bits can hold
        }
        const mxauthor::Comparison verdict = compare(before.file(), after.file());
        (verdict.imageStaysValid ? yes : no) += 1;
        const bool mayBeCautious =
            truth.kept == truth.stored && (before.hasOverlaps() || movesAny(before, after));
        if (!mayBeCautious) {
            ASSERT_EQ(verdict.imageStaysValid, truth.kept == truth.stored)
                << verdict.because << "\n"
                << truth.kept << " of " << truth.stored << "\nbefore " << described(before)
                << "after " << described(after);
        }
    }
    EXPECT_GT(yes, pairs / 10); // both verdicts occurred
    EXPECT_GT(no, pairs / 10);
}

} // namespace
