#pragma once

#include "MxBuffer.h"

#include <random>

namespace roundtrip {

/// Generates mx files whose framing holds: plausible modules, and the same with groups in odd
/// orders, repeated or unknown, with checksums, bytes after the end and damaged payloads. The same
/// seed gives the same files on every machine.
class GeneratedFiles
{
public:
    explicit GeneratedFiles(unsigned seed) : random(seed) {}

    /// Returns the next file.
    std::vector<char> next();

private:
    struct Group
    {
        std::uint16_t id;
        testkit::Bytes payload;
        unsigned checksum = 0;
    };

    unsigned below(unsigned limit) { return static_cast<unsigned>(random() % limit); }
    bool chance(unsigned percent) { return below(100) < percent; }
    unsigned textId();
    testkit::Bytes noise(unsigned size);
    std::string text();

    testkit::Bytes catalogue();
    testkit::Bytes parameters();
    testkit::Bytes optionLists();
    testkit::Bytes conversions();
    testkit::Bytes channels();
    testkit::Bytes channelNames();
    testkit::Bytes texts();
    testkit::Bytes dataSizes();
    std::vector<Group> module();
    void disturbOrder(std::vector<Group>& groups);
    void damage(testkit::Bytes& payload);
    testkit::Bytes framed(const std::vector<Group>& groups);

    std::mt19937 random;
    bool plain = true;           // whether texts and numbers are those of a usual module
    unsigned textCount = 0;      // texts of the module being made
    unsigned firstText = 1;      // identifier of its first text
    unsigned textStep = 1;       // from one identifier to the next
    unsigned channelCount = 0;   // channels of the module being made
    unsigned parameterCount = 0; // parameters of the module being made
};

} // namespace roundtrip
