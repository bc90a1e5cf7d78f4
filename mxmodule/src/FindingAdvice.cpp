#include "FindingAdvice.h"

namespace mxmodule {

void giveAdvice(Finding& finding, Advice what)
{
    finding.advice = what;
    switch (what) {
    case Advice::ReadAsRaw:
        finding.hint = "they may be the raw parameter image";
        break;
    case Advice::ReadAsModbus:
        finding.hint = "they may be the module's Modbus registers";
        break;
    case Advice::ReadAsValues:
        finding.hint = "it is to be read as a file of values";
        break;
    case Advice::ReadAsImage:
        finding.hint = "it is to be read as an image";
        break;
    default:
        finding.hint.clear();
    }
}

} // namespace mxmodule
