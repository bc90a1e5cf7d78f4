#pragma once

namespace devices::database {

/// Returns for how many seconds a change waits for other writers: the value of the environment
/// variable `DEVICE_DATABASE_WAIT` (0 to 3600), else 30.
unsigned secondsToWait();

} // namespace devices::database
