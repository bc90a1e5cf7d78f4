#pragma once

#include <yaml-cpp/yaml.h>

#include <string>

namespace mxauthor {

/// What is wrong in a text that is no YAML, where the author has to mend it.
struct YamlMistake
{
    YAML::Mark mark;
    std::string text;
};

/// Explains why the YAML reader gave up on `source` with `failure`. The reader often notices a
/// mistake lines after it was made: the usual ones, such as a quotation mark or bracket that is not
/// closed, are looked for and told at their own place.
YamlMistake explainYamlFailure(const std::string& source, const YAML::Exception& failure);

} // namespace mxauthor
