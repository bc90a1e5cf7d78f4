#include "station/TimeOption.h"

#include "Diagnostic.h"

#include <mxonline/TimeText.h>

namespace mxtool {

std::chrono::milliseconds timeOfOption(const std::string& option, const std::string& text)
{
    try {
        const std::chrono::milliseconds time = mxonline::timeOf(text);
        if (time.count() == 0) {
            throw Failure(Origin::Request, "", "the time is 0, expected at least 1ms");
        }
        return time;
    } catch (const Failure& failure) {
        Finding finding = failure.reason();
        finding.place = option;
        throw Failure(finding);
    }
}

} // namespace mxtool
