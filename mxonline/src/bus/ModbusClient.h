#pragma once

#include "bus/ModbusLine.h"
#include "bus/RegisterRange.h"

#include <mxmodule/Finding.h>
#include <mxmodule/Observer.h>
#include <mxonline/Traffic.h>

#include <memory>
#include <string>
#include <vector>

namespace mxonline {

/// A request that the coupler answered with an exception.
class RefusedRequest : public mxmodule::Failure
{
public:
    RefusedRequest(const mxmodule::Finding& finding, std::uint8_t code)
        : Failure(finding), exceptionCode(code)
    {}

    std::uint8_t code() const { return exceptionCode; } ///< As in the answer.

private:
    std::uint8_t exceptionCode;
};

/// Reads and writes registers of a coupler. Requests without a valid answer are sent again as often
/// as the map states, those that a busy coupler refuses as long as it states.
///
/// Each operation throws a `mxmodule::Failure` of origin `Output` that names what the registers are
/// for (`subject`), the registers, and the frames.
class ModbusClient
{
public:
    /// Keeps copies; `toldOf`, told of each repetition, outlives the object and may be null.
    ModbusClient(const Target& target, const mxstation::ModbusMap& described,
                 mxmodule::Observer* toldOf);

    /// Returns the registers of `range`, at most `ModbusMap::mostRead`, by `function` 3 or 4.
    std::vector<std::uint16_t> read(std::uint8_t function, const RegisterRange& range,
                                    const std::string& subject);

    /// Writes `values`, at most `ModbusMap::mostWritten`, to the registers from `address` on by one
    /// request of function 16.
    void write(std::uint16_t address, const std::vector<std::uint16_t>& values,
               const std::string& subject);

    /// Writes one register by function 6.
    void writeOne(std::uint16_t address, std::uint16_t value, const std::string& subject);

    /// Writes the bits of `mask` of a register as in `value` by function 22; the coupler keeps the
    /// others.
    void writeBits(std::uint16_t address, std::uint16_t mask, std::uint16_t value,
                   const std::string& subject);

    const Traffic& traffic() const { return counts; }

private:
    struct Task
    {
        const char* action; // "read" or "written"
        RegisterRange range;
        const std::string& subject;
    };

    Exchange request(const std::vector<std::uint8_t>& pdu, const Task& task);
    Exchange answerOf(const std::vector<std::uint8_t>& pdu, const Task& task);
    void requireEcho(const std::vector<std::uint8_t>& pdu, std::size_t size, const Task& task);
    mxmodule::Finding failed(const Task& task, const std::string& reason, const std::string& hint,
                             const std::vector<std::uint8_t>& sent,
                             const std::vector<std::uint8_t>& received) const;
    void tellOfRepetition(const Task& task, const std::string& reason, bool isTold);

    std::string targetName;
    mxstation::ModbusMap map;
    mxmodule::Observer* observer;
    std::unique_ptr<ModbusLine> line;
    Traffic counts;
};

} // namespace mxonline
