#pragma once

#include <mxonline/ApplyReport.h>

#include <string>

// Reports made by hand: two modules, of which the first one has two parameters that differed.

inline mxonline::AppliedParameter appliedParameter(const std::string& name, std::uint16_t address)
{
    mxonline::AppliedParameter one;
    one.parameter = name;
    one.address = address;
    one.found = {0x3200};
    one.planned = {0x3c00};
    one.now = {0x3c00};
    one.foundShown = "50 Hz";
    one.plannedShown = "60 Hz";
    one.nowShown = "60 Hz";
    one.isWritten = true;
    one.outcome = mxonline::WriteOutcome::Verified;
    return one;
}

inline mxonline::AppliedModule appliedModule(std::size_t position, const std::string& name)
{
    mxonline::AppliedModule module;
    module.position = position;
    module.name = name;
    module.moduleId = "5a030304";
    module.identification = mxonline::Identification::Same;
    module.foundId = "5a030304";
    module.sum = std::string(64, static_cast<char>('0' + position));
    return module;
}

inline mxonline::ApplyReport doneReport()
{
    mxonline::ApplyReport report;
    report.station = "Pump house";
    report.stationSum = std::string(64, 'a');
    report.target = "tcp:127.0.0.1:1502";
    report.map.unit = 9;
    report.map.identity = mxstation::ModbusIdentity{};
    report.version = "3.1.4";
    report.started = "2026-01-31T08:15:00.123Z";
    report.finished = "2026-01-31T08:15:01.456Z";
    report.modules = {appliedModule(1, "Levels"), appliedModule(2, "Flows")};
    report.modules[0].parameters = {appliedParameter("Mains suppression", 1000),
                                    appliedParameter("AI 1/Filter", 1006)};
    report.isReadBack = true;
    report.sum = std::string(64, 'b');
    return report;
}

/// The second parameter was written, but keeps its value.
inline mxonline::ApplyReport reportOfAnotherValue()
{
    mxonline::ApplyReport report = doneReport();
    mxonline::AppliedParameter& one = report.modules[0].parameters[1];
    one.outcome = mxonline::WriteOutcome::Different;
    one.now = one.found;
    one.nowShown = one.foundShown;
    report.findings = {{mxmodule::Severity::Error, "tcp:127.0.0.1:1502 unit 9", "read back 50 Hz",
                        "see its manual", mxmodule::Origin::Output}};
    return report;
}

/// The connection was lost after the first write.
inline mxonline::ApplyReport reportOfBrokenConnection()
{
    mxonline::ApplyReport report = doneReport();
    for (mxonline::AppliedParameter& one : report.modules[0].parameters) {
        one.outcome = mxonline::WriteOutcome::NotReadBack;
        one.now.clear();
        one.nowShown.clear();
    }
    report.modules[0].parameters[1].isWritten = false;
    report.modules[0].sum.clear();
    report.modules[1].sum.clear();
    report.sum.clear();
    report.isReadBack = false;
    report.map.commit = mxstation::ModbusCommit{8192, 1, true};
    report.findings = {{mxmodule::Severity::Error, "tcp:127.0.0.1:1502 unit 9", "no answer",
                        "see the cable", mxmodule::Origin::Output}};
    return report;
}
