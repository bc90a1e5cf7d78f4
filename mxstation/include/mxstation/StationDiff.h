#pragma once

#include "mxstation/Plan.h"

#include <string>
#include <vector>

namespace mxstation {

/// What a difference of two stations is about.
enum class ChangeKind
{
    ByteOrder,      ///< Of the values of channels of several bytes.
    Image,          ///< Place or size of a process image.
    Status,         ///< Status bytes of the coupler.
    Reserved,       ///< Reserved places.
    ModuleAdded,    ///< Only in B.
    ModuleRemoved,  ///< Only in A.
    ModuleType,     ///< Of another type.
    ModuleFile,     ///< Of the same type with another mx file.
    ModuleOrder,    ///< At another place in the row among the modules of both stations.
    ModuleMoved,    ///< Data at another place of an image, or of another size.
    ChannelAdded,   ///< Only in B.
    ChannelRemoved, ///< Only in A.
    ChannelMoved,   ///< Another image, bit, number of bits or sign.
    Alias,          ///< Another alias of a channel.
    Parameter,      ///< Another value of a parameter.
    ParameterImage  ///< Other bytes of the parameter image that no parameter explains.
};

/// Returns the name of `kind`, such as "channel moved".
MXSTATION_API const char* changeKindName(ChangeKind kind);

/// A difference of two stations.
struct StationChange
{
    ChangeKind kind = ChangeKind::Image; ///< What it is about.
    std::string module;  ///< Name of the module, in B if it has it; empty: of the whole station.
    std::string subject; ///< Channel, parameter or image; may be empty.
    std::string before;  ///< In A, for people; empty: not in A.
    std::string after;   ///< In B, for people; empty: not in B.
    bool changesValues = false; ///< A program bound to A no longer reads the same from B.
};

/// One of two compared stations.
struct ComparedStation
{
    std::string name; ///< Of its file, or its own if it has no file.
    std::string sum;  ///< SHA-256 of its text, 64 hexadecimal digits.
};

/// The differences of station B from station A.
struct StationDifference
{
    ComparedStation a;                  ///< Station A.
    ComparedStation b;                  ///< Station B.
    std::vector<StationChange> changes; ///< Those of the whole, then by module in the order of B.
    std::vector<std::string> notes;     ///< How modules were matched, what changes mean.

    bool isSame() const { return changes.empty(); } ///< Whether there is no difference.

    /// Returns whether a program bound to the addresses of A reads the same values from B: every
    /// channel of A, and every status byte, has its place, size and sign.
    MXSTATION_API bool sameValues() const;

    /// Returns why a program bound to A no longer reads the same values from B.
    MXSTATION_API std::vector<std::string> reasons() const;

    MXSTATION_API std::string text() const; ///< For people, with the verdict.
    MXSTATION_API std::string json() const; ///< Schema "mxtool.station-diff" version 1.
};

/// Compares station `b` with station `a`. Throws a `mxmodule::Failure` when one of them has errors.
///
/// Modules of the same name are compared; those without a name of their own with those of the same
/// type in their order. Channels are compared by name, where names repeat also by number and
/// direction.
MXSTATION_API StationDifference compare(const Plan& a, const Plan& b);

} // namespace mxstation
