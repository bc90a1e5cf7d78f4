#include "diff/DiffOutput.h"

#include "Diagnostic.h"

#include <text/JsonText.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using mxauthor::Difference;
using mxauthor::Effect;

const char* colourOf(Effect effect)
{
    if (effect == Effect::Breaking) {
        return "1;31";
    }
    return effect == Effect::Compatible ? "1;32" : "2";
}

std::string differenceLine(const Difference& difference, bool coloured)
{
    const std::string effect = fmt::format("{:<10}", mxauthor::effectName(difference.effect));
    const std::string shown = painted(effect, colourOf(difference.effect), coloured);
    const std::string& where = difference.subject.empty() ? difference.area : difference.subject;
    return fmt::format("{}  {}: {}\n", shown, text::forTerminal(where),
                       text::forTerminal(difference.text));
}

std::string verdict(const mxauthor::Comparison& comparison, const std::string& before,
                    const std::string& after)
{
    return fmt::format("a parameter image stored for {} stays valid for {}: {}, because {}\n",
                       text::forTerminal(before), text::forTerminal(after),
                       comparison.imageStaysValid ? "yes" : "no",
                       text::forTerminal(comparison.because));
}

text::Json differenceJson(const Difference& difference)
{
    return {{"effect", mxauthor::effectName(difference.effect)},
            {"breaks_parameter_image", difference.breaksImage},
            {"area", difference.area},
            {"subject", text::toUtf8(difference.subject)},
            {"text", text::toUtf8(difference.text)}};
}

} // namespace

std::string diffText(const mxauthor::Comparison& comparison, const std::string& before,
                     const std::string& after, bool coloured)
{
    std::string text;
    for (const Effect effect : {Effect::Breaking, Effect::Compatible, Effect::Cosmetic}) {
        for (const Difference& difference : comparison.differences) {
            if (difference.effect == effect) {
                text += differenceLine(difference, coloured);
            }
        }
    }
    return text + verdict(comparison, before, after);
}

text::Json diffJson(const mxauthor::Comparison& comparison, const std::string& before,
                    const std::string& after)
{
    return {{"schema", text::jsonSchema("mxtool.diff", 1)},
            {"before", text::toUtf8(before)},
            {"after", text::toUtf8(after)},
            {"same", comparison.differences.empty()},
            {"differences", text::listJson(comparison.differences, differenceJson)},
            {"parameter_image_stays_valid", comparison.imageStaysValid},
            {"because", text::toUtf8(comparison.because)}};
}

} // namespace mxtool
