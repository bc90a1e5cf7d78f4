#include "http/SentResponse.h"

#include <Poco/String.h>
#include <Poco/StringTokenizer.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>
#include <new>
#include <utility>

namespace workbench {

namespace {

// Everything that the page needs comes from this server, none of it from a text in the page.
constexpr std::array<std::pair<const char*, const char*>, 7> headersOfAll = {{
    {"Content-Security-Policy",
     "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data: blob:; "
     "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'; "
     "require-trusted-types-for 'script'"},
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "DENY"},
    {"Referrer-Policy", "no-referrer"},
    {"Cache-Control", "no-store"},
    {"Cross-Origin-Opener-Policy", "same-origin"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
}};

// The body is freed together with the response.
std::unique_ptr<MHD_Response, DestroyResponse> contentOf(std::string body)
{
    auto kept = std::make_unique<std::string>(std::move(body));
    std::unique_ptr<MHD_Response, DestroyResponse> content(
        MHD_create_response_from_buffer_with_free_callback_cls(
            kept->size(), kept->data(), [](void* text) { delete static_cast<std::string*>(text); },
            kept.get()));
    if (content == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(kept.release());
    return content;
}

void addHeader(MHD_Response& response, const char* name, const std::string& value)
{
    if (MHD_add_response_header(&response, name, value.c_str()) != MHD_YES) {
        throw std::bad_alloc();
    }
}

// A file name in a header (RFC 8187): letters, digits and a few others, the rest as %XX.
std::string escapedName(const std::string& fileName)
{
    constexpr const char* digits = "0123456789ABCDEF";
    constexpr unsigned nibble = 4;
    const std::string plain = "-._~";
    std::string escaped;
    for (const char character : fileName) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80 &&
            (std::isalnum(byte) != 0 || plain.find(character) != std::string::npos)) {
            escaped += character;
        } else {
            escaped += {'%', digits[byte >> nibble], digits[byte & 0xF]};
        }
    }
    return escaped;
}

void addHeadersOfStatus(MHD_Response& content, const Response& response)
{
    if (response.status == 401) {
        addHeader(content, "WWW-Authenticate", "Bearer");
    } else if (response.status == 405) {
        addHeader(content, "Allow", response.allowed);
    } else if (response.status == 503) {
        addHeader(content, "Retry-After", "1");
    }
}

} // namespace

bool includesGzip(const std::string& acceptEncoding)
{
    const Poco::StringTokenizer items(acceptEncoding, ",", Poco::StringTokenizer::TOK_TRIM);
    return std::any_of(items.begin(), items.end(), [](const std::string& item) {
        const Poco::StringTokenizer parts(item, ";", Poco::StringTokenizer::TOK_TRIM);
        return parts.count() > 0 && Poco::icompare(parts[0], "gzip") == 0 &&
               (parts.count() == 1 || parts[1].find_first_of("123456789") != std::string::npos);
    });
}

SentResponse sentResponse(Response response, bool takesGzip)
{
    if (response.type.empty()) {
        response.type = "application/json";
    }
    const bool isCompressed = takesGzip && !response.gzippedBody.empty();
    SentResponse sent;
    sent.status = response.status;
    sent.content = contentOf(std::move(isCompressed ? response.gzippedBody : response.body));
    for (const auto& [name, value] : headersOfAll) {
        addHeader(*sent.content, name, value);
    }
    addHeader(*sent.content, "Content-Type", response.type);
    if (isCompressed) {
        addHeader(*sent.content, "Content-Encoding", "gzip");
    }
    if (!response.fileName.empty()) {
        addHeader(*sent.content, "Content-Disposition",
                  "attachment; filename*=UTF-8''" + escapedName(response.fileName));
    }
    addHeadersOfStatus(*sent.content, response);
    return sent;
}

} // namespace workbench
