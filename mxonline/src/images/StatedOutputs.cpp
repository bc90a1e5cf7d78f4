#include "images/StatedOutputs.h"

#include "channels/ChannelNames.h"
#include "channels/ValueText.h"

#include <fmt/format.h>
#include <text/Beginning.h>

#include <algorithm>

namespace mxonline {

namespace {

using mxmodule::Failure;
using mxmodule::Finding;
using mxmodule::Origin;
using mxstation::Plan;

// Collects every error before the first request is sent.
class OutputCollector
{
public:
    OutputCollector(const Plan& planned, const ChannelNames& channelNames)
        : plan(planned), names(channelNames)
    {}

    StatedOutputs collect(const std::vector<OutputValue>& values)
    {
        for (const OutputValue& value : values) {
            try {
                add(value);
            } catch (const Failure& failure) {
                errors.push_back(failure.reason());
            }
        }
        if (values.empty()) {
            addError("no output is stated", "state CHANNEL=VALUE");
        }
        requireNoSharedBits();
        if (!errors.empty()) {
            throw Failure(errors);
        }
        return stated;
    }

private:
    void add(const OutputValue& value)
    {
        const std::size_t index = names.find(value.channel);
        const mxstation::Channel& channel = plan.channels[index];
        const auto& known = stated.channels;
        if (channel.isInput) {
            addError(channelText(channel) + " is an input, which cannot be set",
                     "only outputs can be set");
        } else if (std::find(known.begin(), known.end(), index) != known.end()) {
            addError(channelText(channel) + " is stated twice", "state each channel once");
        } else {
            stated.bits.push_back(bitsOf(channel, value.value));
            stated.channels.push_back(index);
        }
    }

    // A later value must not change that of an earlier channel.
    void requireNoSharedBits()
    {
        ProcessImage image(plan.output.size);
        for (std::size_t i = 0; i < stated.channels.size(); ++i) {
            putBits(plan, plan.channels[stated.channels[i]], stated.bits[i], image);
        }
        for (std::size_t i = 0; i < stated.channels.size(); ++i) {
            const mxstation::Channel& channel = plan.channels[stated.channels[i]];
            if (bitsIn(plan, channel, image) != stated.bits[i]) {
                addError(
                    channelText(channel) +
                        " shares bits with another stated channel, which sets them differently",
                    "state one of the two");
            }
        }
    }

    void addError(const std::string& text, const std::string& hint)
    {
        Finding& error = errors.emplace_back();
        error.origin = Origin::Request;
        error.text = text;
        error.hint = hint;
    }

    const Plan& plan;
    const ChannelNames& names;
    StatedOutputs stated;
    std::vector<Finding> errors;
};

} // namespace

StatedOutputs statedOutputs(const Plan& plan, const ChannelNames& names,
                            const std::vector<OutputValue>& values)
{
    return OutputCollector(plan, names).collect(values);
}

std::vector<OutputValue> outputValuesOf(const std::vector<std::string>& texts)
{
    std::vector<OutputValue> values;
    std::vector<Finding> errors;
    for (const std::string& text : texts) {
        const std::size_t end = text.rfind('='); // no value contains one
        if (end == std::string::npos || end == 0) {
            Finding& error = errors.emplace_back();
            error.origin = Origin::Request;
            error.text =
                fmt::format("found \"{}\", expected CHANNEL=VALUE", text::abbreviated(text));
            error.hint = "such as P_101=1";
        } else {
            values.push_back({text.substr(0, end), text.substr(end + 1)});
        }
    }
    if (!errors.empty()) {
        throw Failure(errors);
    }
    return values;
}

} // namespace mxonline
