#pragma once

#include "mxonline/ChannelValue.h"
#include "mxonline/Coupler.h"
#include "mxonline/NamedChannel.h"

#include <mxmodule/Finding.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mxonline {

/// A value for an output channel.
struct OutputValue
{
    std::string channel; ///< Alias, MODULE/CHANNEL, or its name if no other channel has it.
    /// Of one bit 0 or 1, also false or true, off or on; otherwise a decimal number, or the bits in
    /// hexadecimal after "0x"; of more than 64 bits its bytes as in `ChannelValue::text`.
    std::string value;
};

/// Returns the values that `texts`, "CHANNEL=VALUE" each, state. Throws one `mxmodule::Failure` of
/// origin `Request` with an error for each other text.
MXONLINE_API std::vector<OutputValue> outputValuesOf(const std::vector<std::string>& texts);

/// An output channel and its values.
struct SetOutput
{
    NamedChannel channel;            ///< The output.
    ChannelValue before;             ///< On the coupler before it was set.
    ChannelValue wanted;             ///< What it is to be.
    std::optional<ChannelValue> now; ///< Read back; empty: what the coupler has is not known.
};

/// Returns a table for people: each channel, its value before and after it is set.
MXONLINE_API std::string outputsText(const std::vector<SetOutput>& outputs);

/// Returns what `OutputSetting::read` read as JSON, schema "mxonline.outputs" version 1.
MXONLINE_API std::string outputsJson(const std::vector<SetOutput>& outputs);

/// What became of outputs.
struct OutputReport
{
    std::vector<SetOutput> outputs;          ///< In the order of the values.
    std::vector<mxmodule::Finding> findings; ///< Faults; values that are not as wanted.

    /// Returns whether every output was read back as wanted.
    MXONLINE_API bool isDone() const;
};

/// Returns `report` as JSON, schema "mxonline.outputs" version 1.
MXONLINE_API std::string outputsJson(const OutputReport& report);

/// Returns the question whether `count` outputs are to be set, for this time or to stay so.
MXONLINE_API std::string outputsQuestion(std::size_t count,
                                         std::optional<std::chrono::milliseconds> time);

/// Returns what `OutputSetting::write` did, in a line for people: how many outputs were set, and
/// that they stay so, or for how long; empty if not all were read back as set.
MXONLINE_API std::string writtenText(const OutputReport& report,
                                     std::optional<std::chrono::milliseconds> time);

/// The same for `OutputSetting::restore`; empty also if nothing was written.
MXONLINE_API std::string restoredText(const OutputReport& report);

/// Sets output channels on a coupler and changes no other bit.
///
/// The bits are put into the registers as the coupler has them, and only the registers of the
/// channels are written: by function 6 or 16, with the bits of other channels as they were read
/// just before, or by function 22, which leaves them to the coupler.
class MXONLINE_API OutputSetting
{
public:
    /// `coupler` outlives the object. Sends nothing. Throws one `mxmodule::Failure` of origin
    /// `Request` with an error for each unknown name, input, value out of range and channel that is
    /// set twice, or that shares bits with another one.
    OutputSetting(Coupler& coupler, const std::vector<OutputValue>& values);
    ~OutputSetting();
    OutputSetting(OutputSetting&&) noexcept;            ///< Leaves the other one unusable.
    OutputSetting& operator=(OutputSetting&&) noexcept; ///< The same.

    /// Reads the identity of the modules, if the coupler has it, and the outputs. Writes nothing.
    /// Throws a `mxmodule::Failure` of origin `Output`.
    std::vector<SetOutput> read();

    /// Reads as `read` does, which may throw, sets the channels, and reads them back. From the
    /// first write on a fault is in the report.
    OutputReport write();

    /// Gives the channels the values that they had before the first `write`, in the same way; tries
    /// three times. Never throws for a fault: the report says which channels are not known to be as
    /// before. Without outputs, if nothing was written.
    OutputReport restore();

private:
    class Content;
    std::unique_ptr<Content> content;
};

} // namespace mxonline
