// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/NumbersAsTexts.h"
#include "Tool/Checks/SettingsMaps.h"

namespace tvx::check
{

namespace
{

constexpr NumberRow<std::int32_t> IntTexts[] = {
    {0, "0"},
    {7, "7"},
    {-5, "-5"},
    {1234567, "1234567"},
    {-100000, "-100000"},
    {IntLimits::max(), "2147483647"},
    {IntLimits::min(), "-2147483648"},
};

constexpr NumberRow<double> DoubleTexts[] = {
    {3.14159265, "3.14159"}, {-2.5, "-2.5"},       {2.0, "2"},       {0.1, "0.1"},      {123456.0, "123456"},
    {123456.7, "123457"},    {999999.4, "999999"}, {1.0000001, "1"}, {2.99999999, "3"},
};

constexpr NumberRow<double> ExponentTexts[] = {
    {1e6, "1e+06"},
    {1234567.0, "1.23457e+06"},
    {-1234567.0, "-1.23457e+06"},
    {999999.7, "1e+06"},
    {0.0001, "0.0001"},
    {0.00012345678, "0.000123457"},
    {1e-5, "1e-05"},
    {0.0000123456789, "1.23457e-05"},
    {1e300, "1e+300"},
    {-1e-300, "-1e-300"},
};

constexpr NumberRow<double> ExtremeTexts[] = {
    {0.0, "0"},
    {-0.0, "-0"},
    {DoubleLimits::max(), "1.79769e+308"},
    {DoubleLimits::min(), "2.22507e-308"},
    {DoubleLimits::denorm_min(), "4.94066e-324"},
    {DoubleLimits::infinity(), "inf"},
    {-DoubleLimits::infinity(), "-inf"},
    {DoubleLimits::quiet_NaN(), "nan"},
};

template <class Number>
void ExpectTexts(Trial& trial, std::span<const NumberRow<Number>> rows, const std::string& operation,
                 Result (ISimpleMap::*set)(const char*, Number))
{
    const auto map = MakeSimpleMap(trial);
    for (const auto& row : rows)
    {
        const auto what = operation + " of " + Show(row.number);
        trial.Gives(what, (map.Get()->*set)("key", row.number), TVX_OK);
        trial.Equal("the text of " + what, GetText(trial, *map, "key")->GetText(), row.text);
    }
}

template <const auto& Rows>
void IntsHaveTheirTexts(Trial& trial)
{
    ExpectTexts<std::int32_t>(trial, Rows, "SetInt", &ISimpleMap::SetInt);
}

template <const auto& Rows>
void DoublesHaveTheirTexts(Trial& trial)
{
    ExpectTexts<double>(trial, Rows, "SetDouble", &ISimpleMap::SetDouble);
}

constexpr Check Checks[] = {
    {"value-settings-map-int-is-decimal-text",
     "Ints are written, also the smallest and the largest, and read as texts.",
     "SetInt gives 0 and writes plain decimal digits, with a minus sign where the number is negative.",
     IntsHaveTheirTexts<IntTexts>},
    {"value-settings-map-double-has-six-digits", "Doubles are written and read as texts.",
     "SetDouble gives 0 and writes as %Lg does: at most six significant digits, rounded, without zeros at the end.",
     DoublesHaveTheirTexts<DoubleTexts>},
    {"value-settings-map-double-has-an-exponent-where-needed", "Very large and very small doubles are written.",
     "From 1e+06 on and below 0.0001 a double is written with an exponent of at least two digits, as %Lg does.",
     DoublesHaveTheirTexts<ExponentTexts>},
    {"value-settings-map-double-extremes-have-texts", "The limits, -0, infinities and no number are written.",
     "Every double has a text, that of %Lg: \"-0\", \"inf\", \"-inf\" and \"nan\" too.",
     DoublesHaveTheirTexts<ExtremeTexts>},
};

}  // namespace

extern const Family NumbersOfSettingsMapFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
