#pragma once

#include "check/Findings.h"
#include "module/ModuleView.h"

namespace mxauthor {

// The checks, each group of rules in a file of its own.

/// The failure of the container reader on `bytes`, whose whole groups are `file`.
void checkFraming(const std::vector<char>& bytes, const MxFile& file, const std::string& failure,
                  Findings& findings);

void checkFileEnds(const ModuleView& module, Findings& findings);
void checkGroups(const ModuleView& module, Findings& findings);
void checkIdentity(const ModuleView& module, Findings& findings);
void checkEntries(const ModuleView& module, Findings& findings);
void checkExtension(const ModuleView& module, Findings& findings);
void checkParameterBlock(const ModuleView& module, Findings& findings);
void checkDataSizes(const ModuleView& module, Findings& findings);
void checkTexts(const ModuleView& module, Findings& findings);
void checkOptionLists(const ModuleView& module, Findings& findings);
void checkConversions(const ModuleView& module, Findings& findings);
void checkParameters(const ModuleView& module, Findings& findings);
void checkParameterPlaces(const ModuleView& module, Findings& findings);
void checkParameterValues(const ModuleView& module, Findings& findings);
void checkChannels(const ModuleView& module, Findings& findings);
void checkChannelNames(const ModuleView& module, Findings& findings);
void checkProcessImage(const ModuleView& module, Findings& findings);
void checkImage(const ModuleView& module, Findings& findings);

/// What the device parser makes of `bytes` with the byte behind them that every loaded file has.
void checkWithParser(const std::vector<char>& bytes, const MxFile& file, Findings& findings);

} // namespace mxauthor
