#pragma once

#include <string>
#include <vector>

namespace mxauthor {

/// Returns `bytes`, taken as Windows-1252, as a YAML scalar: plain where every reader of YAML reads
/// it as this text, otherwise in double quotes with escapes.
std::string yamlText(const std::string& bytes);

/// Returns `text` in double quotes.
std::string yamlQuoted(const std::string& utf8);

/// Returns text of digits in double quotes, long text as a literal block whose lines are indented;
/// the line end included.
std::string yamlDigits(const std::string& digits, const std::string& indent);

/// A mapping on one line: {key: value, ...}.
class FlowMapping
{
public:
    /// `value` is YAML already.
    FlowMapping& add(const std::string& key, const std::string& value);
    bool empty() const { return items.empty(); }
    std::string text() const;

    /// Returns the same mapping with a line for each key.
    std::string lines(const std::string& indent) const;

private:
    std::vector<std::string> items;
};

/// Returns values that are YAML already as a list on one line.
std::string flowList(const std::vector<std::string>& values);

} // namespace mxauthor
