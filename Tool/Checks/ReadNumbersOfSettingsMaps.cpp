// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/NumbersAsTexts.h"
#include "Tool/Checks/SettingsMaps.h"

#include <bit>

namespace tvx::check
{

namespace
{

constexpr NumberRow<std::int32_t> IntReadings[] = {
    {42, "42"},    {1, "1.9"}, {3, "3.14159"}, {12, " 12"}, {7, "\t\n\v\f\r 7"}, {5, "+5"},    {-5, "-5"},
    {12, "12abc"}, {7, "007"}, {1, "1e3"},     {0, "0x10"}, {1, "1 2"},          {-1, "-1.9"}, {12, "12 "},
};

constexpr NumberRow<std::int32_t> IntReadingsOfNoNumber[] = {
    {0, ""}, {0, "abc"}, {0, " "}, {0, "-"}, {0, "+-5"}, {0, "- 5"}, {0, ".5"}, {0, "x1"}, {0, "true"},
};

constexpr NumberRow<std::int32_t> IntReadingsOutOfRange[] = {
    {IntLimits::max(), "2147483647"},
    {IntLimits::max(), "2147483648"},
    {IntLimits::max(), "4294967297"},
    {IntLimits::max(), "99999999999999999999999"},
    {IntLimits::min(), "-2147483648"},
    {IntLimits::min(), "-2147483649"},
    {IntLimits::min(), "-99999999999999999999999"},
};

constexpr NumberRow<double> DoubleReadings[] = {
    {1.9, "1.9"},
    {42.0, "42"},
    {12.0, " 12"},
    {-7.25, "\t\n\v\f\r -7.25"},
    {5.0, "+5"},
    {0.5, ".5"},
    {5.0, "5."},
    {1.0, "1,5"},
    {2.5, "2.5abc"},
    {12.0, "12 "},
    {3.141592653589793, "3.141592653589793"},
    {0.1, "0.1000000000000000055511151231257827"},
};

constexpr NumberRow<double> ExponentReadings[] = {
    {1000.0, "1e3"}, {1000.0, "1E+3"}, {0.015, "1.5e-2"}, {1.0, "1e"}, {1.0, "1e+"}, {16.0, "0x10"}, {3.0, "0x1.8p1"},
};

constexpr NumberRow<double> DoubleReadingsOfNoNumber[] = {
    {0.0, ""}, {0.0, "abc"}, {0.0, " "}, {0.0, "-"}, {0.0, "+-5"}, {0.0, "- 5"}, {0.0, "."}, {0.0, "e5"},
};

constexpr NumberRow<double> ExtremeReadings[] = {
    {-0.0, "-0"},
    {0.0, "1e-400"},
    {DoubleLimits::max(), "1.7976931348623157e308"},
    {DoubleLimits::infinity(), "1e400"},
    {-DoubleLimits::infinity(), "-1e400"},
    {DoubleLimits::infinity(), "inf"},
    {-DoubleLimits::infinity(), "-Infinity"},
    {DoubleLimits::quiet_NaN(), "nan"},
};

// No number is like any other no number; else the bits tell, so that 0 is not -0.
bool IsSameNumber(double left, double right)
{
    return (left != left && right != right) ||
           std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

// Every read starts from another number than the expected one, so that one that writes nothing is seen.
template <class Number>
void ExpectReadings(Trial& trial, std::span<const NumberRow<Number>> rows, const std::string& operation,
                    Result (ISimpleMap::*get)(const char*, Number*))
{
    const auto map = MakeSimpleMap(trial);
    for (const auto& row : rows)
    {
        Fill(trial, *map, {{"key", row.text}});
        const auto what = operation + " of the text " + Show(std::string_view(row.text));
        Number out = -77;
        trial.Gives(what, (map.Get()->*get)("key", &out), TVX_OK);
        trial.Expect(IsSameNumber(out, row.number), what + " to read " + Show(row.number), Show(out));
    }
}

template <const auto& Rows>
void TextsReadAsInts(Trial& trial)
{
    ExpectReadings<std::int32_t>(trial, Rows, "GetInt", &ISimpleMap::GetInt);
}

template <const auto& Rows>
void TextsReadAsDoubles(Trial& trial)
{
    ExpectReadings<double>(trial, Rows, "GetDouble", &ISimpleMap::GetDouble);
}

constexpr Check Checks[] = {
    {"value-settings-map-int-is-read-from-the-front", "Texts that begin with a number are read by GetInt.",
     "GetInt reads as atoi does: white space, a sign and digits up to the first other character.",
     TextsReadAsInts<IntReadings>},
    {"value-settings-map-int-of-no-number-is-0", "Texts that begin with no integer are read by GetInt.",
     "A text without a number reads as 0 and is no failure: the result is 0.", TextsReadAsInts<IntReadingsOfNoNumber>},
    {"value-settings-map-int-is-clamped", "Texts of numbers at and beyond the limits of 32 bits are read by GetInt.",
     "A number out of range reads as the nearest 32-bit limit.", TextsReadAsInts<IntReadingsOutOfRange>},
    {"value-settings-map-double-is-read-from-the-front", "Texts that begin with a number are read by GetDouble.",
     "GetDouble reads as atof does: white space, a sign, digits and a decimal point, up to the first other character.",
     TextsReadAsDoubles<DoubleReadings>},
    {"value-settings-map-double-is-read-with-exponent", "Exponents and hexadecimal digits are read by GetDouble.",
     "GetDouble reads as atof does, which knows exponents and hexadecimal numbers.",
     TextsReadAsDoubles<ExponentReadings>},
    {"value-settings-map-double-of-no-number-is-0", "Texts that begin with no number are read by GetDouble.",
     "A text without a number reads as 0 and is no failure: the result is 0.",
     TextsReadAsDoubles<DoubleReadingsOfNoNumber>},
    {"value-settings-map-double-extremes-are-read", "-0, infinities, no number and numbers out of range are read.",
     "GetDouble reads as atof does: too large a number is infinite, too small a one is 0, and the sign of 0 is kept.",
     TextsReadAsDoubles<ExtremeReadings>},
};

}  // namespace

extern const Family ReadNumbersOfSettingsMapFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
