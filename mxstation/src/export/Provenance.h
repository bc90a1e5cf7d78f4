#pragma once

#include <mxstation/Plan.h>
#include <text/Json.h>

#include <string>
#include <vector>

namespace mxstation {

/// Throws a `mxmodule::Failure` with the errors of `plan` if it is not `ok`: it has no channels to
/// export.
void requireOk(const Plan& plan);

/// What an export was made of and by which version: always the same for the same plan.
///
/// The sums are SHA-256, 64 lower-case hexadecimal digits: of the text of the station, and of the
/// bytes of each mx file, computed once for all modules of one file.
class Provenance
{
public:
    /// Throws as `requireOk`.
    explicit Provenance(const Plan& plan);

    /// Returns the version of mxtool and of this library, such as "1.2.3".
    static std::string version();

    /// Returns the sum of the station's text.
    const std::string& stationSum() const { return station; }

    /// Returns the sum of the mx file of the module at `position`, from 1; empty: no such module.
    std::string moduleSum(std::size_t position) const;

    /// Returns the same as lines for a comment: the version, the station, each mx file with its
    /// sum and the modules made of it. They contain names, and so any character.
    std::vector<std::string> lines() const;

    /// Adds the members "mxtool" (version), "station_sha256" and "mx_files" to `object`.
    void addTo(text::Json& object) const;

private:
    struct File
    {
        std::string reference;              // of the first module
        std::string sum;                    // of the bytes
        std::vector<std::size_t> positions; // of its modules
    };

    std::string station;
    std::vector<File> files;               // in the order of their first modules
    std::vector<std::size_t> fileOfModule; // by position - 1
};

} // namespace mxstation
