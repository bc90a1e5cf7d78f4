#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::uint8_t datasetSizeLimit = 128; // from here on a size ends the list

} // namespace

void read(PayloadReader& in, Identity& group)
{
    while (in.left() > 0) {
        Dataset dataset;
        in.field(dataset.id);
        in.field(dataset.size);
        if (dataset.size.value >= datasetSizeLimit) {
            throw UnexpectedShape();
        }
        in.field(dataset.unread);
        in.bytes(dataset.data, dataset.size.value);
        in.field(dataset.trailer);
        group.datasets.push_back(std::move(dataset));
    }
}

void write(PayloadWriter& out, const Identity& group)
{
    for (const Dataset& dataset : group.datasets) {
        out.field(dataset.id);
        out.count(dataset.size, dataset.data.value.size());
        out.field(dataset.unread);
        out.rest(dataset.data);
        out.field(dataset.trailer);
    }
}

} // namespace mxauthor
