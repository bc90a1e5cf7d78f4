#pragma once

namespace workbench::status {

constexpr unsigned accepted = 202; ///< Work goes on after the answer.
constexpr unsigned badRequest = 400;
constexpr unsigned notFound = 404;
constexpr unsigned methodNotAllowed = 405;
constexpr unsigned conflict = 409;
constexpr unsigned unprocessable = 422; ///< The content of the request has errors.
constexpr unsigned internalError = 500;

} // namespace workbench::status
