#pragma once

#include "mxmodule/MxmoduleApi.h"

#include <stdexcept>
#include <string>
#include <vector>

/// A module of the kv38 family as configured: values by name, parameter images, Modbus registers,
/// channel map, checks, and the catalogue of modules. Results are plain values, problems are
/// findings. Texts are UTF-8.
namespace mxmodule {

/// How serious a finding is.
enum class Severity
{
    Note,    ///< Worth knowing.
    Warning, ///< Done, perhaps not as meant.
    Error    ///< Not done.
};

/// What a finding is about.
enum class Origin
{
    Request, ///< What the caller asked for, such as a value.
    Input,   ///< What was read: a file, bytes, a text.
    Output   ///< What is written: a file, a database.
};

/// What a finding recommends, for a front end that has words of its own for it.
enum class Advice
{
    None,         ///< Only what `hint` says.
    ReadAsRaw,    ///< The bytes may be the raw parameter image.
    ReadAsModbus, ///< The bytes may be Modbus registers.
    ReadAsValues, ///< The file contains values, not an image.
    ReadAsImage   ///< The file contains an image, not values.
};

/// A message for a person about something that was asked, read or written.
struct Finding
{
    Severity severity = Severity::Error; ///< An error: it has no result.
    std::string place = {}; ///< File with line and column or byte offset, or what the caller gave
                            ///< as the place of a value; may be empty.
    std::string text = {};  ///< What is wrong, what was found, what is expected.
    std::string hint = {};  ///< What to do; may be empty.
    Origin origin = Origin::Input; ///< What it is about.
    /// What is accepted in place of a value or name that was rejected, where it can be listed: the
    /// words that select an option, a range such as "10 to 20 mA", names of parameters, of which an
    /// unknown name has the nearest.
    std::vector<std::string> accepted = {};
    std::string excerpt = {}; ///< The line of the text and a caret below the column; may be empty.
    Advice advice = Advice::None; ///< `hint` says the same in words.
};

/// Returns "note", "warning" or "error".
MXMODULE_API const char* severityName(Severity severity);

/// An operation that has no result. What was before it is unchanged.
class MXMODULE_API Failure : public std::runtime_error
{
public:
    /// Of one finding.
    explicit Failure(Finding finding);

    /// `all` contains at least one finding; the last states why there is no result.
    explicit Failure(std::vector<Finding> all);

    /// Of one error.
    Failure(Origin origin, const std::string& place, const std::string& text,
            const std::string& hint = {});
    ~Failure() override;
    /// Copies the findings.
    Failure(const Failure&) = default;
    /// The same.
    Failure& operator=(const Failure&) = default;

    /// Returns every finding, at least one, in the order of the input.
    const std::vector<Finding>& findings() const noexcept { return all; }

    /// Returns the finding that states why there is no result, the last.
    const Finding& reason() const noexcept { return all.back(); }

private:
    std::vector<Finding> all;
};

} // namespace mxmodule
