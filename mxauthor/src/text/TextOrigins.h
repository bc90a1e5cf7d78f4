#pragma once

#include "mxauthor/TextForm.h"

#include <yaml-cpp/yaml.h>

#include <map>
#include <string>
#include <vector>

namespace mxauthor {

/// Where a text states one record of a group.
struct RecordOrigin
{
    YAML::Mark mark = YAML::Mark::null_mark();

    /// By key: the value, then its items where it is a list.
    std::map<std::string, std::vector<YAML::Mark>> values{};

    Repetition repetition{};
};

/// Where a text states a group; null where the group is computed.
struct GroupOrigin
{
    std::uint16_t id = 0;
    YAML::Mark mark = YAML::Mark::null_mark();
    std::vector<RecordOrigin> records; ///< In the order of the group; may be fewer.
};

/// Where a text states the groups of the file built from it.
struct TextOrigins
{
    std::vector<GroupOrigin> groups; ///< In file order.
};

} // namespace mxauthor
