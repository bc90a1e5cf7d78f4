#pragma once

#include "mxmodule/CsvStyle.h"
#include "mxmodule/Finding.h"
#include "mxmodule/Values.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

struct ConfiguredImage;
struct ImageComparison;

/// The result of writing values into a parameter image.
struct Composition
{
    std::vector<char> image;              ///< The raw parameter image; empty after an error.
    std::vector<std::uint16_t> registers; ///< Its Modbus registers; empty if there are none.
    std::vector<Finding> findings;        ///< The first 50 rejected values and every side effect.
    std::optional<Finding> noRegisters;   ///< Why the image has no Modbus form.

    /// Returns whether there is an image: no finding is an error.
    bool ok() const
    {
        for (const Finding& finding : findings) {
            if (finding.severity == Severity::Error) {
                return false;
            }
        }
        return true;
    }
};

/// The bytes of a parameter in a buffer.
struct PlacedParameter
{
    std::size_t parameter = 0; ///< Position in the list of parameters.
    std::size_t begin = 0;     ///< First byte.
    std::size_t size = 0;      ///< Number of bytes.
};

/// Which parameters outputs list.
enum class Listing
{
    All,    ///< Every parameter.
    Changed ///< Those that differ from the defaults.
};

/// A configured module: its parameter image and the values in it. Immutable; a copy shares them.
class MXMODULE_API Configuration
{
public:
    /// For the library: see `Module::configuration` and `Module::decode`.
    explicit Configuration(std::shared_ptr<const ConfiguredImage> content);

    Fieldbus fieldbus() const;              ///< The form of `bytes`.
    const std::vector<char>& image() const; ///< The raw parameter image.

    /// Returns the bytes that the fieldbus master writes: the image, or the registers, each with
    /// its high byte first.
    const std::vector<char>& bytes() const;

    /// Returns the registers that the master writes; none on the fieldbus `Raw`.
    std::vector<std::uint16_t> registers() const;

    std::vector<Parameter> parameters() const; ///< With the values in the image.
    std::vector<Parameter> defaults() const;   ///< With the values of the mx file.

    /// Returns the places of the parameters in `bytes`, ordered. On Modbus one may have several
    /// places or none.
    std::vector<PlacedParameter> places() const;

    /// Returns whether the parameter at `position` differs from the default. Throws
    /// `std::out_of_range` when there is none.
    bool isChanged(std::size_t position) const;

    /// Returns notes: differences from the defaults in bits of no parameter, parameters that have
    /// no value or are in no register.
    const std::vector<Finding>& findings() const;

    /// Returns the buffer in hexadecimal and a table of the parameters in it.
    std::string text(Listing listing = Listing::All) const;

    /// Returns the table as CSV. For Modbus each row names its first register, counted from 0 and
    /// from 1.
    std::string csv(const CsvStyle& style = {}, Listing listing = Listing::All) const;

    /// Returns buffer and table as JSON, schema "mxtool.config" version 1. `readValues` reads it.
    std::string json(Listing listing = Listing::All) const;

    /// Returns the values as a file (YAML) to be edited, which `readValues` reads: a comment states
    /// the range or options and the default of each value; a channel's parameters are grouped under
    /// the channel's name.
    std::string valuesFile(Listing listing = Listing::All) const;

    /// Copying and moving share the content.
    Configuration(const Configuration&) = default;
    /// The same.
    Configuration& operator=(const Configuration&) = default;
    ~Configuration() = default;

private:
    friend class Comparison;
    std::shared_ptr<const ConfiguredImage> content;
};

/// A comparison of the wanted configuration with the one read from a module of the same type, on
/// the same fieldbus. Immutable; a copy shares the content.
class MXMODULE_API Comparison
{
public:
    /// `place` is the origin of `read`, for findings. Throws a `Failure` when the configurations
    /// are not of one module type and fieldbus, or differ in the number of parameters or bytes.
    Comparison(const Configuration& wanted, const Configuration& read, const std::string& place);

    bool isSame() const; ///< Whether no bit differs.

    /// Returns the places whose bits differ, in order.
    std::vector<PlacedParameter> deviations() const;

    /// Returns the raw bytes that differ in bits of no parameter.
    const std::vector<std::size_t>& strayBytes() const;

    /// Returns a warning about differing bits of no parameter.
    const std::vector<Finding>& findings() const;

    std::string text() const;                          ///< The deviations as a table for people.
    std::string csv(const CsvStyle& style = {}) const; ///< The same table.
    std::string json() const; ///< Schema "mxtool.config-comparison" version 1.

    /// Copying and moving share the content.
    Comparison(const Comparison&) = default;
    /// The same.
    Comparison& operator=(const Comparison&) = default;
    ~Comparison() = default;

private:
    std::shared_ptr<const ImageComparison> content;
};

} // namespace mxmodule
