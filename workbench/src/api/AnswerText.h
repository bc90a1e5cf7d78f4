#pragma once

#include "http/Response.h"

#include <text/JsonText.h>

#include <string>

namespace workbench {

/// A JSON object that is written member after member. What another library gives as JSON text
/// becomes a member as it stands, without being read.
class AnswerText
{
public:
    AnswerText& add(const char* name, const text::Json& value);

    /// Adds `json`, a JSON text; "null" if it is empty.
    AnswerText& addText(const char* name, const std::string& json);

    /// Returns the object as it is now.
    std::string text() const { return members + "}"; }

    /// Returns the object as the answer of a call.
    Response response(unsigned status = 200) const;

private:
    std::string members = "{";
};

} // namespace workbench
