#pragma once

#include "text/EditedText.h"

#include <string>

namespace mxstation {

/// The text of a station with a line end after its last line, so that lines can be moved.
class EndedText
{
public:
    explicit EndedText(const EditedText& text);

    const std::string& text() const { return source; }
    const std::string& newline() const { return lineEnd; }

    /// Returns `changed` with the end of the last line as it was.
    std::string restored(const std::string& changed) const;

private:
    std::string source;
    std::string lineEnd;
    bool isAdded;
};

/// Returns an item of a list as lines with its dash, each with `newline`.
std::string itemLines(const YamlMember& item, const std::string& indent,
                      const std::string& newline);

} // namespace mxstation
