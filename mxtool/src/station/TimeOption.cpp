#include "station/TimeOption.h"

#include "Diagnostic.h"

#include <mxonline/TimeText.h>

namespace mxtool {

std::chrono::milliseconds timeOfOption(const std::string& option, const std::string& text)
{
    try {
        return mxonline::timeOf(text);
    } catch (const Failure& failure) {
        Finding finding = failure.reason();
        finding.place = option;
        throw Failure(finding);
    }
}

} // namespace mxtool
