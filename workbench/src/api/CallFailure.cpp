#include "api/CallFailure.h"

namespace workbench {

CallFailure::CallFailure(unsigned wanted, const std::string& text, const std::string& hint)
    : httpStatus(wanted),
      all({{mxmodule::Severity::Error, "", text, hint, mxmodule::Origin::Request}})
{}

} // namespace workbench
