#include "images/OutputWrites.h"

#include "bus/RequestPlan.h"
#include "channels/ChannelNames.h"
#include "coupler/RegisterOrder.h"
#include "images/ImageReading.h"

#include <algorithm>

namespace mxonline {

namespace {

using mxstation::Plan;

constexpr std::uint8_t writesOne = 6;
constexpr std::uint8_t writesBits = 22;

class OutputRegisters
{
public:
    OutputRegisters(const Plan& planned, const std::vector<std::size_t>& outputs)
        : plan(planned), channels(outputs)
    {
        for (const std::size_t index : channels) {
            items.push_back(registersOf(plan, plan.channels[index]));
        }
        std::sort(items.begin(), items.end(), [](const RegisterRange& a, const RegisterRange& b) {
            return a.address < b.address;
        });
    }

    void write(ModbusClient& client, const ProcessImage& image) const
    {
        for (const RegisterRange& run : requestsFor(items, most(), Gaps::LeftOut)) {
            writeRun(client, run, image);
        }
    }

private:
    std::uint8_t function() const { return plan.modbus->outputs.writeFunction; }

    std::uint32_t most() const
    {
        return function() == writesOne || function() == writesBits ? 1 : plan.modbus->mostWritten;
    }

    std::uint16_t registerIn(const ProcessImage& image, std::uint32_t address) const
    {
        const std::size_t first = (address - plan.modbus->outputs.address) * std::size_t{2};
        return registerOf(image[first], image[first + 1], *plan.modbus);
    }

    void writeRun(ModbusClient& client, const RegisterRange& run, const ProcessImage& image) const
    {
        const auto address = static_cast<std::uint16_t>(run.address);
        const std::string subject = subjectOf(run);
        if (function() == writesOne) {
            client.writeOne(address, registerIn(image, run.address), subject);
        } else if (function() == writesBits) {
            const std::uint16_t mask = registerIn(ownBits(image.size()), run.address);
            client.writeBits(address, mask, registerIn(image, run.address), subject);
        } else {
            std::vector<std::uint16_t> values;
            for (std::uint32_t one = run.address; one < run.end(); ++one) {
                values.push_back(registerIn(image, one));
            }
            client.write(address, values, subject);
        }
    }

    // An image in which the bits of the channels are 1.
    ProcessImage ownBits(std::size_t size) const
    {
        ProcessImage mask(size);
        for (const std::size_t index : channels) {
            const mxstation::Channel& channel = plan.channels[index];
            putBits(plan, channel, ValueBits((channel.bits + 7) / 8, 0xFF), mask);
        }
        return mask;
    }

    // The first channel in the registers is named.
    std::string subjectOf(const RegisterRange& run) const
    {
        const auto isIn = [&](std::size_t index) {
            return registersOf(plan, plan.channels[index]).overlaps(run);
        };
        const auto first = std::find_if(channels.begin(), channels.end(), isIn);
        const auto count = std::count_if(channels.begin(), channels.end(), isIn);
        const std::string name = channelText(plan.channels[*first]);
        return count == 1 ? name : name + " and " + std::to_string(count - 1) + " more";
    }

    const Plan& plan;
    const std::vector<std::size_t>& channels;
    std::vector<RegisterRange> items; // by address
};

} // namespace

void writeOutputs(ModbusClient& client, const Plan& plan, const std::vector<std::size_t>& channels,
                  const ProcessImage& image)
{
    OutputRegisters(plan, channels).write(client, image);
}

} // namespace mxonline
