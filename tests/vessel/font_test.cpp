// The measures of text, and the font that they are those of.
#include "drawing/font.h"
#include "drawing/sheet.h"
#include "test_paths.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>

namespace tarvane::vessel {
namespace {

// A file of a TrueType font, by what its tables say.
class FontFile {
  public:
    FontFile() {
        std::ifstream stream(std::string(TARVANE_SOURCE_DIR) +
                                 "/vessel/drawing/font/tarvane-drawing.ttf",
                             std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(stream), {});
        for (std::size_t i = 0; i < number(4, 2); ++i) {
            const std::size_t row = 12 + 16 * i;
            tables[bytes.substr(row, 4)] = number(row + 8, 4);
        }
    }
    std::size_t number(std::size_t at, std::size_t size) const {
        std::size_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
        return value;
    }
    std::size_t table(const std::string& name) const { return tables.at(name); }
    std::size_t units_per_em() const { return number(table("head") + 18, 2); }
    // The advance width of a glyph; the last of the table is that of all after it.
    std::size_t advance(std::size_t glyph) const {
        const std::size_t measured = number(table("hhea") + 34, 2);
        return number(table("hmtx") + 4 * std::min(glyph, measured - 1), 2);
    }
    // Each letter with its glyph, by the segments of format 4.
    std::map<std::size_t, std::size_t> letters() const {
        std::map<std::size_t, std::size_t> all;
        const std::size_t cmap = table("cmap");
        for (std::size_t i = 0; i < number(cmap + 2, 2); ++i) {
            const std::size_t at = cmap + number(cmap + 8 + 8 * i, 4);
            if (number(at, 2) != 4) continue;
            const std::size_t twice = number(at + 6, 2), ends = at + 14, starts = ends + twice + 2;
            for (std::size_t k = 0; k < twice; k += 2)
                for (std::size_t letter = number(starts + k, 2); letter <= number(ends + k, 2);
                     ++letter) {
                    if (letter == 0xFFFF) break;
                    const std::size_t delta = number(starts + twice + k, 2);
                    const std::size_t offset_at = starts + 2 * twice + k,
                                      offset = number(offset_at, 2);
                    const std::size_t glyph =
                        offset == 0
                            ? letter
                            : number(offset_at + offset + 2 * (letter - number(starts + k, 2)), 2);
                    if (glyph != 0) all[letter] = (glyph + delta) & 0xFFFF;
                }
        }
        return all;
    }
    // Its names, those of two bytes a letter without the first of each.
    std::string name(std::size_t wanted) const {
        const std::size_t at = table("name");
        for (std::size_t i = 0; i < number(at + 2, 2); ++i) {
            const std::size_t row = at + 6 + 12 * i;
            if (number(row + 6, 2) != wanted) continue;
            std::string text;
            for (const char c :
                 bytes.substr(at + number(at + 4, 2) + number(row + 10, 2), number(row + 8, 2)))
                if (c != '\0') text += c;
            return text;
        }
        return {};
    }

    std::string bytes;

  private:
    std::map<std::string, std::size_t> tables;
};

std::string decoded(std::string_view base64) {
    constexpr std::string_view SIGNS =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    std::uint32_t bits = 0;
    int held = 0;
    for (const char c : base64) {
        if (c == '=') break;
        bits = bits << 6 | static_cast<std::uint32_t>(SIGNS.find(c));
        held += 6;
        if (held < 8) continue;
        held -= 8;
        bytes += static_cast<char>(bits >> held & 0xFF);
    }
    return bytes;
}

std::string utf8(char32_t letter) {
    const auto part = [](char32_t value) { return static_cast<char>(value); };
    if (letter < 0x80) return {part(letter)};
    if (letter < 0x800) return {part(0xC0 | letter >> 6), part(0x80 | (letter & 0x3F))};
    return {part(0xE0 | letter >> 12), part(0x80 | (letter >> 6 & 0x3F)),
            part(0x80 | (letter & 0x3F))};
}

TEST(Font, DrawsWithTheWidthsItMeasuresWith) {
    const FontFile file;
    const double em = static_cast<double>(file.units_per_em());
    const std::map<std::size_t, std::size_t> letters = file.letters();
    EXPECT_EQ(letters.size(), font_widths().size());
    EXPECT_GT(letters.size(), 190U + 48U);
    for (const auto& [letter, glyph] : letters)
        EXPECT_DOUBLE_EQ(text_width(utf8(static_cast<char32_t>(letter)), em),
                         static_cast<double>(file.advance(glyph)))
            << letter;
}

TEST(Font, HasTheLettersOfDrawings) {
    const std::map<std::size_t, std::size_t> letters = FontFile().letters();
    for (std::size_t letter = 0x20; letter < 0x7F; ++letter)
        EXPECT_TRUE(letters.contains(letter)) << letter;
    for (std::size_t letter = 0xA0; letter < 0x100; ++letter)
        EXPECT_TRUE(letters.contains(letter)) << letter;
    for (const std::size_t letter :
         {0x3B1, 0x3B2, 0x394, 0x2032, 0x2076, 0x2192, 0x2212, 0x2264, 0x2265})
        EXPECT_TRUE(letters.contains(letter)) << letter;
}

TEST(Font, IsShippedAsItIsInItsFile) {
    const FontFile file;
    EXPECT_EQ(decoded(font_base64()), file.bytes);
    EXPECT_LT(file.bytes.size(), 25U * 1024U);
}

// Its licence wants another name, and to be in it.
TEST(Font, HasANameOfItsOwnAndItsLicence) {
    const FontFile file;
    EXPECT_TRUE(FONT_FAMILY.starts_with(file.name(1) + ','));
    for (const std::size_t number : {1U, 3U, 4U, 6U})
        for (const char* word : {"Bitstream", "Vera", "Arev", "DejaVu"})
            EXPECT_EQ(file.name(number).find(word), std::string::npos) << file.name(number);
    EXPECT_NE(file.name(0).find("Copyright (c) 2003 by Bitstream"), std::string::npos);
    EXPECT_NE(file.name(13).find("Permission is hereby granted"), std::string::npos);
}

TEST(Font, MeasuresLettersItDoesNotHaveAsWide) {
    EXPECT_DOUBLE_EQ(text_width("\xE4\xB8\xAD", 10), 10);
}

TEST(Font, BreaksNoEquation) {
    EXPECT_EQ(fitted_lines("face; t = 1.5", TEXT_SIZE, text_width("face; t = 1", TEXT_SIZE)),
              (std::vector<std::string>{"face;", "t = 1.5"}));
    EXPECT_EQ(fitted_lines("at 20 \xC2\xB0", TEXT_SIZE, text_width("at 20", TEXT_SIZE)),
              (std::vector<std::string>{"at", "20 \xC2\xB0"}));
    EXPECT_EQ(fitted_lines("Scale 1 : 2.5, in", TEXT_SIZE, text_width("Scale 1", TEXT_SIZE)),
              (std::vector<std::string>{"Scale", "1 : 2.5,", "in"}));
    EXPECT_EQ(unbroken_words("N: ci = .5. A"), (std::vector<std::string>{"N:", "ci = .5.", "A"}));
    EXPECT_EQ(fitted_lines(" = ", TEXT_SIZE, 100), std::vector<std::string>{" = "});
}

TEST(Font, MeasuresWithItsOwnWidths) {
    EXPECT_DOUBLE_EQ(text_width("0", 2048), 1303);
    EXPECT_DOUBLE_EQ(text_width("\xC3\x98"
                                "1 : 5",
                                2048),
                     1612 + 1303 + 651 + 690 + 651 + 1303);
    EXPECT_DOUBLE_EQ(text_width("\xE2\x89\xA4", 2048), 1716);
}

} // namespace
} // namespace tarvane::vessel
