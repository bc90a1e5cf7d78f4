// What abidw describes of libmxstation, as a host sees it: its headers, without the types that the
// library uses inside. One function for each group of headers takes their classes.

#include <mxstation/ChannelExport.h>
#include <mxstation/Declarations.h>
#include <mxstation/Plan.h>
#include <mxstation/StationCheck.h>

using namespace mxstation;

namespace described {

void stations(Station, StationOptions, Entry, ChannelNote, StatedValue, Reserve, StatedBytes,
              StatedByte, SourcePlace)
{}

void layouts(Layout, NamedLayout, ImageLayout, ImageOrder, ByteOrder) {}

void plans(Plan, PlannedModule, Channel, ChannelWithoutSymbol, Gap, GapReason, ImageBytes,
           StationCheck)
{}

void declarations(Declarations, DeclarationOptions, AddressStyle, VariableScope) {}

} // namespace described
