#include "mxstation/ParameterEdit.h"

#include "export/Provenance.h"
#include "text/EditErrors.h"
#include "text/EntryContent.h"
#include "text/ParameterEditor.h"
#include "text/SameModbus.h"
#include "text/StationReader.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxstation {

namespace {

using mxmodule::Failure;
using mxmodule::Finding;
using mxmodule::Origin;
using mxmodule::Severity;
using Registers = std::vector<std::vector<std::uint16_t>>;

constexpr const char* statedByHand =
    "write the entry as \"module: NAME\" of its own, with \"parameters:\" below it";

// Writes values into the text of a station.
class ParameterWriting
{
public:
    ParameterWriting(const Station& planned, const Plan& made, const Registers& read)
        : station(planned),
          plan(made),
          registers(read),
          modules(planned),
          errors(planned, statedByHand)
    {}

    std::string text()
    {
        const YamlTree tree = readYamlTree(station.source);
        const YamlNode& list = *memberCalled(*tree.root, "modules");
        ParameterEditor editor(station.source, *tree.root);
        for (std::size_t i = 0; i < plan.modules.size(); ++i) {
            if (registers[i] != plan.modules[i].registers) {
                set(editor, list, i);
            }
        }
        errors.requireNone();
        if (!changed.empty()) {
            requireRead(editor);
        }
        return editor.text(changed.size());
    }

private:
    void set(ParameterEditor& editor, const YamlNode& list, std::size_t index)
    {
        const PlannedModule& module = plan.modules[index];
        try {
            const auto values = changedValues(module, registers[index]);
            const auto called = [&module](const std::string& name) {
                return module.module.parametersCalled(name);
            };
            errors.add(editor.set(*list.items[module.entry], list, called, values));
            changed.push_back(index);
        } catch (const Failure& failure) {
            errors.add(
                findingAt(station.file, station.source, module.place, Severity::Error,
                          fmt::format("the registers of module {} \"{}\" are no values of it: {}",
                                      module.position, module.name, failure.reason().text),
                          failure.reason().hint));
        }
    }

    // Why the text with the first `count` modules changed is not what it is to be.
    std::optional<std::string> mistake(const ParameterEditor& editor, std::size_t count)
    {
        const Station read = stationIn(editor.text(count), station.file, modules);
        if (!read.findings.empty()) {
            return read.findings.front().text;
        }
        if (!isSameOtherwise(read)) {
            return "the text would state something else";
        }
        const Plan again = mxstation::plan(read);
        const auto error =
            std::find_if(again.findings.begin(), again.findings.end(), [](const Finding& finding) {
                return finding.severity == Severity::Error;
            });
        if (error != again.findings.end()) {
            return error->text;
        }
        return hasRegisters(again, count)
                   ? std::nullopt
                   : std::optional<std::string>("no value gives the same registers");
    }

    bool isSameOtherwise(const Station& read) const
    {
        return isSameModbus(read.modbus, station.modbus) &&
               std::equal(read.entries.begin(), read.entries.end(), station.entries.begin(),
                          station.entries.end(), [](const Entry& a, const Entry& b) {
                              return isSameBesidesParameters(a, b) &&
                                     isSameByte(a.at.input, b.at.input) &&
                                     isSameByte(a.at.output, b.at.output);
                          });
    }

    bool hasRegisters(const Plan& again, std::size_t count) const
    {
        for (std::size_t i = 0; i < plan.modules.size(); ++i) {
            const auto end = changed.begin() + static_cast<std::ptrdiff_t>(count);
            const bool isChanged = std::find(changed.begin(), end, i) != end;
            const auto& expected = isChanged ? registers[i] : plan.modules[i].registers;
            if (again.modules[i].registers != expected) {
                return false;
            }
        }
        return true;
    }

    // Names the first module whose text became another one.
    void requireRead(const ParameterEditor& editor)
    {
        if (!mistake(editor, changed.size())) {
            return;
        }
        const std::size_t bad =
            firstBad(changed.size(), [&](std::size_t count) { return !mistake(editor, count); });
        const PlannedModule& module = plan.modules[changed[bad - 1]];
        throw Failure(findingAt(
            station.file, station.source, module.place, Severity::Error,
            fmt::format("{}: {}", cannotBeStated, mistake(editor, bad).value_or("unknown")),
            statedByHand));
    }

    const Station& station;
    const Plan& plan;
    const Registers& registers;
    ModuleSource modules;
    std::vector<std::size_t> changed; // modules, by index
    EditErrors errors;
};

} // namespace

std::string withParameters(const Station& station, const Plan& plan, const Registers& registers)
{
    requireOk(plan);
    if (station.source.empty()) {
        throw Failure(Origin::Request, station.name,
                      "the station was made without a text, into which values could be written",
                      "a host sets \"parameters\" of its entries instead");
    }
    if (registers.size() != plan.modules.size()) {
        throw Failure(Origin::Request, station.name,
                      fmt::format("found the registers of {} modules, expected those of {}",
                                  registers.size(), plan.modules.size()));
    }
    return ParameterWriting(station, plan, registers).text();
}

} // namespace mxstation
