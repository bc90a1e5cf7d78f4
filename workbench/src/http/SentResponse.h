#pragma once

#include "http/Response.h"

#include <microhttpd.h>

#include <memory>

namespace workbench {

/// Releases a response of the HTTP library.
struct DestroyResponse
{
    void operator()(MHD_Response* response) const { MHD_destroy_response(response); }
};

/// A response as the HTTP library sends it.
struct SentResponse
{
    unsigned status = 0;
    std::unique_ptr<MHD_Response, DestroyResponse> content;
};

/// Returns the response with every header: those that the status asks for, and those that keep the
/// page apart from others. The compressed body is sent if there is one and the client `takesGzip`.
/// Throws `std::bad_alloc`.
SentResponse sentResponse(Response response, bool takesGzip);

/// Returns whether the value of a field Accept-Encoding includes gzip.
bool includesGzip(const std::string& acceptEncoding);

} // namespace workbench
