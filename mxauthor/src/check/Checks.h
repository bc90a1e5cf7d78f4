#pragma once

#include "module/ModuleView.h"
#include "mxauthor/Check.h"

namespace mxauthor {

constexpr Severity note = Severity::Note;
constexpr Severity warning = Severity::Warning;
constexpr Severity error = Severity::Error;

/// Collects what the checks find.
class Findings
{
public:
    /// Adds a finding in a group.
    void add(const CheckRule& rule, const Place& place, const std::string& subject,
             const std::string& text);

    /// Adds a finding about the default of the parameter whose number is at `parameter`.
    void addDefault(const CheckRule& rule, const Place& place, const Place& parameter,
                    const std::string& subject, const std::string& text);

    /// Adds a finding that concerns the file, or bytes outside its groups.
    void addToFile(const CheckRule& rule, const Place& place, const std::string& text);

    /// Returns the findings ordered by their place.
    std::vector<Finding> sorted() &&;

private:
    std::vector<Finding> all;
};

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

/// What the device parser rejects.
enum class Refused
{
    File,  ///< The mx file: `parser-refuses`.
    Modbus ///< Its default parameters as Modbus registers: `modbus-refuses`.
};

/// Adds the finding that the device parser rejects the file with `message`.
void addRefusal(Refused what, const std::string& message, const MxFile& file, Findings& findings);

} // namespace mxauthor
