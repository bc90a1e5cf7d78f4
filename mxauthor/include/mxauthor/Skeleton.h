#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace mxauthor {

/// The request for a new module as a person writes it. Texts are UTF-8.
struct SkeletonRequest
{
    std::string channels;            ///< Such as "3 AI, 2 DO"; may be empty.
    std::string name = "New module"; ///< Name in the catalogue.
    std::string id = "0x00000001";   ///< Module identifier.
    std::optional<std::string> type; ///< Of the module type; else from the channels.
    std::string schema;              ///< Where editors find the JSON Schema.
};

/// Why a request was rejected: the wrong field, what was found, what is accepted.
class SkeletonError : public std::runtime_error
{
public:
    SkeletonError(std::string part, const std::string& text)
        : std::runtime_error(text), wrongMember(std::move(part))
    {}

    /// Returns the member of `SkeletonRequest` that is wrong.
    const std::string& member() const { return wrongMember; }

private:
    std::string wrongMember;
};

/// Returns the commented text form of a module with these channels and a parameter for each, for
/// the author to complete. It builds without errors, and `check` has no finding about the file.
/// Throws a `SkeletonError`.
///
/// The channels are given as "COUNT KIND, COUNT KIND, ...": DI and DO are bits, AI and AO are
/// SInt16, "in TYPE" and "out TYPE" are any kind of the text form; 255 channels at most.
std::string skeletonText(const SkeletonRequest& request);

/// A module type and its meaning to module manufacturers. Readers show the number only.
struct ModuleType
{
    std::uint8_t number;
    const char* meaning;
};

/// Returns the types that are in use, in the order of their numbers.
const std::vector<ModuleType>& moduleTypes();

} // namespace mxauthor
