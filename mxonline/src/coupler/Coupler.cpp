#include "mxonline/Coupler.h"

#include "coupler/Apply.h"
#include "coupler/CouplerContent.h"
#include "coupler/ModuleComparison.h"
#include "coupler/UsablePlan.h"

#include <utility>

namespace mxonline {

Coupler::Content::Content(const mxstation::Plan& planned, const Target& address,
                          mxmodule::Observer* toldOf)
    : observer(toldOf),
      plan(requireUsable(planned, address)),
      target(address),
      modules(moduleRegisters(plan)),
      client(target, *plan.modbus, toldOf),
      parameters(modules, *plan.modbus)
{}

Coupler::Coupler(const mxstation::Plan& plan, const Target& target, mxmodule::Observer* observer)
    : content(std::make_unique<Content>(plan, target, observer))
{}

Coupler::~Coupler() = default;
Coupler::Coupler(Coupler&&) noexcept = default;
Coupler& Coupler::operator=(Coupler&&) noexcept = default;

CouplerState Coupler::read()
{
    return content->parameters.read(content->client);
}

CouplerDifference Coupler::difference()
{
    return compareModules(content->plan, content->modules, content->target, read());
}

ApplyReport Coupler::apply(const CouplerDifference& confirmed)
{
    return Apply(*content).run(confirmed);
}

Traffic Coupler::traffic() const
{
    return content->client.traffic();
}

} // namespace mxonline
