#include "mxonline/OutputSetting.h"

#include "bus/CouplerPlace.h"
#include "channels/ChannelNames.h"
#include "channels/ValueText.h"
#include "coupler/CouplerContent.h"
#include "images/ImageReading.h"
#include "images/OutputWrites.h"
#include "images/RowIdentity.h"
#include "images/StatedOutputs.h"

#include <fmt/format.h>

#include <thread>

namespace mxonline {

namespace {

using mxmodule::Failure;
using mxmodule::Finding;

constexpr int restoreAttempts = 3;
constexpr std::chrono::milliseconds pauseBetweenAttempts{300};

} // namespace

class OutputSetting::Content
{
public:
    Content(Coupler::Content& connected, const std::vector<OutputValue>& values)
        : Content(connected, ChannelNames(connected.plan), values)
    {}

    std::vector<SetOutput> read();
    OutputReport write();
    OutputReport restore();

private:
    Content(Coupler::Content& connected, const ChannelNames& names,
            const std::vector<OutputValue>& values)
        : coupler(connected),
          stated(statedOutputs(coupler.plan, names, values)),
          reading(coupler.plan, false, stated.channels),
          named(namedChannels(coupler.plan, names, stated.channels))
    {}

    std::vector<ValueBits> presentBits() const;
    std::vector<SetOutput> outputs(const std::vector<ValueBits>& wanted) const;
    void sendAndReadBack(const std::vector<ValueBits>& wanted, OutputReport& report);
    void send(const std::vector<ValueBits>& wanted);
    void readBack(const std::vector<ValueBits>& wanted, OutputReport& report);
    Finding failed(std::size_t output, const std::string& text, const std::string& hint) const;
    Finding notAs(std::size_t output, const SetOutput& values) const;
    Finding notRestored(std::size_t output) const;
    OutputReport restoreOnce();

    Coupler::Content& coupler;
    StatedOutputs stated;
    ImageReading reading;
    std::vector<NamedChannel> named;
    std::vector<ValueBits> before; // of each channel, as last read before the first write
    bool mayBeWritten = false;
};

std::vector<SetOutput> OutputSetting::Content::read()
{
    requireRow(coupler);
    reading.read(coupler.client);
    if (!mayBeWritten) {
        before = presentBits();
    }
    return outputs(stated.bits);
}

OutputReport OutputSetting::Content::write()
{
    OutputReport report;
    report.outputs = read();
    sendAndReadBack(stated.bits, report);
    return report;
}

// Also read back after a fault: the report says what is there.
void OutputSetting::Content::sendAndReadBack(const std::vector<ValueBits>& wanted,
                                             OutputReport& report)
{
    try {
        send(wanted);
    } catch (const Failure& failure) {
        report.findings = failure.findings();
    }
    try {
        readBack(wanted, report);
    } catch (const Failure& failure) {
        report.findings.insert(report.findings.end(), failure.findings().begin(),
                               failure.findings().end());
    }
}

OutputReport OutputSetting::Content::restore()
{
    OutputReport report;
    for (int attempt = 1; mayBeWritten && attempt <= restoreAttempts; ++attempt) {
        if (attempt > 1) {
            std::this_thread::sleep_for(pauseBetweenAttempts);
        }
        report = restoreOnce();
        if (report.isDone()) {
            return report;
        }
    }
    for (std::size_t i = 0; i < report.outputs.size(); ++i) {
        if (!report.outputs[i].now) {
            report.findings.push_back(notRestored(i));
        }
    }
    return report;
}

// Modules and neighbours are read again: they may have changed since.
OutputReport OutputSetting::Content::restoreOnce()
{
    OutputReport report;
    report.outputs = outputs(before);
    try {
        requireRow(coupler);
        reading.read(coupler.client);
    } catch (const Failure& failure) {
        report.findings = failure.findings();
        return report;
    }
    report.outputs = outputs(before);
    sendAndReadBack(before, report);
    return report;
}

std::vector<ValueBits> OutputSetting::Content::presentBits() const
{
    std::vector<ValueBits> bits;
    for (const std::size_t index : stated.channels) {
        bits.push_back(bitsIn(coupler.plan, coupler.plan.channels[index], reading.image()));
    }
    return bits;
}

std::vector<SetOutput> OutputSetting::Content::outputs(const std::vector<ValueBits>& wanted) const
{
    std::vector<SetOutput> all;
    const std::vector<ValueBits> present = presentBits();
    for (std::size_t i = 0; i < named.size(); ++i) {
        const mxstation::Channel& channel = coupler.plan.channels[named[i].index];
        all.push_back(
            {named[i], valueOf(channel, present[i]), valueOf(channel, wanted[i]), std::nullopt});
    }
    return all;
}

void OutputSetting::Content::send(const std::vector<ValueBits>& wanted)
{
    ProcessImage image = reading.image();
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        putBits(coupler.plan, coupler.plan.channels[stated.channels[i]], wanted[i], image);
    }
    mayBeWritten = true;
    writeOutputs(coupler.client, coupler.plan, stated.channels, image);
}

void OutputSetting::Content::readBack(const std::vector<ValueBits>& wanted, OutputReport& report)
{
    reading.read(coupler.client);
    const std::vector<ValueBits> present = presentBits();
    for (std::size_t i = 0; i < present.size(); ++i) {
        SetOutput& output = report.outputs[i];
        output.now = valueOf(coupler.plan.channels[output.channel.index], present[i]);
        if (present[i] != wanted[i]) {
            report.findings.push_back(notAs(i, output));
        }
    }
}

Finding OutputSetting::Content::failed(std::size_t output, const std::string& text,
                                       const std::string& hint) const
{
    const mxstation::Channel& channel = coupler.plan.channels[stated.channels[output]];
    Finding finding;
    finding.origin = mxmodule::Origin::Output;
    finding.place = couplerPlace(targetText(coupler.target), coupler.plan.modbus->unit);
    finding.text = fmt::format("{}: {}: {}", channelText(channel),
                               registersText(registersOf(coupler.plan, channel)), text);
    finding.hint = hint;
    return finding;
}

Finding OutputSetting::Content::notAs(std::size_t output, const SetOutput& values) const
{
    return failed(output,
                  fmt::format("read back {}, set to {}", values.now->text, values.wanted.text),
                  "another master may set it, or the coupler accepts outputs only in certain "
                  "states: see its manual");
}

Finding OutputSetting::Content::notRestored(std::size_t output) const
{
    const mxstation::Channel& channel = coupler.plan.channels[stated.channels[output]];
    const std::string value = valueOf(channel, before[output]).text;
    return failed(output,
                  fmt::format("not known to be as before: it was {}, it may still be {}", value,
                              valueOf(channel, stated.bits[output]).text),
                  fmt::format("set it to {} when the coupler answers again", value));
}

OutputSetting::OutputSetting(Coupler& coupler, const std::vector<OutputValue>& values)
    : content(std::make_unique<Content>(*coupler.content, values))
{}

OutputSetting::~OutputSetting() = default;
OutputSetting::OutputSetting(OutputSetting&&) noexcept = default;
OutputSetting& OutputSetting::operator=(OutputSetting&&) noexcept = default;

std::vector<SetOutput> OutputSetting::read()
{
    return content->read();
}

OutputReport OutputSetting::write()
{
    return content->write();
}

OutputReport OutputSetting::restore()
{
    return content->restore();
}

} // namespace mxonline
