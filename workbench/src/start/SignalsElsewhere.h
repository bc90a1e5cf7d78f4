#pragma once

#include <csignal>

namespace workbench {

/// While an object exists, its thread gets no signals; neither do the threads that it starts, also
/// afterwards. In this way those signals reach the program's own threads.
class SignalsElsewhere
{
public:
    SignalsElsewhere();
    ~SignalsElsewhere();
    SignalsElsewhere(const SignalsElsewhere&) = delete;
    SignalsElsewhere& operator=(const SignalsElsewhere&) = delete;

private:
    sigset_t before;
};

} // namespace workbench
