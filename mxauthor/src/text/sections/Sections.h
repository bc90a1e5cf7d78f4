#pragma once

#include "text/BuildContext.h"
#include "text/DumpContext.h"

namespace mxauthor {

// The sections of the text form, in the file of their subject.
//
// A dump returns the whole section as YAML, empty where nothing has to be stated. It is called for
// any content of the right type; building the text again shows what it cannot express.
//
// A build makes the group of its section from the section's value.

std::string dumpModule(const DumpContext& context);
std::string dumpCatalogue(const DumpContext& context);
std::string dumpComponent(const DumpContext& context);
std::string dumpExtension(const DumpContext& context);
std::string dumpChannels(const DumpContext& context);
std::string dumpChannelNames(const DumpContext& context);
std::string dumpParameters(const DumpContext& context);
std::string dumpOptionLists(const DumpContext& context);
std::string dumpConversions(const DumpContext& context);
std::string dumpDataSizes(const DumpContext& context);
std::string dumpParameterBlock(const DumpContext& context);
std::string dumpImage(const DumpContext& context);
std::string dumpTexts(const DumpContext& context);
std::string dumpHeader(const DumpContext& context);
std::string dumpRawGroups(const DumpContext& context);

void buildModule(const YAML::Node& node, BuildContext& context);
void buildCatalogue(const YAML::Node& node, BuildContext& context);
void buildComponent(const YAML::Node& node, BuildContext& context);
void buildExtension(const YAML::Node& node, BuildContext& context);
void buildChannels(const YAML::Node& node, BuildContext& context);
void buildParameters(const YAML::Node& node, BuildContext& context);
void buildOptionLists(const YAML::Node& node, BuildContext& context);
void buildConversions(const YAML::Node& node, BuildContext& context);
void buildImage(const YAML::Node& node, BuildContext& context);
void buildRawGroups(const YAML::Node& node, BuildContext& context);

// Their content can be computed, so that their section may be missing.

void startTexts(const std::optional<YAML::Node>& node, BuildContext& context);
void buildTextTable(const std::optional<YAML::Node>& node, BuildContext& context);
void buildChannelNames(const std::optional<YAML::Node>& node, BuildContext& context);
void buildParameterBlock(const std::optional<YAML::Node>& node, BuildContext& context);
void buildDataSizes(const std::optional<YAML::Node>& node, BuildContext& context);

/// Builds the header, with the content length 0 when it is to be computed, and returns whether it
/// is.
bool buildHeader(const std::optional<YAML::Node>& node, BuildContext& context);

} // namespace mxauthor
