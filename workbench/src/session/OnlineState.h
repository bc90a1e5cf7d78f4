#pragma once

#include <mxmodule/Finding.h>
#include <mxonline/ApplyReport.h>
#include <mxonline/ChannelValue.h>
#include <mxonline/CouplerDifference.h>
#include <mxonline/NamedChannel.h>
#include <mxonline/Traffic.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

/// What is done with the coupler at present.
enum class OnlineWork
{
    None,
    Plan,   ///< It is compared, to be written.
    Verify, ///< It is compared.
    Apply   ///< It is written.
};

/// What is known of the connection.
enum class OnlineConnection
{
    None,      ///< Not connected: nothing was asked for, or not for a while.
    Connected, ///< The coupler answered the last request.
    Failed     ///< It did not.
};

/// A comparison of the coupler with a station, which a person may agree to apply.
struct ShownDifference
{
    std::uint64_t id = 0; ///< Of this comparison alone.
    std::string version;  ///< SHA-256 of the station's text.
    bool isPlan = false;  ///< Made to be written, otherwise to verify.
    mxonline::CouplerDifference difference;
};

/// The live value of a channel.
struct LiveValue
{
    mxonline::NamedChannel channel; ///< Which it is.
    mxonline::ChannelValue value;   ///< Of the newest sample.
    bool isChanged = false;         ///< It differs from the sample before.
};

/// The live values of channels.
struct LiveValues
{
    std::uint64_t id = 0;                    ///< Of this watch alone.
    std::string version;                     ///< SHA-256 of the station's text.
    std::string time;                        ///< Of the newest sample, in UTC; empty: none yet.
    std::vector<LiveValue> values;           ///< Of the newest sample, in the order of the plan.
    std::vector<mxmodule::Finding> findings; ///< Why there is no newer one.
};

/// What pages show of the coupler.
struct OnlineState
{
    std::uint64_t sequence = 1; ///< Grows with each change.
    OnlineConnection connection = OnlineConnection::None;
    OnlineWork work = OnlineWork::None;
    std::size_t done = 0;                      ///< Steps of the present work.
    std::size_t total = 0;                     ///< 0: not known.
    std::vector<mxmodule::Finding> findings;   ///< What the last work told, why it failed.
    std::optional<ShownDifference> difference; ///< The newest; none after it was applied.
    std::optional<mxonline::ApplyReport> report;
    std::optional<LiveValues> live; ///< Empty: nothing is watched.
    mxonline::Traffic traffic;      ///< Of the present connection.
};

} // namespace workbench
