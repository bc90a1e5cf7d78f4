#pragma once

#include <text/JsonText.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

/// The members of a JSON object that a call was sent. A member that is missing or of another type
/// is a `CallFailure` that names it, what was found and what is expected.
class RequestBody
{
public:
    /// Reads `content`, an object of at most 32 levels.
    explicit RequestBody(const std::string& content);

    std::string text(const std::string& name) const;
    std::string textOr(const std::string& name, const std::string& absent) const;
    std::optional<std::string> textOrNull(const std::string& name) const; ///< null: nothing.
    std::uint32_t number(const std::string& name) const;
    std::optional<std::uint32_t> numberOrNull(const std::string& name) const; ///< null: nothing.
    bool isSet(const std::string& name) const; ///< A truth value; missing: false.
    /// Returns the index of the text `name` in `words`; missing: 0.
    std::size_t choice(const std::string& name, const std::vector<std::string>& words) const;
    std::vector<std::string> texts(const std::string& name) const;    ///< Missing: none.
    std::vector<RequestBody> objects(const std::string& name) const;  ///< Missing: none.
    std::optional<RequestBody> object(const std::string& name) const; ///< Missing, null: nothing.

private:
    RequestBody(text::Json part, const std::string& place);

    const text::Json* find(const std::string& name) const;
    const text::Json& at(const std::string& name, const char* expected) const;
    std::string textIn(const text::Json& value, const std::string& name) const;
    std::uint32_t numberIn(const text::Json& value, const std::string& name) const;
    [[noreturn]] void refuse(const std::string& name, const char* expected) const;

    text::Json json;
    std::string path; // of this object in the body, with a point at its end
};

} // namespace workbench
