#pragma once

#include "mxonline/CouplerDifference.h"

#include <mxmodule/Finding.h>
#include <mxstation/Plan.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mxonline {

/// What is known of a parameter after it was to be written.
enum class WriteOutcome
{
    Verified,   ///< Read back as planned.
    Different,  ///< Read back otherwise.
    NotReadBack ///< What the coupler has is not known.
};

/// Returns "verified", "different" or "not read back".
MXONLINE_API const char* writeOutcomeName(WriteOutcome outcome);

/// A parameter that differed from the station before or after.
struct AppliedParameter
{
    std::string parameter;              ///< By which a station states it.
    std::uint16_t address = 0;          ///< Its first register.
    std::vector<std::uint16_t> found;   ///< Before, in the order of the coupler; empty: as planned.
    std::vector<std::uint16_t> planned; ///< What the station states, in the same order.
    std::vector<std::uint16_t> now;     ///< Read back, in the same order; empty: not read back.
    std::string foundShown;             ///< The value before, for people; empty: it was as planned.
    std::string plannedShown;           ///< The value of the station, for people.
    std::string nowShown;               ///< The value read back, for people; empty: not read back.
    bool isWritten = false;             ///< The coupler confirmed that it was written.
    WriteOutcome outcome = WriteOutcome::NotReadBack; ///< What is known of it now.
};

/// A module of the station and what was done to it.
struct AppliedModule
{
    std::size_t position = 0; ///< In the row, from 1.
    std::string name;         ///< Of the module.
    std::string moduleId;     ///< Of the station, eight hexadecimal digits.
    Identification identification = Identification::NotPossible; ///< Whether it is this module.
    std::string foundId; ///< The coupler's identifier, eight hexadecimal digits; may be empty.
    std::vector<AppliedParameter> parameters; ///< In the order of the registers.
    /// Parameters that were written although they were read as planned, see `ModbusCommit`.
    std::size_t writtenAgain = 0;
    /// Names of parameters that the station sets and that are in no register.
    std::vector<std::string> withoutRegisters;
    /// SHA-256 of the registers read back, each with its high byte first: that of the file which
    /// `mxstation::parameterFiles` makes for Modbus, if it is the same. Empty: not read back.
    std::string sum;
};

/// What was written to a coupler, and what is there now.
struct ApplyReport
{
    std::string station;                ///< Name of the station.
    std::string stationSum;             ///< SHA-256 of its text, 64 hexadecimal digits.
    std::string target;                 ///< Of the coupler: "tcp:127.0.0.1:502".
    mxstation::ModbusMap map;           ///< Its registers.
    std::string version;                ///< Of this library.
    std::string started;                ///< Time in UTC: "2026-01-31T08:15:00.123Z".
    std::string finished;               ///< The same.
    std::vector<AppliedModule> modules; ///< All of the row.
    bool isCommitted = false;           ///< The coupler confirmed the commit, if there is one.
    bool isReadBack = false;            ///< Everything was read after the last write.
    /// SHA-256 of the registers of all modules as read back, in the order of the row; may be empty.
    std::string sum;
    std::vector<mxmodule::Finding> findings; ///< Faults; values that are not as planned.

    /// Returns whether everything was read back and is as the station states.
    MXONLINE_API bool isDone() const;

    /// Returns why it is not done; empty if it is.
    MXONLINE_API std::vector<std::string> reasons() const;

    /// Returns "Done: ..." or "NOT DONE: ...", one line.
    MXONLINE_API std::string verdict() const;

    MXONLINE_API std::string text() const; ///< For people.
    MXONLINE_API std::string json() const; ///< Schema "mxtool.apply-report" version 1.
    MXONLINE_API std::string html() const; ///< A self-contained page for people.
};

} // namespace mxonline
