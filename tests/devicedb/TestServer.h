#pragma once

#include <string>

namespace testkit {

/// Returns the connection string of the server that tests/devicedb/with-postgresql runs. Throws
/// when there is none.
std::string testServer();

/// Returns that of its pooler, which names no database. Throws when there is none.
std::string testPooler();

} // namespace testkit
