#pragma once

#include <mxauthor/TextForm.h>
#include <mxmodule/Finding.h>
#include <mxmodule/Observer.h>

#include <string>
#include <vector>

namespace mxmodule {

/// Builds the mx file that `source`, the text of the file `name`, describes. Files named in it are
/// looked for in the directory of `name` and reported to `observer`, which may be null.
mxauthor::BuildResult buildText(const std::string& name, const std::string& source,
                                Observer* observer);

/// The same with the files read by `read`, of which nothing is reported.
mxauthor::BuildResult buildText(const std::string& name, const std::string& source,
                                const mxauthor::FileReader& read);

/// Returns `errors` in `source`, the text of the file `name`. Throws a `Failure` when there are
/// several and none of the keys is one of the text form: it is another text then, not `expected`.
std::vector<Finding> errorsInText(const std::string& name, const std::string& source,
                                  const std::vector<mxauthor::SourceError>& errors,
                                  const char* expected);

/// Returns the bytes of `built`, which has no errors.
std::vector<char> bytesOf(const mxauthor::BuildResult& built);

} // namespace mxmodule
