#include "diff/Differences.h"

namespace mxauthor {

void Differences::add(Effect effect, const char* area, const std::string& subject,
                      const std::string& text)
{
    all.push_back({effect, false, area, subject, text});
}

void Differences::addBreakingImage(const char* area, const std::string& subject,
                                   const std::string& text)
{
    all.push_back({Effect::Breaking, true, area, subject, text});
}

void Differences::changed(Effect effect, const char* area, const std::string& subject,
                          const std::string& what, const std::string& before,
                          const std::string& after)
{
    if (before != after) {
        add(effect, area, subject, what + " " + before + " becomes " + after);
    }
}

void Differences::changedBreakingImage(const char* area, const std::string& subject,
                                       const std::string& what, const std::string& before,
                                       const std::string& after)
{
    if (before != after) {
        addBreakingImage(area, subject, what + " " + before + " becomes " + after);
    }
}

} // namespace mxauthor
