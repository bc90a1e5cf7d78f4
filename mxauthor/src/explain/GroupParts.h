#pragma once

#include "explain/PartList.h"
#include "module/ModuleView.h"

namespace mxauthor {

// Explain the fields of each group in file order. `module` gives the meaning of references.

void explainGroup(PartList& parts, const ModuleView& module, const RawGroup& group);
void explainGroup(PartList& parts, const ModuleView& module, const Header& group);
void explainGroup(PartList& parts, const ModuleView& module, const Identity& group);
void explainGroup(PartList& parts, const ModuleView& module, const ParameterBlock& group);
void explainGroup(PartList& parts, const ModuleView& module, const DataSizes& group);
void explainGroup(PartList& parts, const ModuleView& module, const Entries& group);
void explainGroup(PartList& parts, const ModuleView& module, const Parameters& group);
void explainGroup(PartList& parts, const ModuleView& module, const OptionLists& group);
void explainGroup(PartList& parts, const ModuleView& module, const Conversions& group);
void explainGroup(PartList& parts, const ModuleView& module, const Channels& group);
void explainGroup(PartList& parts, const ModuleView& module, const TextTable& group);
void explainGroup(PartList& parts, const ModuleView& module, const ChannelNames& group);
void explainGroup(PartList& parts, const ModuleView& module, const Extension& group);
void explainGroup(PartList& parts, const ModuleView& module, const ProductImage& group);

/// Returns the text that a field refers to, in quotes; "none" for 0 where 0 means that.
std::string textMeaning(const ModuleView& module, std::uint16_t id, bool zeroIsNone);

} // namespace mxauthor
