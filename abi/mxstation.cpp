// What abidw describes of libmxstation, as a host sees it: its headers, without the types that the
// library uses inside. One function for each group of headers takes their classes.

#include <mxstation/Declarations.h>
#include <mxstation/ParameterExport.h>
#include <mxstation/Plan.h>
#include <mxstation/StationCheck.h>
#include <mxstation/StationDiff.h>
#include <mxstation/StationEdit.h>
#include <mxstation/c/PlannedStation.h>
#include <mxstation/mxstation.h>

using namespace mxstation;

namespace described {

void stations(Station, StationOptions, Entry, ChannelNote, StatedValue, Reserve, StatedBytes,
              StatedByte, SourcePlace)
{}

void layouts(Layout, NamedLayout, ImageLayout, ImageOrder, ByteOrder) {}

void registers(ModbusMap, ModbusImage, ModbusModuleRegisters, ModbusIdentity, ModbusCommit,
               PartOrder)
{}

void plans(Plan, PlannedModule, Channel, ChannelWithoutSymbol, Gap, GapReason, ImageBytes,
           StationCheck)
{}

void exports(ParameterFile, Declarations, DeclarationOptions, AddressStyle, VariableScope) {}

void edits(StationEdit, AddModule, AddReserve, MoveEntry, RemoveEntry, NameEntry, SetReserve,
           SetValue, NoteChannel, PinEntry, PinAll)
{}

void cInterface(mxstation_station*, mxstation_plan*, mxstation_address_style,
                mxstation_variable_scope, mxstation_files*, mxstation_comparison*, PlannedStation)
{}

void comparisons(StationDifference, StationChange, ChangeKind, ComparedStation) {}

} // namespace described
