// The cost of a configured module: raw image, registers, mapping list.
#include "ModuleGenerator.h"

#include <devices/parser/mx/Parser_kv38.h>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using devices::parser::FieldbusType;
using devices::parser::mx::Parser_kv38;

struct Module
{
    std::vector<char> file = bench::generateModule(bench::largeModule);
    Parser_kv38 parser;
    std::shared_ptr<Parser_kv38::DeviceP> device = parser.parse(file, nullptr, 0, 0);
};

// A host's copy of the device with its first `count` parameters, each with its present value.
datamodel::ParamDevice configured(const Parser_kv38::DeviceP& device, std::size_t count)
{
    datamodel::ParamDevice chosen;
    chosen.deviceTypeId = device.deviceTypeId;
    for (const auto& attribute : device.attributes) {
        if (chosen.attributes.size() == count) {
            break;
        }
        if (attribute->typeCode() == datamodel::parameterTypeCode) {
            auto parameter = std::make_shared<datamodel::Parameter>();
            parameter->id = attribute->id;
            parameter->value = static_cast<const datamodel::Parameter&>(*attribute).value;
            chosen.attributes.push_back(parameter);
        }
    }
    return chosen;
}

void rawConfiguration(benchmark::State& state)
{
    Module module;
    datamodel::ParamDevice chosen =
        configured(*module.device, static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(module.parser.getCalculatedRawConfig(
            FieldbusType::Raw, module.file, module.device.get(), &chosen));
    }
}

void modbusRegisters(benchmark::State& state)
{
    Module module;
    for (auto _ : state) {
        benchmark::DoNotOptimize(module.parser.getCalculatedRawConfig(
            FieldbusType::Modbus, module.file, module.device.get(), nullptr));
    }
}

void mappingList(benchmark::State& state)
{
    Module module;
    for (auto _ : state) {
        benchmark::DoNotOptimize(module.parser.getChannelMappingInfoList(module.device.get()));
    }
}

void parse(benchmark::State& state)
{
    Module module;
    for (auto _ : state) {
        benchmark::DoNotOptimize(module.parser.parse(module.file, nullptr, 0, 0));
    }
}

} // namespace

BENCHMARK(parse);
BENCHMARK(rawConfiguration)->Arg(0)->Arg(10)->Arg(1000);
BENCHMARK(modbusRegisters);
BENCHMARK(mappingList);
