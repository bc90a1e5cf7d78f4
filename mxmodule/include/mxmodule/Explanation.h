#pragma once

#include "mxmodule/Finding.h"
#include "mxmodule/ModuleFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// A run of bytes of an mx file with one meaning.
struct ExplainedPart
{
    /// What the bytes spell.
    enum class Kind
    {
        Number, ///< A whole number.
        Text,   ///< A text.
        Raw     ///< Neither.
    };

    std::size_t offset = 0;                 ///< First byte, from the start of the file.
    std::size_t length = 0;                 ///< In bytes.
    std::optional<std::size_t> group = {};  ///< Index in `groups()`; empty: outside them.
    std::optional<std::size_t> record = {}; ///< Index in the group; empty: of no record.
    std::string subject = {};               ///< The record, such as `parameter 3 "Filter"`.
    std::string field = {};                 ///< As in docs/json-output.md.
    Kind kind = Kind::Raw;                  ///< What the bytes spell.
    std::string value = {};                 ///< A number in decimal, a text; otherwise empty.
    std::string meaning = {};               ///< May be empty.
    bool isRead = true;                     ///< False: no reader of the file looks at it.
};

/// A group of an mx file.
struct ExplainedGroup
{
    std::uint16_t id = 0;   ///< Identifier.
    std::string name = {};  ///< What it contains; empty: unknown.
    std::size_t offset = 0; ///< First byte, from the start of the file.
    std::size_t length = 0; ///< Of the whole group, in bytes.
    bool isRead = true;     ///< False: unknown, or not the first of its identifier.
};

/// Where something is that has a name.
struct NamedPlace
{
    std::string what = {};   ///< Such as "parameter 3", "default of parameter 3", "text 100".
    std::string name = {};   ///< Several places may have the same.
    std::uint16_t group = 0; ///< Identifier of its group.
    std::size_t offset = 0;  ///< First byte, from the start of the file.
    std::size_t length = 0;  ///< In bytes.
};

/// The meaning of every byte of an mx file. Immutable; a copy shares the content.
class MXMODULE_API Explanation
{
public:
    /// Explains `file`; of a text form, the file that it describes.
    explicit Explanation(const ModuleFile& file);

    const ModuleFile& file() const; ///< What is explained.

    /// Returns every part in the order of the file. Each byte is in exactly one.
    const std::vector<ExplainedPart>& parts() const;

    /// Returns every group in the order of the file.
    const std::vector<ExplainedGroup>& groups() const;

    /// Returns the places of parameters, channels and texts, in the order of the file.
    const std::vector<NamedPlace>& names() const;

    /// Returns why the rest of the file cannot be divided into groups, its last part; nothing if it
    /// can.
    const std::optional<Finding>& failure() const;

    /// Returns the part with the byte at `offset`. Throws a `Failure` of `Origin::Request` when
    /// that is outside the file.
    const ExplainedPart& partAt(std::uint64_t offset) const;

    /// Returns an annotated hexadecimal dump for people, which a file's texts cannot disturb.
    /// `coloured`: with terminal colour codes.
    std::string text(bool coloured = false) const;

    /// Returns all of it, schema "mxtool.explain" version 1.
    std::string json() const;

    /// Returns the dump as a self-contained HTML page.
    std::string html() const;

    /// Returns what the byte at `offset` is, in lines for people. Throws as `partAt` does.
    std::string at(std::uint64_t offset) const;

    /// Returns a table of the places called `name`. Throws a `Failure` of `Origin::Request` when
    /// there are none.
    std::string where(const std::string& name) const;

private:
    struct Content;
    std::shared_ptr<const Content> content;
};

} // namespace mxmodule
