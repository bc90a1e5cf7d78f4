#include "text/ChangedValues.h"

#include "text/YamlTree.h"

#include <mxmodule/Registers.h>

#include <algorithm>

namespace mxstation {

namespace {

using mxmodule::Configuration;
using mxmodule::Fieldbus;

// By position; a parameter that is in no register is not known.
std::vector<bool> differing(const Configuration& planned, const Configuration& read)
{
    const auto before = planned.parameters();
    const auto after = read.parameters();
    std::vector<bool> differs(after.size(), false);
    for (const mxmodule::PlacedParameter& place : read.places()) {
        differs[place.parameter] = before[place.parameter].stored != after[place.parameter].stored;
    }
    return differs;
}

// The file of values has each parameter under its channel, with a value that is read back.
class ValuesOfFile
{
public:
    ValuesOfFile(const mxmodule::Module& named, const Configuration& described)
        : module(named), configuration(described)
    {}

    std::vector<ChangedValue> read(const std::vector<bool>& isWanted)
    {
        const YamlTree tree = readYamlTree(configuration.valuesFile());
        for (const auto& [key, value] : tree.root->members) {
            if (value->kind == YamlNode::Kind::Map) {
                for (const auto& [name, inner] : value->members) {
                    add({0, key->text, name->text, inner->text}, isWanted);
                }
            } else {
                add({0, "", key->text, value->text}, isWanted);
            }
        }
        std::sort(values.begin(), values.end(), [](const ChangedValue& a, const ChangedValue& b) {
            return a.parameter < b.parameter;
        });
        return values;
    }

private:
    void add(ChangedValue value, const std::vector<bool>& isWanted)
    {
        const auto found = module.parametersCalled(
            value.group.empty() ? value.name : value.group + "/" + value.name);
        if (found.size() == 1 && isWanted[found.front()]) {
            value.parameter = found.front();
            value.isDefault = !configuration.isChanged(value.parameter);
            values.push_back(value);
        }
    }

    const mxmodule::Module& module;
    const Configuration& configuration;
    std::vector<ChangedValue> values;
};

} // namespace

std::vector<ChangedValue> changedValues(const PlannedModule& module,
                                        const std::vector<std::uint16_t>& registers)
{
    const Configuration planned = module.module.configuration(module.image, Fieldbus::Modbus);
    const Configuration read =
        module.module.decode(mxmodule::bytesOfRegisters(registers), Fieldbus::Modbus, module.name);
    return ValuesOfFile(module.module, read).read(differing(planned, read));
}

ChangedValue parameterOf(const mxmodule::Module& module, std::size_t parameter)
{
    const Configuration configuration = module.defaults(Fieldbus::Raw);
    const std::vector<mxmodule::Parameter> parameters = configuration.parameters();
    std::vector<bool> isWanted(parameters.size(), false);
    isWanted[parameter] = true;
    const auto found = ValuesOfFile(module, configuration).read(isWanted);
    const std::string& name = parameters[parameter].callName;
    return found.empty() ? ChangedValue{parameter, "", name, "", true} : found.front();
}

} // namespace mxstation
