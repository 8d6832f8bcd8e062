// SPDX-License-Identifier: Apache-2.0
#include "standard/decimal.h"
#include "tests/support/comma_locale.h"
#include "text/numbers.h"

#include <zantrel/text/stream_text_out.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

using namespace Zantrel::Standard;
using namespace Zantrel::Text;

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

std::string Printed(double value, int precision = 17) {
    char text[NumberRoom];
    return {text, PrintDouble(text, value, precision)};
}

/// number / 2^power, exactly.
std::string Halved(std::string number, int power) {
    std::size_t places = 0;
    for (; power > 0; --power, ++places) {
        number += '0';
        int rest = 0;
        for (char& digit : number) {
            int const value = 10 * rest + (digit - '0');
            digit = static_cast<char>('0' + value / 2);
            rest = value % 2;
        }
    }
    return number + "e-" + std::to_string(places);
}

} // namespace

TEST(Numbers, AreParsedWhereTheyAreTheWholeText) {
    using Double = std::pair<char const*, double>;
    for (auto const& [text, value] :
         {Double{"0", 0.0}, Double{"-1.5", -1.5}, Double{"+2", 2.0}, Double{" \t\r\n7 ", 7.0},
          Double{"1e3", 1000.0}, Double{"1E-2", 0.01}, Double{".5", 0.5}, Double{"5.", 5.0},
          Double{"INF", Infinity}, Double{"-inf", -Infinity}, Double{"+Inf", Infinity},
          Double{"9007199254740993", 0x1p53}, Double{"900719925474099.3001", 900719925474099.3001},
          Double{"-0.0000000000000000", -0.0}, Double{"5e-324", 5e-324},
          Double{"1.7976931348623157e308", std::numeric_limits<double>::max()}}) {
        EXPECT_EQ(ParseDouble(text), value) << text;
    }
    EXPECT_TRUE(std::isnan(ParseDouble(" nAn ").value_or(0)));
    for (char const* text :
         {"",     " ",     "x",      "1x",     "1 2",      "1,5",  "+-1",        "--1",
          "+",    "-",     ".",      "e5",     "1e",       "0x10", "infinity",   "nan(1)",
          "-nan", "1e999", "-1e999", "1e-999", "\xC2\xA0", "1\v",  "1.2345678:", "1234567.123x567"}) {
        EXPECT_FALSE(ParseDouble(text)) << text;
    }
    using Integer = std::pair<char const*, std::optional<std::int32_t>>;
    for (auto const& [text, value] :
         {Integer{"0", 0}, Integer{"-7", -7}, Integer{"+12", 12}, Integer{" 5\n", 5}, Integer{"007", 7},
          Integer{"2147483647", 2147483647}, Integer{"-2147483648", std::numeric_limits<std::int32_t>::min()},
          Integer{"", {}}, Integer{"2147483648", {}}, Integer{"-2147483649", {}}, Integer{"1.0", {}},
          Integer{"1e3", {}}, Integer{"+-1", {}}, Integer{"+", {}}, Integer{"- 1", {}}, Integer{"0x1", {}},
          Integer{"1 1", {}}}) {
        EXPECT_EQ(ParseInteger(text), value) << text;
    }
    using Flag = std::pair<char const*, std::optional<bool>>;
    for (auto const& [text, value] :
         {Flag{"true", true}, Flag{"True", true}, Flag{"1", true}, Flag{" true\n", true},
          Flag{"false", false}, Flag{"False", false}, Flag{"0", false}, Flag{"TRUE", {}}, Flag{"yes", {}},
          Flag{"", {}}, Flag{"01", {}}, Flag{"truefalse", {}}}) {
        EXPECT_EQ(ParseBool(text), value) << text;
    }
}

TEST(Numbers, AreTheDoublesNearestToTheirDecimalsWhoeverReadsThem) {
    std::string const zeros(5000, '0');
    using Row = std::pair<std::string, std::optional<double>>;
    for (auto const& [text, value] :
         {Row{"-0", -0.0}, Row{"0e99999999999999999999", 0.0}, Row{"9007199254740993", 0x1p53},
          Row{"9007199254740995", 0x1.0000000000002p53},
          Row{"9007199254740993." + zeros + "1", 0x1.0000000000001p53}, Row{"0." + zeros + "1e5001", 1.0},
          Row{"1" + zeros + "e-5000", 1.0}, Row{"1E+5", 1e5},
          Row{"2.2250738585072011e-308", 0x0.fffffffffffffp-1022}, Row{"2.4703282292062328e-324", 0x1p-1074},
          // Half way between two doubles, to the last of 768 digits.
          Row{Halved("18014398509481983", 1075), 0x1p-1021}, Row{"2.4703282292062327e-324", {}},
          Row{"1.7976931348623158079e308", 0x1.fffffffffffffp1023}, Row{"1.797693134862315808e308", {}},
          Row{"1e99999999999999999999", {}}, Row{"1e-99999999999999999999", {}}, Row{"", {}}, Row{"-", {}},
          Row{".", {}}, Row{"1e", {}}, Row{"1e+", {}}, Row{"1.2.3", {}}, Row{"--1", {}}, Row{"+1", {}}}) {
        EXPECT_EQ(ParseDecimal(text), value) << text;
        EXPECT_EQ(ParseDecimalByDivision(text), value) << text;
    }
    std::mt19937_64 random(20170217);
    for (int count = 0; count < 20000; ++count) {
        char text[64];
        int const digits = static_cast<int>(1 + random() % 20);
        std::snprintf(text, sizeof text, "%.*e", digits,
                      std::bit_cast<double>(random() & ~(std::uint64_t{1} << 62)));
        ASSERT_EQ(ParseDecimalByDivision(text), ParseDecimal(text)) << text;
    }
}

TEST(Numbers, PrintsDoublesWithTheDigitsAskedFor) {
    using Row = std::tuple<double, int, char const*>;
    for (auto const& [value, precision, text] :
         {Row{0.0, 17, "0"}, Row{-0.0, 17, "-0"}, Row{0.1, 17, "0.10000000000000001"}, Row{100.0, 17, "100"},
          Row{1e16, 17, "10000000000000000"}, Row{1e17, 17, "1e+17"}, Row{1e-4, 17, "0.0001"},
          Row{1e-5, 17, "1.0000000000000001e-05"}, Row{-2.5, 17, "-2.5"}, Row{1.0 / 3, 3, "0.333"},
          Row{1.0 / 3, -4, "0.3"}, Row{0.5, 1000, "0.5"}, Row{Infinity, 17, "INF"},
          Row{-Infinity, 17, "-INF"}, Row{-std::nan(""), 17, "NaN"}}) {
        EXPECT_EQ(Printed(value, precision), text);
    }
}

TEST(Numbers, PrintsWhatTheLanguagePrintsAndReadsItBackBitForBitInAnyLocale) {
    TestSupport::CommaLocale const locale;
    std::mt19937_64 random(20160402);
    auto const check = [](double value) {
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.17g", value);
        ASSERT_EQ(Printed(value), expected);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(ParseDouble(Printed(value)).value()),
                  std::bit_cast<std::uint64_t>(value));
    };
    for (int count = 0; count < 30000; ++count) {
        double const anything = std::bit_cast<double>(random());
        check(std::isfinite(anything) ? anything : 0.0);
        check(static_cast<double>(random() % 100000000) / std::pow(10.0, static_cast<double>(random() % 9)));
        check(std::ldexp(static_cast<double>(random() >> 11),
                         -static_cast<int>(random() % 68))); // ties among them
    }
    for (double border = 1e-6; border < 1e19; border *= 10) {
        check(border);
        check(std::nextafter(border, 0.0));
        check(std::nextafter(border, Infinity));
    }
}

TEST(Numbers, StreamAsPlainTextInAnyLocale) {
    TestSupport::CommaLocale const locale;
    MStreamTextOut<char> narrow;
    narrow << true << 18446744073709551615ull << false;
    EXPECT_EQ(narrow.str(), "true18446744073709551615false");
    MStreamTextOut<wchar_t> wide;
    wide << std::numeric_limits<std::int32_t>::min() << true << 1000000ull << std::int32_t{1234567};
    EXPECT_EQ(wide.str(), L"-2147483648true10000001234567");
}
