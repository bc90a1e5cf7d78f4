#include "mxonline/Watch.h"

#include "channels/ChannelNames.h"
#include "channels/ValueText.h"
#include "coupler/CouplerContent.h"
#include "images/ImageReading.h"
#include "images/RowIdentity.h"

#include <algorithm>
#include <utility>

namespace mxonline {

class Watch::Content
{
public:
    Content(Coupler::Content& connected, const std::vector<std::string>& names)
        : Content(connected, ChannelNames(connected.plan), names)
    {}

    Sample sample();

    Coupler::Content& coupler;
    std::vector<std::size_t> indexes;
    std::vector<NamedChannel> channels;
    ImageReading inputs;
    ImageReading outputs;

private:
    void readImages();

    Content(Coupler::Content& connected, const ChannelNames& known,
            const std::vector<std::string>& names)
        : coupler(connected),
          indexes(known.select(names)),
          channels(namedChannels(connected.plan, known, indexes)),
          inputs(coupler.plan, true, indexes),
          outputs(coupler.plan, false, indexes)
    {}

    bool isIdentified = false;
    std::vector<ValueBits> last; // of the sample before; empty: there was none
};

// After a fault another coupler may answer.
void Watch::Content::readImages()
{
    const bool wasIdentified = std::exchange(isIdentified, false);
    if (!wasIdentified) {
        requireRow(coupler);
    }
    inputs.read(coupler.client);
    outputs.read(coupler.client);
    isIdentified = true;
}

Sample Watch::Content::sample()
{
    Sample sample;
    sample.time = std::chrono::system_clock::now();
    readImages();
    std::vector<ValueBits> present;
    for (const std::size_t index : indexes) {
        const mxstation::Channel& channel = coupler.plan.channels[index];
        const ProcessImage& image = channel.isInput ? inputs.image() : outputs.image();
        const ValueBits& bits = present.emplace_back(bitsIn(coupler.plan, channel, image));
        sample.values.push_back(valueOf(channel, bits));
        sample.isChanged.push_back(!last.empty() && last[present.size() - 1] != bits);
    }
    last = std::move(present);
    return sample;
}

bool Sample::hasChanges() const
{
    return std::find(isChanged.begin(), isChanged.end(), true) != isChanged.end();
}

Watch::Watch(Coupler& coupler, const std::vector<std::string>& names)
    : content(std::make_unique<Content>(*coupler.content, names))
{}

Watch::~Watch() = default;
Watch::Watch(Watch&&) noexcept = default;
Watch& Watch::operator=(Watch&&) noexcept = default;

const std::vector<NamedChannel>& Watch::channels() const
{
    return content->channels;
}

std::size_t Watch::requestCount() const
{
    return content->inputs.requestCount() + content->outputs.requestCount();
}

Sample Watch::sample()
{
    return content->sample();
}

} // namespace mxonline
