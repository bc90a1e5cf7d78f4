#include "http/SentResponse.h"

#include <gmock/gmock.h>

namespace {

using workbench::includesGzip;
using workbench::Response;
using workbench::sentResponse;
using workbench::SentResponse;

std::string headerOf(const SentResponse& sent, const char* name)
{
    const char* const value = MHD_get_response_header(sent.content.get(), name);
    return value == nullptr ? "" : value;
}

Response textOf(std::size_t size)
{
    Response response;
    response.body.assign(size, 'a');
    return response;
}

TEST(SentResponse, keepsThePageApartFromOthers)
{
    const SentResponse sent = sentResponse(textOf(1), true);
    EXPECT_EQ(headerOf(sent, "Content-Type"), "application/json");
    EXPECT_EQ(
        headerOf(sent, "Content-Security-Policy"),
        "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data: blob:; "
        "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'; "
        "require-trusted-types-for 'script'");
    EXPECT_EQ(headerOf(sent, "X-Content-Type-Options"), "nosniff");
    EXPECT_EQ(headerOf(sent, "Referrer-Policy"), "no-referrer");
    EXPECT_EQ(headerOf(sent, "Cache-Control"), "no-store");
    EXPECT_EQ(headerOf(sent, "Cross-Origin-Opener-Policy"), "same-origin");
    EXPECT_EQ(headerOf(sent, "Cross-Origin-Resource-Policy"), "same-origin");
    EXPECT_EQ(headerOf(sent, "Access-Control-Allow-Origin"), "");
}

// Compressing would take longer than a text takes on the same computer.
TEST(SentResponse, sendsWhatIsCompressedAlready)
{
    Response asset = textOf(5000);
    EXPECT_EQ(headerOf(sentResponse(asset, true), "Content-Encoding"), "");
    asset.gzippedBody = "as a gzip file";
    EXPECT_EQ(headerOf(sentResponse(asset, true), "Content-Encoding"), "gzip");
    EXPECT_EQ(headerOf(sentResponse(asset, false), "Content-Encoding"), "");
}

TEST(SentResponse, saysWhatTheStatusAsksFor)
{
    Response response;
    response.status = 405;
    response.allowed = "GET, PUT";
    EXPECT_EQ(headerOf(sentResponse(response, true), "Allow"), "GET, PUT");
    response.status = 401;
    EXPECT_EQ(headerOf(sentResponse(response, true), "WWW-Authenticate"), "Bearer");
    response.status = 503;
    EXPECT_EQ(headerOf(sentResponse(response, true), "Retry-After"), "1");
}

// A name of a file is no header of its own, whatever it contains.
TEST(SentResponse, namesAFile)
{
    Response response;
    response.fileName = "a b\"\r\nX: \xC3\xA4-1.csv";
    EXPECT_EQ(headerOf(sentResponse(response, true), "Content-Disposition"),
              "attachment; filename*=UTF-8''a%20b%22%0D%0AX%3A%20%C3%A4-1.csv");
}

TEST(SentResponse, readsWhatIsAccepted)
{
    for (const char* const value :
         {"gzip", "deflate, gzip", "GZIP", "gzip;q=0.5", "br , gzip ; q=1"}) {
        EXPECT_TRUE(includesGzip(value)) << value;
    }
    for (const char* const value : {"", "br", "xgzip", "gzip;q=0", "gzip; q=0.000", ";", ","}) {
        EXPECT_FALSE(includesGzip(value)) << value;
    }
}

} // namespace
