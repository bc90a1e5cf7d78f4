#include "c/OnlineHandles.h"

namespace {

mxmodule_bytes* ofReport(const mxonline_report* handle, mxmodule_error** error,
                         std::string (*resultOf)(const mxonline::ApplyReport&))
{
    return mxmodule::bytesOfHandle(handle, "a report", error, [&](const mxonline_report& one) {
        return resultOf(one.report);
    });
}

} // namespace

using mxonline::ApplyReport;

void mxonline_report_free(mxonline_report* report)
{
    delete report;
}

int mxonline_report_is_done(const mxonline_report* report)
{
    return report != nullptr && report->report.isDone() ? 1 : 0;
}

mxmodule_bytes* mxonline_report_json(const mxonline_report* report, mxmodule_error** error)
{
    return ofReport(report, error, [](const ApplyReport& one) { return one.json(); });
}

mxmodule_bytes* mxonline_report_text(const mxonline_report* report, mxmodule_error** error)
{
    return ofReport(report, error, [](const ApplyReport& one) { return one.text(); });
}

mxmodule_bytes* mxonline_report_html(const mxonline_report* report, mxmodule_error** error)
{
    return ofReport(report, error, [](const ApplyReport& one) { return one.html(); });
}

mxmodule_bytes* mxonline_report_findings(const mxonline_report* report, mxmodule_error** error)
{
    return ofReport(report, error,
                    [](const ApplyReport& one) { return mxmodule::findingsJson(one.findings); });
}
