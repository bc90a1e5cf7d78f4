#pragma once

#include <string>

namespace testkit {

/// Returns the name of an empty database of the test server that is not in use; the pooler already
/// has several connections to it. Throws when there is no server.
std::string takePooledDatabase();

/// Lets a later test use the database, which costs far less than a new one.
void giveBackPooledDatabase(const std::string& name);

} // namespace testkit
