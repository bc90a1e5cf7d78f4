#pragma once

#include "groups/Payload.h"
#include "mxauthor/MxFile.h"

namespace mxauthor {

// Reads and writes the payload of each group, in the file of its subject. A reader reads all of it
// or throws `UnexpectedShape`.

void read(PayloadReader& in, RawGroup& group);
void read(PayloadReader& in, Header& group);
void read(PayloadReader& in, Identity& group);
void read(PayloadReader& in, ParameterBlock& group);
void read(PayloadReader& in, DataSizes& group);
void read(PayloadReader& in, Entries& group);
void read(PayloadReader& in, Parameters& group);
void read(PayloadReader& in, OptionLists& group);
void read(PayloadReader& in, Conversions& group);
void read(PayloadReader& in, Channels& group);
void read(PayloadReader& in, TextTable& group);
void read(PayloadReader& in, ChannelNames& group);
void read(PayloadReader& in, Extension& group);
void read(PayloadReader& in, ProductImage& group);

void write(PayloadWriter& out, const RawGroup& group);
void write(PayloadWriter& out, const Header& group);
void write(PayloadWriter& out, const Identity& group);
void write(PayloadWriter& out, const ParameterBlock& group);
void write(PayloadWriter& out, const DataSizes& group);
void write(PayloadWriter& out, const Entries& group);
void write(PayloadWriter& out, const Parameters& group);
void write(PayloadWriter& out, const OptionLists& group);
void write(PayloadWriter& out, const Conversions& group);
void write(PayloadWriter& out, const Channels& group);
void write(PayloadWriter& out, const TextTable& group);
void write(PayloadWriter& out, const ChannelNames& group);
void write(PayloadWriter& out, const Extension& group);
void write(PayloadWriter& out, const ProductImage& group);

} // namespace mxauthor
