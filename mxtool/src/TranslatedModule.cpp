#include "TranslatedModule.h"

#include "CommandLineOptions.h"
#include "Counted.h"
#include "Diagnostic.h"
#include "InputFile.h"
#include "ModuleFile.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace mxtool {

namespace {

constexpr std::uint64_t mostAddressed = std::uint64_t{1} << 32U;
constexpr std::uint64_t mostOfModbus = std::uint64_t{2} * 65536; // registers have 16-bit numbers

} // namespace

void addModuleFile(CLI::App& verb, ModuleOptions& options)
{
    verb.add_option("FILE", options.file, "The mx file or its text form, - for standard input")
        ->required();
    CLI::Option* const block =
        verb.add_option("--param-block", options.parameterBlockFile,
                        "File whose bytes replace the default parameter block");
    block->type_name("FILE");
    rejectEmptyValue(*block);
}

void addModuleOptions(CLI::App& verb, ModuleOptions& options)
{
    addModuleFile(verb, options);
    addOffsetOption(verb, "--in-offset", options.inOffset,
                    "Byte of the input image at which the module's data begins");
    addOffsetOption(verb, "--out-offset", options.outOffset,
                    "Byte of the output image at which the module's data begins");
}

TranslatedModule::TranslatedModule(const ModuleOptions& options, const std::string& logLevel)
    : path(options.file), inOffset(options.inOffset), outOffset(options.outOffset), log(logLevel)
{
    std::vector<char> block;
    const bool hasBlock = !options.parameterBlockFile.empty();
    if (hasBlock) {
        block = loadBytes(options.parameterBlockFile);
    }
    const ModuleFile input(options.file);
    mxData = input.loadedBytes();
    isText = input.isText();
    try {
        builtDevice = translate(hasBlock ? &block : nullptr);
    } catch (const Failure&) {
        if (hasBlock) {
            requireBlockSize(block.size(), options.parameterBlockFile);
        }
        throw;
    }
    conversions = conversionsOf(mxData);
    const auto& properties = builtDevice->privateProps;
    for (const auto& warning : {offsetWarning("--in-offset", inOffset, properties.inDataSize),
                                offsetWarning("--out-offset", outOffset, properties.outDataSize)}) {
        if (warning) {
            mxtool::report(*warning);
        }
    }
}

TranslatedModule::TranslatedModule(std::string file, std::vector<char> bytes,
                                   const std::string& logLevel)
    : path(std::move(file)),
      log(logLevel),
      mxData(std::move(bytes)),
      builtDevice(translate(nullptr)),
      conversions(conversionsOf(mxData))
{}

void TranslatedModule::requireBlockSize(std::size_t size, const std::string& file)
{
    const std::size_t expected = translate(nullptr)->privateProps.defaultParameterBlock->size();
    if (size != expected) {
        throw Failure(ExitCode::Input, inputName(file),
                      fmt::format("Found {} bytes, expected the {} bytes of the module's "
                                  "parameter block",
                                  size, expected));
    }
}

std::string TranslatedModule::name() const
{
    return inputName(path);
}

std::shared_ptr<TranslatedModule::Device>
TranslatedModule::withParameterBlock(std::vector<char> block)
{
    return translate(&block);
}

std::shared_ptr<TranslatedModule::Device> TranslatedModule::translate(std::vector<char>* block)
{
    try {
        return deviceParser.parse(mxData, block, inOffset, outOffset);
    } catch (const std::runtime_error& failure) {
        throw Failure(ExitCode::Input, name(), failure.what(),
                      isText ? "mxtool check " + path + " shows the place in the text"
                             : "mxtool groups " + path + " lists what the file holds");
    }
}

std::optional<Diagnostic> offsetWarning(const std::string& option, std::uint64_t offset,
                                        std::uint64_t size)
{
    const std::uint64_t end = offset + size;
    if (end <= mostOfModbus) {
        return std::nullopt;
    }
    const std::string wrapped =
        end > mostAddressed ? "; byte addresses have 32 bits and begin again at 0" : "";
    return Diagnostic{"warning", fmt::format("{} {}", option, offset),
                      fmt::format("The module's {} end at byte {}, after the {} bytes of the "
                                  "largest process image, the 65536 registers of Modbus{}",
                                  counted(size, "byte"), end, mostOfModbus, wrapped)};
}

} // namespace mxtool
