#pragma once

#include <yaml-cpp/yaml.h>

#include <string>

namespace mxauthor {

/// An error in a text that is not YAML, at the place to correct.
struct YamlMistake
{
    YAML::Mark mark;
    std::string text;
};

/// Explains why the YAML reader failed on `source` with `failure`. The reader often detects a
/// mistake several lines late: common ones, such as an unclosed quotation mark or bracket, are
/// searched for and reported at their own place.
YamlMistake explainYamlFailure(const std::string& source, const YAML::Exception& failure);

} // namespace mxauthor
