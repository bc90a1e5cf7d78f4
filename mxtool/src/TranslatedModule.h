#pragma once

#include "DeviceReport.h"
#include "Diagnostic.h"
#include "LogToDiagnostics.h"

#include <devices/parser/mx/Parser_kv38.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace mxtool {

/// The options of a verb that translates a module.
struct ModuleOptions
{
    std::string file;               ///< The mx file or its text form, "-" for standard input.
    std::string parameterBlockFile; ///< Replaces the default parameter block; empty: none.
    unsigned inOffset = 0;          ///< First byte of the module in the input image.
    unsigned outOffset = 0;         ///< First byte of the module in the output image.
};

/// Adds FILE and --param-block to `verb`, for output without addresses. `options` must outlive the
/// parsing.
void addModuleFile(CLI::App& verb, ModuleOptions& options);

/// Adds the same, --in-offset and --out-offset.
void addModuleOptions(CLI::App& verb, ModuleOptions& options);

/// An mx file, or its text form, and the device that it describes. Reports the parser's log lines
/// during its lifetime.
class TranslatedModule
{
public:
    using Device = devices::parser::mx::Parser_kv38::DeviceP;

    /// Loads and translates. Throws a `Failure` naming the file.
    TranslatedModule(const ModuleOptions& options, const std::string& logLevel);

    /// Translates `bytes`, the mx data of `file`. Throws a `Failure` naming it.
    TranslatedModule(std::string file, std::vector<char> bytes, const std::string& logLevel);

    std::string name() const; ///< Of the file, for diagnostics.
    const std::vector<char>& bytes() const { return mxData; }
    devices::parser::IDeviceParser& parser() { return deviceParser; }
    Device& device() { return *builtDevice; }

    /// Returns the report on `ofDevice`, a translation of this file; without argument on the first.
    DeviceReport report(const Device& ofDevice) const { return makeReport(ofDevice, conversions); }
    DeviceReport report() const { return report(*builtDevice); }

    /// Translates the same file with `block` in place of its default parameter block.
    std::shared_ptr<Device> withParameterBlock(std::vector<char> block);

private:
    std::shared_ptr<Device> translate(std::vector<char>* block);
    void requireBlockSize(std::size_t size, const std::string& file);

    std::string path;
    bool isText = false; // the file is the text form
    unsigned inOffset = 0;
    unsigned outOffset = 0;
    devices::parser::mx::Parser_kv38 deviceParser;
    LogToDiagnostics log; // after the parser, which sets up the logger
    std::vector<char> mxData;
    std::shared_ptr<Device> builtDevice; // its parameters point into mxData
    mxformat::ConversionTable conversions;
};

/// Returns a warning if `size` bytes from `offset` exceed the largest process image of a fieldbus.
/// `option` is the command line option that set the offset.
[[nodiscard]] std::optional<Diagnostic> offsetWarning(const std::string& option,
                                                      std::uint64_t offset, std::uint64_t size);

} // namespace mxtool
