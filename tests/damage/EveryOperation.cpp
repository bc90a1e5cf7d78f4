#include "EveryOperation.h"

#include "check/CheckText.h"
#include "diff/DiffOutput.h"

#include <mxauthor/Check.h>
#include <mxauthor/Explain.h>
#include <mxauthor/TextForm.h>
#include <mxmodule/Explanation.h>
#include <mxmodule/Module.h>

#include <devices/parser/mx/Parser_kv38.h>
#include <text/JsonText.h>

#include <memory>
#include <optional>

namespace damage {

namespace {

using devices::parser::FieldbusType;
using mxmodule::Fieldbus;
using mxmodule::Module;

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
        const std::vector<mxmodule::CheckedFile> checked{
            mxmodule::ModuleFile("damaged.bin", file).check()};
        mxtool::checkText(checked, false, false);
        mxmodule::checkJson(checked);
        mxmodule::checkSarif(checked);
    });
    run([&] {
        const mxmodule::Explanation explained(mxmodule::ModuleFile("damaged.bin", file));
        explained.text();
        explained.json();
        explained.html();
    });
    run([&] {
        const auto comparison = mxauthor::compare(mxauthor::readWholeGroups(original).file,
                                                  mxauthor::readWholeGroups(file).file);
        mxtool::diffText(comparison, "original.bin", "damaged.bin", false);
        text::jsonText(mxtool::diffJson(comparison, "original.bin", "damaged.bin"));
    });
}

void printChannels(const mxmodule::ChannelMap& map)
{
    map.text();
    map.csv();
    map.json();
    map.declarations();
    map.drawing(true);
    map.svg();
}

// Puts the values of `configuration` into its forms, and reads them back from one.
void printConfiguration(const Module& module, const mxmodule::Configuration& configuration)
{
    configuration.text();
    configuration.csv();
    configuration.valuesFile();
    const auto values = mxmodule::readValues(configuration.json(), "damaged.json");
    mxmodule::ComposeOptions options;
    options.image = configuration.image();
    module.compose(values.assignments, options);
}

void configureAsEngineer(const Module& module, Fieldbus fieldbus, Printing printing)
{
    const auto configuration = module.defaults(fieldbus);
    module.decode(configuration.bytes(), fieldbus, "damaged.bin");
    if (printing == Printing::EveryForm) {
        printConfiguration(module, configuration);
    }
}

// What an engineer does: show, look at the channels, configure.
void useAsEngineer(const std::vector<char>& file, Run& run, Printing printing)
{
    std::optional<Module> module;
    run([&] { module = Module::fromBytes(file, "damaged.bin"); });
    if (!module) {
        return;
    }
    run([&] {
        static_cast<void>(module->parameters());
        if (printing == Printing::EveryForm) {
            module->text();
            module->json();
        }
    });
    run([&] {
        const auto map = module->channelMap();
        map.displaced();
        map.outside();
        static_cast<void>(map.undisplacedFrom(true) + map.undisplacedFrom(false));
        static_cast<void>(map.drawing());
        if (printing == Printing::EveryForm) {
            printChannels(map);
        }
    });
    for (const Fieldbus fieldbus : {Fieldbus::Raw, Fieldbus::Modbus}) {
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
