// Random texts, values and lengths: the renderer against its rules taken word for word, and no column
// touched outside the texts passed.
#include "literal_renderer.h"
#include "report_fixture.h"

#include <bit>
#include <cmath>
#include <limits>
#include <memory>
#include <random>

namespace tarvane::report_test {
namespace {

class RandomText : public ReportTest {
  protected:
    RandomText() { report_to_store(); }

    std::uint32_t below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(random()) % limit;
    }

    // Texts of the characters that the rules know, blanks most of all.
    std::string text(std::size_t length, std::string_view alphabet) {
        std::string result(length, ' ');
        const std::size_t used = below(static_cast<std::uint32_t>(length) + 1);
        for (std::size_t i = 0; i < used; ++i) {
            if (below(3) != 0)
                result[i] = alphabet[below(static_cast<std::uint32_t>(alphabet.size()))];
        }
        return result;
    }

    Real value() {
        switch (below(5)) {
        case 0:
            return std::bit_cast<Real>(static_cast<std::uint32_t>(random()));
        case 1:
            return static_cast<Real>(below(2000000)) / 1000.0f;
        case 2:
            return static_cast<Real>(static_cast<Int>(below(4001)) - 2000) / 10000.0f;
        case 3:
            return static_cast<Real>(static_cast<Int>(below(400)) - 200);
        default:
            return std::pow(10.0f, static_cast<Real>(below(2000)) / 100.0f - 10.0f);
        }
    }

    // Runs a routine on a copy that has exactly the text's length, between guards.
    template <typename Routine>
    static std::string guarded(const std::string& text, Routine routine) {
        const std::size_t length = text.size();
        const auto exact = std::make_unique<char[]>(length + 1);
        std::copy(text.begin(), text.end(), exact.get());
        exact[length] = '\x7F';
        routine(exact.get(), static_cast<Int>(length));
        EXPECT_EQ(exact[length], '\x7F') << "wrote behind \"" << text << "\"";
        return {exact.get(), length};
    }

    std::mt19937 random{1948};
};

constexpr char SIGN_CHARACTERS[] = "@@@#0123456789./-^,=()ab  \xB2\xB3\xBD|\0";
constexpr std::string_view SIGNS(SIGN_CHARACTERS, sizeof SIGN_CHARACTERS - 1);
constexpr std::string_view POINTS("..--  0519 ");
constexpr std::string_view SPECIAL("\xB2\xB3\xBD\xA9\xB0\xF8"
                                   "ab   ");

TEST_F(RandomText, FilledTemplates) {
    for (int i = 0; i < 40000 && !HasFailure(); ++i) {
        DECIMAL_COMMA = below(2) != 0;
        std::string source = text(120, SIGNS);
        std::vector<Real> values;
        for (int k = 0; k < 6; ++k)
            values.push_back(value());
        Text<120> result(source);
        FILL_TEMPLATE(result, values[0], values[1], values[2], values[3], values[4], values[5]);
        std::string expected = source;
        literal::fill(expected, values, DECIMAL_COMMA);
        EXPECT_EQ(result.view(), expected) << source;
    }
}

TEST_F(RandomText, SingleNumbers) {
    for (int i = 0; i < 30000 && !HasFailure(); ++i) {
        const char digit = "012345678x"[below(10)];
        const Real v = value();
        std::string expected = std::string(" = @") + digit;
        expected.resize(120, ' ');
        Text<120> result(expected);
        FILL_TEMPLATE(result, v, v, v, v, v, v);
        literal::fill(expected, {v, v, v, v, v, v}, false);
        EXPECT_EQ(result.view(), expected) << v << " @" << digit;
    }
}

TEST_F(RandomText, Cleaning) {
    for (int i = 0; i < 40000 && !HasFailure(); ++i) {
        const std::string source = text(below(30), "\xB2\xB3\xBD^,// ab");
        std::string expected = source;
        literal::clean(expected);
        EXPECT_EQ(guarded(source, CLEAN_TEMPLATE), expected) << source;
    }
}

TEST_F(RandomText, Tidying) {
    for (int i = 0; i < 40000 && !HasFailure(); ++i) {
        DECIMAL_COMMA = below(2) != 0;
        const std::string source = text(below(40), POINTS);
        std::string expected = source;
        literal::tidy(expected, DECIMAL_COMMA);
        EXPECT_EQ(guarded(source, TIDY_NUMBERS), expected) << source;
        expected = source;
        literal::commas(expected, DECIMAL_COMMA);
        EXPECT_EQ(guarded(source, REPLACE_DECIMALS_WITH_COMMAS), expected) << source;
    }
}

TEST_F(RandomText, PlainCharacters) {
    for (int i = 0; i < 40000 && !HasFailure(); ++i) {
        const std::string source = text(below(60), below(8) == 0 ? "\xB2\xB3|ab    " : SPECIAL);
        std::string expected = source;
        literal::expand(expected);
        EXPECT_EQ(guarded(source, EXPAND_SPECIAL_CHARS), expected) << source;
    }
}

TEST_F(RandomText, Fitting) {
    for (int i = 0; i < 40000 && !HasFailure(); ++i) {
        const std::string source = text(below(40), "a b c   ");
        const std::string target(below(40), '?');
        const Int mode = static_cast<Int>(below(8)) - 1;
        std::string expected_source = source, expected = target;
        literal::fit(expected_source, expected, mode);
        std::string result_source;
        const std::string result = guarded(target, [&](char* to, Int to_len) {
            result_source = guarded(source, [&](char* from, Int from_len) {
                FIT_TO_LINE(from, from_len, to, to_len, mode);
            });
        });
        EXPECT_EQ(result, expected) << source << "| mode " << mode;
        EXPECT_EQ(result_source, expected_source) << source << "| mode " << mode;
    }
}

TEST_F(RandomText, LinesOfAnyLength) {
    for (int i = 0; i < 20000 && !HasFailure(); ++i) {
        FLAGS_mp_IINOSPECIAL = static_cast<Int>(below(2));
        SET_LINE_STYLE(static_cast<Int>(below(3)), static_cast<Int>(random()), 0, 0, 0, 0);
        const std::string source = text(below(200), SIGNS);
        const std::string blank(source.size(), ' ');
        EXPECT_EQ(guarded(source, WRITE_LINE), blank);
        std::string line = source;
        if (FLAGS_mp_IINOSPECIAL == 1) literal::expand(line);
        std::string expected = "    " + line.substr(0, 100) + " 0 0 0 0 0 0";
        expected += '\0';
        expected.resize(125, ' ');
        literal::tidy(expected, false);
        EXPECT_EQ(record(LINE_COUNT), expected);
        EXPECT_EQ(guarded(source, WRITE_UNDERLINED), blank);
        EXPECT_EQ(guarded(source, WRITE_BLANK_LINE), blank);
    }
}

TEST_F(RandomText, NegativeLengthsCountAsNone) {
    char untouched[] = "x./ \xB2";
    const std::string before = untouched;
    for (const Int length : {0, -1, std::numeric_limits<Int>::min()}) {
        for (const auto routine :
             {CLEAN_TEMPLATE, TIDY_NUMBERS, REPLACE_DECIMALS_WITH_COMMAS, EXPAND_SPECIAL_CHARS,
              WRITE_LINE, WRITE_BLANK_LINE, WRITE_UNDERLINED, NUL_TO_BLANK, TO_UPPER}) {
            DECIMAL_COMMA = true;
            routine(untouched, length);
            EXPECT_EQ(untouched, before);
            if (length == 0) routine(nullptr, 0);
        }
        for (const Int mode : {0, 3})
            FIT_TO_LINE(untouched, length, untouched, length, mode);
        EXPECT_EQ(untouched, before);
    }
}

} // namespace
} // namespace tarvane::report_test
