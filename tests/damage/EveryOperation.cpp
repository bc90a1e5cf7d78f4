#include "EveryOperation.h"

#include "DeviceText.h"
#include "Diagnostic.h"
#include "channels/ChannelMapOutput.h"
#include "check/CheckReport.h"
#include "configuration/Composition.h"
#include "configuration/ConfigurationOutput.h"
#include "configuration/DecodedImage.h"
#include "configuration/ValuesFile.h"
#include "diff/DiffOutput.h"
#include "explain/ExplainOutput.h"

#include <mxauthor/TextForm.h>

#include <devices/parser/mx/Parser_kv38.h>

#include <memory>

namespace damage {

namespace {

using devices::parser::FieldbusType;
using mxtool::TranslatedModule;

constexpr FieldbusType fieldbuses[] = {FieldbusType::Raw, FieldbusType::Modbus};

// Counts operations and their ends. Anything but an exception of the standard library's family ends
// the process.
class Run
{
public:
    template <typename Operation>
    void operator()(const Operation& operation)
    {
        ++outcome.operations;
        try {
            operation();
        } catch (const std::exception&) {
            ++outcome.failures;
        }
    }
    Outcome outcome;
};

// The user's copy of a device, every parameter with the value that it has.
datamodel::ParamDevice ownValues(const datamodel::Device& device)
{
    datamodel::ParamDevice copy;
    copy.deviceTypeId = device.deviceTypeId;
    for (const auto& attribute : device.attributes) {
        if (attribute->typeCode() == datamodel::parameterTypeCode) {
            auto parameter = std::make_shared<datamodel::Parameter>();
            parameter->id = attribute->id;
            parameter->value = static_cast<const datamodel::Parameter&>(*attribute).value;
            copy.attributes.push_back(parameter);
        }
    }
    return copy;
}

// What a host does: translate, map, configure.
void useAsHost(const std::vector<char>& file, Run& run)
{
    devices::parser::mx::Parser_kv38 parser;
    std::shared_ptr<devices::parser::mx::Parser_kv38::DeviceP> device;
    run([&] { device = parser.parse(file, nullptr, 0, 0); });
    if (device == nullptr) {
        return;
    }
    run.outcome.isDevice = true;
    run([&] { parser.getChannelMappingInfoList(device.get()); });
    datamodel::ParamDevice values = ownValues(*device);
    for (const FieldbusType fieldbus : fieldbuses) {
        run([&] { parser.getCalculatedRawConfig(fieldbus, file, device.get(), nullptr); });
        run([&] { parser.getCalculatedRawConfig(fieldbus, file, device.get(), &values); });
    }
    std::vector<char> block = *device->privateProps.defaultParameterBlock;
    run([&] { parser.parse(file, &block, 10, 20); });
}

// What an author does: read, write, check, explain, compare.
void useAsAuthor(const std::vector<char>& file, const std::vector<char>& original, Run& run)
{
    run([&] { mxauthor::writeMxFile(mxauthor::readMxFile(file)); });
    run([&] { mxauthor::writeMxFile(mxauthor::readDamagedMxFile(file).file); });
    run([&] { return mxauthor::check(file); });
    run([&] { mxauthor::explain(file); });
    run([&] {
        mxauthor::compare(mxauthor::readWholeGroups(original).file,
                          mxauthor::readWholeGroups(file).file);
    });
}

void printAsAuthor(const std::vector<char>& file, const std::vector<char>& original, Run& run)
{
    run([&] { mxauthor::dumpText(mxauthor::readDamagedMxFile(file).file); });
    run([&] {
        mxtool::CheckReport report;
        report.files = {mxtool::checkedFile(mxtool::ModuleFile("damaged.bin", file), {})};
        mxtool::checkText(report, false, false);
        mxtool::jsonText(mxtool::checkJson(report));
        mxtool::jsonText(mxtool::checkSarif(report));
    });
    run([&] {
        const mxtool::ExplainedFile explained{"damaged.bin", file, mxauthor::explain(file)};
        mxtool::explainText(explained, false);
        mxtool::jsonText(mxtool::explainJson(explained));
        mxtool::explainHtml(explained);
    });
    run([&] {
        const auto comparison = mxauthor::compare(mxauthor::readWholeGroups(original).file,
                                                  mxauthor::readWholeGroups(file).file);
        mxtool::diffText(comparison, "original.bin", "damaged.bin", false);
        mxtool::jsonText(mxtool::diffJson(comparison, "original.bin", "damaged.bin"));
    });
}

void printChannels(const mxtool::ChannelMap& map, const mxtool::ProcessImage& image)
{
    mxtool::channelMapText(map);
    mxtool::channelMapCsv(map);
    mxtool::jsonText(mxtool::channelMapJson(map, image));
    mxtool::iecDeclarations(map);
    mxtool::processImageMap(image, true);
    mxtool::processImageSvg(image);
}

// Puts the values of `configuration` into its forms, and reads them back from one.
void printConfiguration(TranslatedModule& module, const mxtool::Configuration& configuration)
{
    mxtool::configurationText(configuration);
    mxtool::configurationCsv(configuration);
    mxtool::configurationValues(configuration);
    const auto values =
        mxtool::readValues(mxtool::configurationJson(configuration, "damaged.bin"), "damaged.json");
    const auto base = module.withParameterBlock(configuration.image);
    mxtool::compose(module, *base, values.assignments, mxtool::ValueCheck::Full);
}

void configureAsEngineer(TranslatedModule& module, FieldbusType fieldbus, Printing printing)
{
    const auto image = module.report().parameterBlock;
    const auto configuration = mxtool::configurationOf(module, image, fieldbus);
    mxtool::notesOf(configuration, "damaged.bin");
    mxtool::decodedImage(configuration.bytes, fieldbus, module, "damaged.bin");
    if (printing == Printing::EveryForm) {
        printConfiguration(module, configuration);
    }
}

// What an engineer does: show, look at the channels, configure.
void useAsEngineer(const std::vector<char>& file, Run& run, Printing printing)
{
    std::unique_ptr<TranslatedModule> module;
    run([&] { module = std::make_unique<TranslatedModule>("damaged.bin", file, "fatal"); });
    if (module == nullptr) {
        return;
    }
    run([&] {
        const auto report = module->report();
        if (printing == Printing::EveryForm) {
            mxtool::deviceText(report);
            mxtool::jsonText(mxtool::deviceJson(report));
        }
    });
    run([&] {
        const auto map =
            mxtool::makeChannelMap(module->parser(), module->device(), module->bytes());
        const auto image = mxtool::makeProcessImage(map);
        if (printing == Printing::EveryForm) {
            printChannels(map, image);
        }
    });
    for (const FieldbusType fieldbus : fieldbuses) {
        run([&] { configureAsEngineer(*module, fieldbus, printing); });
    }
}

} // namespace

Outcome runEveryOperation(const std::vector<char>& file, const std::vector<char>& original,
                          Printing printing)
{
    Run run;
    useAsHost(file, run);
    useAsAuthor(file, original, run);
    if (printing == Printing::EveryForm) {
        printAsAuthor(file, original, run);
    }
    useAsEngineer(file, run, printing);
    return run.outcome;
}

} // namespace damage
