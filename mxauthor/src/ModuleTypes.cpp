#include "mxauthor/ModuleTypes.h"

namespace mxauthor {

const std::vector<ModuleType>& moduleTypes()
{
    static const std::vector<ModuleType> types = {{0, "supply"},
                                                  {1, "digital inputs"},
                                                  {2, "digital outputs"},
                                                  {3, "analog inputs"},
                                                  {4, "analog outputs"},
                                                  {5, "counters and encoders"},
                                                  {6, "serial interfaces"},
                                                  {7, "power measurement"},
                                                  {8, "couplers and special modules"},
                                                  {9, "safety"}};
    return types;
}

} // namespace mxauthor
