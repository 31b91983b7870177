// SPDX-License-Identifier: MIT
#include "Helpers/NumberText.h"

#include "Tests/Support/CommaLocale.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <iostream>
#include <limits>
#include <locale>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{

using tvx::NumberText;
using tvx::ReadDouble;
using tvx::ReadInt;
using tvx::test::CommaLocale;
using IntLimits = std::numeric_limits<std::int32_t>;
using DoubleLimits = std::numeric_limits<double>;

std::uint64_t BitsOf(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

double DoubleOf(std::uint64_t bits)
{
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::string Printed(const char* format, int precision, long double value)
{
    std::array<char, 1000> buffer{};
    std::snprintf(buffer.data(), buffer.size(), format, precision, value);
    return buffer.data();
}

// What the C library says. It is the reference, so these need the C locale.
std::string ExpectedText(double value)
{
    std::array<char, 108> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%Lg", static_cast<long double>(value));
    return buffer.data();
}

std::int32_t ExpectedInt(const std::string& text)
{
    const long long value = std::strtoll(text.c_str(), nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long long>(value, IntLimits::min(), IntLimits::max()));
}

void ExpectSameDouble(const std::string& text)
{
    ASSERT_EQ(BitsOf(ReadDouble(text.c_str())), BitsOf(std::atof(text.c_str()))) << "read from '" << text << "'";
}

void ExpectSameInt(const std::string& text)
{
    ASSERT_EQ(ReadInt(text.c_str()), ExpectedInt(text)) << "read from '" << text << "'";
}

// Both ways at once: the text of a number, and what that text reads as.
void ExpectSameText(double value)
{
    const NumberText text(value);
    ASSERT_EQ(text.Get(), ExpectedText(value)) << "bits " << std::hex << BitsOf(value);
    ASSERT_EQ(text.GetLength(), std::strlen(text.Get()));
    ExpectSameDouble(text.Get());
}

void ExpectSameTextAround(double value)
{
    for (const double number : {value, std::nextafter(value, -HUGE_VAL), std::nextafter(value, HUGE_VAL)})
    {
        ExpectSameText(number);
        ExpectSameText(-number);
    }
}

std::string Zeros(std::size_t count)
{
    return std::string(count, '0');
}

std::vector<double> EdgeValues()
{
    std::vector<double> values{0.0,
                               DoubleLimits::min(),
                               DoubleLimits::max(),
                               DoubleLimits::denorm_min(),
                               DoubleLimits::infinity(),
                               DoubleLimits::quiet_NaN(),
                               DoubleLimits::signaling_NaN(),
                               DoubleLimits::epsilon(),
                               DoubleOf(0x000F'FFFF'FFFF'FFFF),
                               0.1,
                               0.00001,
                               0.0001,
                               99999.95,
                               999999.5,
                               9999995.0,
                               9.999995,
                               0.00009999995,
                               1e15,
                               1e16,
                               1e17,
                               123456.5,
                               123457.5};
    for (const double limit : {2147483647.0, 4294967295.0, 9007199254740991.0, 9223372036854775807.0})
    {
        values.insert(values.end(), {limit, limit + 1});
    }
    return values;
}

// Random numbers and texts, the same in every run; the seed is printed with each test.
class NumberTextAtRandom : public testing::Test
{
protected:
    NumberTextAtRandom() { std::cout << "seed " << Seed << '\n'; }

    std::uint64_t Bits() { return generator_(); }
    std::size_t Below(std::size_t limit) { return generator_() % limit; }
    bool Maybe() { return Below(2) == 0; }

    // Mostly short, now and then far longer than any number needs.
    std::size_t Length() { return Below(1 + (Below(200) == 0 ? 1500 : Below(10) == 0 ? 60 : 12)); }

    std::string From(const std::string& alphabet, std::size_t length)
    {
        std::string text(length, ' ');
        for (char& character : text)
        {
            character = alphabet[Below(alphabet.size())];
        }
        return text;
    }

    std::string Sign() { return std::array{"", "", "-", "+"}[Below(4)]; }

    std::string Exponent(char mark, std::size_t range)
    {
        return Maybe() ? std::string() : mark + Sign() + std::to_string(Below(Maybe() ? 20 : range));
    }

    std::string Decimal()
    {
        const std::string whole = Sign() + From("0123456789", Length());
        return whole + (Maybe() ? "." + From("0123456789", Length()) : "") + Exponent(Maybe() ? 'e' : 'E', 360);
    }

    // Few different digits, so that ties come up.
    std::string Hexadecimal()
    {
        const std::string digits = Maybe() ? "0000008f" : "0123456789abcdefABCDEF";
        const std::string whole = Sign() + (Maybe() ? "0x" : "0X") + From(digits, Length());
        return whole + (Maybe() ? "." + From(digits, Length()) : "") + Exponent(Maybe() ? 'p' : 'P', 1200);
    }

private:
    static constexpr std::uint64_t Seed = 20'417;
    std::mt19937_64 generator_{Seed};
};

TEST(ReadInt, GivesTheNumberInFront)
{
    const std::pair<const char*, std::int32_t> cases[] = {{"", 0},
                                                          {"abc", 0},
                                                          {"-", 0},
                                                          {"+", 0},
                                                          {"+-5", 0},
                                                          {"- 5", 0},
                                                          {".5", 0},
                                                          {"0x10", 0},
                                                          {" 42abc", 42},
                                                          {" \t\n\v\f\r-42", -42},
                                                          {"+7", 7},
                                                          {"1.9", 1},
                                                          {"1e3", 1},
                                                          {"007", 7},
                                                          {"1,000", 1},
                                                          {"\2405", 0},
                                                          {"2147483647", IntLimits::max()},
                                                          {"2147483648", IntLimits::max()},
                                                          {"-2147483648", IntLimits::min()},
                                                          {"-2147483649", IntLimits::min()},
                                                          {"18446744073709551617", IntLimits::max()},
                                                          {"-99999999999999999999999999", IntLimits::min()},
                                                          {"00000000000000000000000000000000012", 12}};
    for (const auto& [text, value] : cases)
    {
        EXPECT_EQ(ReadInt(text), value) << text;
    }
}

TEST(NumberText, KeepsSixSignificantDigits)
{
    const std::pair<double, const char*> cases[] = {{3.14159265, "3.14159"},
                                                    {0.0, "0"},
                                                    {-0.0, "-0"},
                                                    {100000, "100000"},
                                                    {1000000, "1e+06"},
                                                    {0.0001, "0.0001"},
                                                    {0.00001, "1e-05"},
                                                    {-1.234567e-308, "-1.23457e-308"},
                                                    {1e100, "1e+100"},
                                                    {123456.5, "123456"},
                                                    {123457.5, "123458"},
                                                    {HUGE_VAL, "inf"},
                                                    {-HUGE_VAL, "-inf"},
                                                    {DoubleOf(0x7FF8'0000'0000'0000), "nan"},
                                                    {DoubleOf(0xFFF8'0000'0000'0000), "-nan"}};
    for (const auto& [value, text] : cases)
    {
        EXPECT_STREQ(NumberText(value).Get(), text);
    }
}

TEST(ReadDouble, GivesTheNumberInFront)
{
    const std::pair<const char*, double> cases[] = {{"", 0},
                                                    {"-", 0},
                                                    {"abc", 0},
                                                    {"-.", 0},
                                                    {"-e5", 0},
                                                    {"-0", -0.0},
                                                    {" \t\n\v\f\r-1.5x", -1.5},
                                                    {"1.", 1},
                                                    {"+.5", 0.5},
                                                    {"1,5", 1},
                                                    {"1.2.3", 1.2},
                                                    {"1e", 1},
                                                    {"1e+", 1},
                                                    {"1e+ 5", 1},
                                                    {"1E2", 100},
                                                    {"1.e2", 100},
                                                    {"0x1.8p3", 12},
                                                    {"0x.8P+1", 1},
                                                    {"0X1p", 1},
                                                    {"-0x", -0.0},
                                                    {"-0x.p1", -0.0},
                                                    {"inf", HUGE_VAL},
                                                    {"-InFiNiTyX", -HUGE_VAL},
                                                    {"in", 0},
                                                    {"nAn", DoubleOf(0x7FF8'0000'0000'0000)},
                                                    {"-nan", DoubleOf(0xFFF8'0000'0000'0000)},
                                                    {"nan(0x12)", DoubleOf(0x7FF8'0000'0000'0012)},
                                                    {"1e309", HUGE_VAL},
                                                    {"-1e309", -HUGE_VAL},
                                                    {"4.9e-324", DoubleLimits::denorm_min()},
                                                    {"-1e-400", -0.0}};
    for (const auto& [text, value] : cases)
    {
        EXPECT_EQ(BitsOf(ReadDouble(text)), BitsOf(value)) << text;
    }
}

TEST(NumberText, WritesEdgeValuesAsTheCLibrary)
{
    for (const double value : EdgeValues())
    {
        ExpectSameTextAround(value);
    }
}

TEST(NumberText, WritesPowersOfTwoAndTenAsTheCLibrary)
{
    for (int exponent = -1074; exponent <= 1023; ++exponent)
    {
        ExpectSameTextAround(std::ldexp(1.0, exponent));
    }
    for (int exponent = -324; exponent <= 308; ++exponent)
    {
        ExpectSameTextAround(std::atof(("1e" + std::to_string(exponent)).c_str()));
    }
}

TEST(NumberText, WritesIntegersAsTheCLibrary)
{
    for (const std::int32_t value : {0, 1, -1, 9, 10, IntLimits::max(), IntLimits::min()})
    {
        const NumberText text(value);
        EXPECT_EQ(text.Get(), std::to_string(value));
        EXPECT_EQ(text.GetLength(), std::strlen(text.Get()));
    }
}

TEST(NumberText, StaysValidWhenCopied)
{
    auto original = std::make_unique<NumberText>(-2.5);
    const NumberText copy = *original;
    original.reset();
    EXPECT_STREQ(copy.Get(), "-2.5");
    EXPECT_EQ(copy.GetLength(), 4U);
}

TEST_F(NumberTextAtRandom, WritesAnyBitPatternAsTheCLibrary)
{
    for (int round = 0; round < 600'000; ++round)
    {
        ASSERT_NO_FATAL_FAILURE(ExpectSameText(DoubleOf(Bits())));
    }
}

TEST_F(NumberTextAtRandom, WritesNumbersOfEverydaySizeAsTheCLibrary)
{
    for (int round = 0; round < 200'000; ++round)
    {
        const auto digits = static_cast<double>(Below(1'000'000'000));
        ASSERT_NO_FATAL_FAILURE(ExpectSameText(digits));
        ASSERT_NO_FATAL_FAILURE(ExpectSameText(-digits / std::pow(10.0, static_cast<double>(Below(16)))));
    }
}

TEST_F(NumberTextAtRandom, WritesNumbersNearATieOfSixDigitsAsTheCLibrary)
{
    for (int round = 0; round < 50'000; ++round)
    {
        const std::string digits = std::to_string(100'000 + Below(900'000)) + "5";
        const std::string exponent = std::to_string(static_cast<int>(Below(Maybe() ? 14 : 620)) - (Maybe() ? 14 : 310));
        ASSERT_NO_FATAL_FAILURE(ExpectSameTextAround(std::atof((digits + "e" + exponent).c_str())));
    }
}

TEST_F(NumberTextAtRandom, WritesAndReadsAnyIntegerAsTheCLibrary)
{
    for (int round = 0; round < 500'000; ++round)
    {
        const auto value = static_cast<std::int32_t>(static_cast<std::uint32_t>(Bits()) >> Below(32));
        const NumberText text(value);
        ASSERT_EQ(text.Get(), std::to_string(value));
        ASSERT_EQ(ReadInt(text.Get()), value);
    }
}

TEST_F(NumberTextAtRandom, ReadsDecimalTextsAsTheCLibrary)
{
    for (int round = 0; round < 400'000; ++round)
    {
        const std::string text = Decimal();
        ASSERT_NO_FATAL_FAILURE(ExpectSameDouble(text));
        ASSERT_NO_FATAL_FAILURE(ExpectSameInt(text));
    }
}

TEST_F(NumberTextAtRandom, ReadsHexadecimalTextsAsTheCLibrary)
{
    for (int round = 0; round < 300'000; ++round)
    {
        ASSERT_NO_FATAL_FAILURE(ExpectSameDouble(Hexadecimal()));
    }
}

TEST_F(NumberTextAtRandom, ReadsJunkAsTheCLibrary)
{
    const std::array<std::string, 3> alphabets{"+-0123456789.eExXpPinfaNty() \t", "01x.p-e+8",
                                               "nanNAN()infINFity09x_-"};
    const std::array starts{"", "0x", "-0X.", "nan(", "-nan(0x", "inf", ".", "1e", "0x1p-10"};
    for (int round = 0; round < 600'000; ++round)
    {
        const std::string text = starts[Below(starts.size())] + From(alphabets[Below(3)], Below(14));
        ASSERT_NO_FATAL_FAILURE(ExpectSameDouble(text));
        ASSERT_NO_FATAL_FAILURE(ExpectSameInt(text));
    }
}

TEST_F(NumberTextAtRandom, RoundsTiesBetweenTwoDoublesToEven)
{
    if constexpr (std::numeric_limits<long double>::digits == DoubleLimits::digits)
    {
        GTEST_SKIP() << "needs a long double that can hold the middle between two doubles";
    }
    for (int round = 0; round < 15'000; ++round)
    {
        // Every other one below the normal numbers, where digits are the longest.
        const double value = DoubleOf((Bits() >> 1) >> (Maybe() ? 11 : 0));
        const auto middle = (static_cast<long double>(value) + std::nextafter(value, 0)) / 2;
        const std::string exact = Printed("%.*Le", 780, std::isfinite(value) ? middle : 0);
        const std::size_t mark = exact.find('e');
        ASSERT_NO_FATAL_FAILURE(ExpectSameDouble(exact));
        ASSERT_NO_FATAL_FAILURE(ExpectSameDouble(exact.substr(0, mark) + Zeros(Below(300)) + "1" + exact.substr(mark)));
        ASSERT_NO_FATAL_FAILURE(ExpectSameDouble(Printed("%.*La", 20, middle) + Zeros(Below(3))));
    }
}

TEST(ReadDouble, ReadsLongTextsExactly)
{
    const std::string nines(5000, '9');
    for (const std::string& text :
         {nines, "0." + nines, "-" + nines + "e-5000", "1" + Zeros(5000) + "e-5000", "0." + Zeros(5000) + "1e5000",
          "0." + Zeros(5000) + "1e5309", "0." + Zeros(700'000) + "1e700001", "7" + Zeros(700'000) + "e-700000",
          Zeros(5000) + "1.5", "1." + Zeros(5000) + "1", "9007199254740993." + Zeros(5000),
          "9007199254740993." + Zeros(5000) + "1", "-9007199254740992." + nines, "0x" + Zeros(5000) + "1.8p1",
          "0x1" + Zeros(5000) + "p-20000", "0x." + Zeros(5000) + "1p20004", "0x1.00000000000008" + Zeros(5000),
          "0x1.00000000000008" + Zeros(5000) + "1", "0x1.fffffffffffff8" + Zeros(5000) + "p1023"})
    {
        ExpectSameDouble(text);
    }
}

TEST(ReadDouble, ReadsHugeExponentsExactly)
{
    for (const std::string number : {"1", "-1", "0", "-0", "0.0", "0x1", "-0x1", "0x0"})
    {
        const std::string mark = number.find('x') == std::string::npos ? "e" : "p";
        for (const std::string exponent : {"99999999", "2147483648", "18446744073709551615", "999999999999999999999"})
        {
            ExpectSameDouble(number + mark + exponent);
            ExpectSameDouble(number + mark + "-" + exponent);
        }
    }
}

TEST(ReadDouble, TellsOverflowAndUnderflowFromTheSmallestAndGreatestNumbers)
{
    for (const char* text : {"1.7976931348623157e308",
                             "1.7976931348623158e308",
                             "1.7976931348623159e308",
                             "179769313486231580793e289",
                             "2.2250738585072014e-308",
                             "2.2250738585072011e-308",
                             "4.9406564584124654e-324",
                             "2.4703282292062327e-324",
                             "2.4703282292062328e-324",
                             "-2.4703282292062327e-324",
                             "1e-323",
                             "1e-331",
                             "9e-330",
                             "0x1p-1074",
                             "0x1p-1075",
                             "0x1.8p-1075",
                             "-0x1p-1075",
                             "0x1.0000000000000001p-1075",
                             "0x1p-1076",
                             "0x1p1023",
                             "0x1p1024",
                             "0x1.fffffffffffff7p1023",
                             "0x1.fffffffffffff8p1023",
                             "0x0.fffffffffffffp-1022",
                             "0x0.fffffffffffff8p-1022",
                             "0x0.fffffffffffff7p-1022"})
    {
        ExpectSameDouble(text);
    }
}

TEST(ReadDouble, KeepsThePayloadOfANan)
{
    for (const char* text : {"nan()",
                             "nan(0)",
                             "nan(1)",
                             "-nan(12345)",
                             "nan(017)",
                             "nan(08)",
                             "nan(0x)",
                             "nan(0xg)",
                             "NAN(0XfF)",
                             "nan(abc)",
                             "nan(_1)",
                             "nan(1",
                             "nan(1 )",
                             "nan(-1)",
                             "nan 1)",
                             "nan(1_)",
                             "nan(2251799813685248)",
                             "nan(0xfffffffffffff)",
                             "nan(18446744073709551615)",
                             "nan(99999999999999999999999)",
                             "nan(99999999999999999999999x)"})
    {
        ExpectSameDouble(text);
    }
}

// Whatever the text is cut down to, what stands behind its end doesn't count. The copy is as long as the text, so that
// a memory checker sees a read behind it.
TEST(ReadDouble, StopsAtTheEndOfTheText)
{
    for (const std::string text : {" +12.5e+10", "-0x1.8p-3", "infinity", "-nan(0x12)", "\t.5", "99999999999"})
    {
        for (std::size_t length = 0; length <= text.size(); ++length)
        {
            std::string ended = text;
            ended[length] = '\0';
            const auto exact = std::make_unique<char[]>(length + 1);
            std::copy_n(ended.c_str(), length, exact.get());
            ASSERT_EQ(BitsOf(ReadDouble(ended.c_str())), BitsOf(std::atof(ended.c_str()))) << ended.c_str();
            ASSERT_EQ(BitsOf(ReadDouble(exact.get())), BitsOf(std::atof(exact.get()))) << exact.get();
            ASSERT_EQ(ReadInt(exact.get()), ExpectedInt(exact.get())) << exact.get();
        }
    }
}

TEST(NumberText, LeavesErrnoAlone)
{
    errno = 77;
    EXPECT_EQ(ReadDouble("1e999"), HUGE_VAL);
    EXPECT_EQ(ReadDouble("1e-999"), 0);
    EXPECT_EQ(ReadInt("99999999999"), IntLimits::max());
    EXPECT_STREQ(NumberText(1e-320).Get(), "9.99989e-321");
    EXPECT_EQ(errno, 77);
}

void ExpectPointAndNoGrouping()
{
    EXPECT_STREQ(NumberText(1234.5).Get(), "1234.5");
    EXPECT_STREQ(NumberText(1234567).Get(), "1234567");
    EXPECT_EQ(ReadDouble("1234.5"), 1234.5);
    EXPECT_EQ(ReadDouble("1234,5"), 1234);
    EXPECT_EQ(ReadDouble("1.234,5"), 1.234);
    EXPECT_EQ(ReadInt("1.234"), 1);
}

class CommaAndGrouping : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NumberText, IgnoresTheGlobalCppLocale)
{
    const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new CommaAndGrouping));
    ExpectPointAndNoGrouping();
    std::locale::global(previous);
}

TEST(NumberText, IgnoresTheGlobalCLocale)
{
    if (!CommaLocale::CanBeMade())
        GTEST_SKIP() << "this system has no localedef";
    const CommaLocale locale;
    ASSERT_TRUE(locale.IsInForce());
    EXPECT_EQ(Printed("%.*Lf", 1, 1234.5L), "1234,5");
    ExpectPointAndNoGrouping();
}

}  // namespace
