#include <text/Sha256.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// The examples of FIPS 180-2: no bytes, one block, two blocks.
TEST(Sha256, HasTheSumsOfTheStandard)
{
    EXPECT_EQ(text::sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(text::sha256("abc"),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(text::sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

TEST(Sha256, IncludesBytesOfZero)
{
    // head -c 2 /dev/zero | sha256sum
    EXPECT_EQ(text::sha256(std::string(2, '\0')),
              "96a296d224f285c67bee93c30f8a309157f0daa35dc5b87e410b78630a09cfc7");
}

} // namespace
