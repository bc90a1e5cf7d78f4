#pragma once

#include "bus/AnsweringPeer.h"
#include "coupler/ModuleDefaults.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

/// A coupler of registers alone, written apart from the simulator: functions 3, 4, 6, 16 and 22 on
/// one set of registers. What is not in it does not exist (exception 2).
class RegisterPeer
{
public:
    RegisterPeer() : peer([this](const Bytes& frame) { return answer(frame); }) {}

    mxonline::Target target() const { return peer.target(); }

    /// Sets registers from `address` on. To be called before the first request.
    void put(unsigned address, const std::vector<std::uint16_t>& words)
    {
        for (const std::uint16_t word : words) {
            registers[address++] = word;
        }
    }

    /// Returns `count` registers from `address` on; 0 for those that do not exist.
    std::vector<std::uint16_t> at(unsigned address, unsigned count)
    {
        std::vector<std::uint16_t> words;
        for (unsigned i = 0; i < count; ++i) {
            words.push_back(registers[address + i]);
        }
        return words;
    }

    /// Returns the requests as "FUNCTION ADDRESS COUNT", in decimal.
    std::vector<std::string> requests() const
    {
        std::vector<std::string> shown;
        for (const Bytes& frame : peer.frames()) {
            shown.push_back(std::to_string(frame[7]) + " " + std::to_string(word(frame, 8)) + " " +
                            std::to_string(word(frame, 10)));
        }
        return shown;
    }

    /// Called with the first register and the number of each write before it is carried out;
    /// returns an exception code, or 0.
    std::function<int(unsigned address, unsigned count)> onWrite =
        [](unsigned /*address*/, unsigned /*count*/) { return 0; };
    /// Called after each write with the registers, which it may change.
    std::function<void(std::map<unsigned, std::uint16_t>&)> afterWrite =
        [](std::map<unsigned, std::uint16_t>& /*registers*/) {};
    std::atomic<int> answersUntilSilence{-1}; ///< Then connections are closed; -1: never.

private:
    static unsigned word(const Bytes& frame, std::size_t at)
    {
        return static_cast<unsigned>(frame[at] << 8 | frame[at + 1]);
    }

    static Bytes framed(const Bytes& request, const Bytes& pdu)
    {
        Bytes frame = {request[0], request[1], 0, 0, 0, static_cast<std::uint8_t>(pdu.size() + 1),
                       request[6]};
        frame.insert(frame.end(), pdu.begin(), pdu.end());
        return frame;
    }

    Reaction answer(const Bytes& frame)
    {
        if (answersUntilSilence >= 0 && answersUntilSilence-- == 0) {
            answersUntilSilence = 0;
            return {{}, true};
        }
        switch (frame[7]) {
        case 6:
            return {framed(frame, changed(frame, word(frame, 10), 0))};
        case 16:
            return {framed(frame, written(frame))};
        case 22:
            return {framed(frame, changed(frame, word(frame, 12), word(frame, 10)))};
        default:
            return {framed(frame, values(frame))};
        }
    }

    Bytes values(const Bytes& frame)
    {
        Bytes pdu = {frame[7], static_cast<std::uint8_t>(2 * word(frame, 10))};
        for (unsigned i = 0; i < word(frame, 10); ++i) {
            const auto found = registers.find(word(frame, 8) + i);
            if (found == registers.end()) {
                return {static_cast<std::uint8_t>(frame[7] | 0x80), 2};
            }
            pdu.push_back(static_cast<std::uint8_t>(found->second >> 8));
            pdu.push_back(static_cast<std::uint8_t>(found->second));
        }
        return pdu;
    }

    Bytes written(const Bytes& frame)
    {
        const unsigned address = word(frame, 8);
        const unsigned count = word(frame, 10);
        if (const int code = onWrite(address, count)) {
            return {0x90, static_cast<std::uint8_t>(code)};
        }
        for (unsigned i = 0; i < count; ++i) {
            registers[address + i] = static_cast<std::uint16_t>(word(frame, 13 + 2 * i));
        }
        afterWrite(registers);
        return {16, frame[8], frame[9], frame[10], frame[11]};
    }

    // One register: `value`, with the bits of `kept` as they are.
    Bytes changed(const Bytes& frame, unsigned value, unsigned kept)
    {
        const unsigned address = word(frame, 8);
        if (const int code = onWrite(address, 1)) {
            return {static_cast<std::uint8_t>(frame[7] | 0x80), static_cast<std::uint8_t>(code)};
        }
        registers[address] =
            static_cast<std::uint16_t>((registers[address] & kept) | (value & ~kept));
        afterWrite(registers);
        return {frame.begin() + 7, frame.end()};
    }

    std::map<unsigned, std::uint16_t> registers;
    AnsweringPeer peer; // last: its thread uses the others
};
