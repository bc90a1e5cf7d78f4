#include "GroupCodecs.h"

namespace mxauthor {

void read(PayloadReader& in, Header& group)
{
    in.field(group.contentLength);
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Header& group)
{
    out.field(group.contentLength);
    out.rest(group.rest);
}

void read(PayloadReader& in, Identity& group)
{
    while (in.left() > 0) {
        Dataset dataset;
        in.field(dataset.id);
        in.field(dataset.size);
        if (dataset.size.value >= mxformat::datasetLengthLimit) {
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
        out.field(Field<std::uint8_t>(byteCount(dataset.data.value.size())));
        out.field(dataset.unread);
        out.rest(dataset.data);
        out.field(dataset.trailer);
    }
}

void read(PayloadReader& in, Extension& group)
{
    in.field(group.version);
    in.field(group.gtinId);
    in.bytes(group.date, mxformat::calibrationDateSize);
    in.rest(group.rest);
}

void write(PayloadWriter& out, const Extension& group)
{
    out.field(group.version);
    out.field(group.gtinId);
    out.rest(group.date);
    out.rest(group.rest);
}

void read(PayloadReader& in, ProductImage& group)
{
    in.rest(group.bytes);
}

void write(PayloadWriter& out, const ProductImage& group)
{
    out.rest(group.bytes);
}

void read(PayloadReader& in, RawGroup& group)
{
    in.rest(group.bytes);
}

void write(PayloadWriter& out, const RawGroup& group)
{
    out.rest(group.bytes);
}

} // namespace mxauthor
