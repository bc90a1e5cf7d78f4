#pragma once

#include "mxstation/Plan.h"

#include <string>
#include <vector>

// The channels of a station as declarations for a program. Each result is the same, byte for byte,
// for the same plan. Texts are UTF-8, whatever bytes the names contain. For a plan that is not `ok`
// each function throws a `mxmodule::Failure` with its errors.

namespace mxstation {

/// How the number of an IEC address counts: of the channels IX0_0, IW2, IW4 and ID6.
enum class AddressStyle
{
    Byte,    ///< Bytes, whatever the size: %IX0.0, %IW2, %IW4, %ID6.
    Index,   ///< Units of its own size: %IX0.0, %IW1, %IW2; ID6 is no multiple of 4 bytes.
    Separate ///< Each size in each image from 0, by address: %IX0.0, %IW0, %IW1, %ID0.
};

/// Where variables are declared.
enum class VariableScope
{
    Global, ///< For all programs.
    Program ///< In a program called as the station.
};

/// How channels are declared.
struct DeclarationOptions
{
    AddressStyle address = AddressStyle::Byte;   ///< How addresses count.
    VariableScope scope = VariableScope::Global; ///< Where the variables are.
};

/// Declarations, and what they do not contain.
struct Declarations
{
    std::string text; ///< The declarations.
    /// A warning for each channel, or bit of one, that is only a comment, with the reason.
    std::vector<mxmodule::Finding> findings;
};

/// Returns the channels as Structured Text of IEC 61131-3.
///
/// A variable is called by the alias of its channel, otherwise by module and channel; names are
/// unique, and aliases keep theirs. Types are those of `mxmodule::iecVariables`.
MXSTATION_API Declarations declarations(const Plan& plan, const DeclarationOptions& options = {});

/// Returns the same variables as a project of PLCopen TC6 XML 2.01. Global variables are those of a
/// resource. The date of the project is that of the environment variable SOURCE_DATE_EPOCH (seconds
/// since 1970), otherwise 1970-01-01T00:00:00.
MXSTATION_API Declarations plcopenXml(const Plan& plan, const DeclarationOptions& options = {});

/// Returns a header for C11 and C++17: the images as arrays of bytes, the places of the channels as
/// constants, and functions that read and write the channels on any host. A channel outside the
/// image, without bits, or of more than 64 bits, is only a comment.
MXSTATION_API Declarations cHeader(const Plan& plan);

} // namespace mxstation
