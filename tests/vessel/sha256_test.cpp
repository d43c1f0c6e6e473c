// SHA-256 against the examples of FIPS 180-4 and the lengths around the end of a block.
#include "values/sha256.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvane::vessel {

namespace {

TEST(Sha256, Examples) {
    EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(sha256(std::string(1000000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, LengthsAroundABlock) {
    const struct {
        std::size_t length;
        const char* digits;
    } rows[] = {
        {55, "4360c08f65b8587805be341bb5578175f084778be8516ca7d454bb777c392817"},
        {56, "122c3722de62b26d87b9c9052858242407aa9bf046f765b4f068b91aac77810d"},
        {63, "5d09c64d021c3c4d56de5e9f1c9b7ded064a64b1591aaf9822365d6b706d7538"},
        {64, "c474a957abb73dee49898fdd83f1c6bbee90ea6044f30087a106653afd613297"},
        {65, "943e1cd0c8ab00154058f8f024d5973d57ae038c527c2ec2abc72e47d8c4958c"},
        {119, "4516fb281cdc54c9046b4e7b9a9edad6f6295a4af608dd244c188d4a07ec8ecc"},
        {120, "471ada1965ced8f56030ac56996f2cd45c98640c623965cfc13e5028b35524d9"},
        {128, "e1260c537123365ba7753fa0d09d6137a8d82a06c4f558be55751bdaa9ebc61b"},
    };
    for (const auto& [length, digits] : rows)
        EXPECT_EQ(sha256(std::string(length, '\xE9')), digits) << length;
}

} // namespace

} // namespace tarvane::vessel
