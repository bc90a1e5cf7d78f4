#pragma once

#include "mxmodule/Check.h"
#include "mxmodule/Observer.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace mxmodule {

class ModuleFolder;
class TranslatedModule;

/// The bytes of an mx file, as read or built from its text form. Immutable; a copy shares them.
class MXMODULE_API ModuleFile
{
public:
    /// Reads the file at `path`. Throws a `Failure` when it cannot be read, is empty, is of another
    /// kind such as a database, or is a text with errors, of which each is a finding.
    static ModuleFile read(const std::string& path, Observer* observer = nullptr);

    /// Takes `content`, an mx file or its text form, called `name`. A name in angle brackets, such
    /// as "<standard input>", is not a path; files that a text form names are then looked for in
    /// the current directory, otherwise in that of `name`. Throws a `Failure` as `read` does.
    ModuleFile(std::string name, std::vector<char> content, Observer* observer = nullptr);

    const std::string& name() const; ///< For messages.

    /// Returns the bytes of the mx file, at least one.
    const std::vector<char>& bytes() const;

    /// Returns whether the file is the text form, from which the bytes were built.
    bool isText() const;

    /// Returns the place of the byte at `offset` for messages: "FILE:0x0001a4", for a text form
    /// "FILE:LINE:COLUMN".
    std::string placeOf(std::size_t offset) const;

    /// Returns every violation of a rule.
    CheckedFile check(const RuleSettings& settings = {}) const;

    /// Copying and moving share the content.
    ModuleFile(const ModuleFile&) = default;
    /// The same.
    ModuleFile& operator=(const ModuleFile&) = default;
    ~ModuleFile() = default;

private:
    friend class ModuleFolder;
    friend class TranslatedModule;
    struct Content;
    explicit ModuleFile(std::shared_ptr<const Content> made);
    std::shared_ptr<const Content> content;
};

} // namespace mxmodule
