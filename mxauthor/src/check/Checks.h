#pragma once

#include "check/Findings.h"
#include "module/ModuleView.h"

namespace mxauthor {

/// The rules of one subject, and the walk through a module that looks for them.
struct Check
{
    using Walk = void (*)(const ModuleView&, Findings&);

    template <std::size_t count>
    constexpr Check(const CheckRule (&rows)[count], Walk function)
        : begin(rows), end(rows + count), walk(function)
    {}

    const CheckRule* begin;
    const CheckRule* end;
    Walk walk;
};

// Each in a file of its own: the rules as rows of a table, in the order of their names in the code.

extern const Check fileCheck;
extern const Check groupCheck;
extern const Check identityCheck;
extern const Check sizeCheck;
extern const Check textCheck;
extern const Check optionListCheck;
extern const Check conversionCheck;
extern const Check parameterCheck;
extern const Check valueCheck;
extern const Check channelCheck;
extern const Check parserCheck; ///< Without a walk: it needs the device parser.

/// The failure of the container reader on `bytes`, whose whole groups are `file`.
void checkFraming(const std::vector<char>& bytes, const MxFile& file, Findings& findings);

/// Every rule except those of the device parser, on `bytes` and what was read of them.
void checkRead(const std::vector<char>& bytes, const ReadGroups& read, Findings& findings);

/// The check that the device parser reads the file.
enum class Refused
{
    File,
    Modbus
};

/// Adds the finding that the device parser rejects the file with `message`.
void addRefusal(Refused what, const std::string& message, const MxFile& file, Findings& findings);

} // namespace mxauthor
