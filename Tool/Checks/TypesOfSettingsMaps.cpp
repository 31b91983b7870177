// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SettingsMaps.h"

#include <clocale>
#include <limits>
#include <locale>

namespace tvx::check
{

namespace
{

// How people write numbers in many places: 1.234,5.
class CommaNumbers final : public std::numpunct<char>
{
public:
    using std::numpunct<char>::numpunct;

private:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

constexpr const char* CommaLocales[] = {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8",    "fr_FR",
                                        "pl_PL.UTF-8", "pl_PL", "German_Germany", "French_France"};

std::locale MakeCommaLocale()
{
    static CommaNumbers numbers(1);  // streams that a module keeps may use it as long as the process lives
    return {std::locale::classic(), &numbers};
}

// As long as it lives, streams write numbers with a decimal comma, and so does the C library where the system has a
// locale for that.
class CommaLocale
{
public:
    CommaLocale() : cBefore_(std::setlocale(LC_ALL, nullptr)), before_(std::locale::global(MakeCommaLocale()))
    {
        for (const char* const name : CommaLocales)
        {
            if (std::setlocale(LC_ALL, name) != nullptr)
                return;
        }
    }

    ~CommaLocale()
    {
        std::locale::global(before_);
        std::setlocale(LC_ALL, cBefore_.c_str());
    }

    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    const std::string cBefore_;
    const std::locale before_;
};

std::int32_t GetInt(Trial& trial, ISimpleMap& map, const char* key)
{
    std::int32_t out = -77;
    trial.Gives("GetInt", map.GetInt(key, &out), TVX_OK);
    return out;
}

double GetDouble(Trial& trial, ISimpleMap& map, const char* key)
{
    double out = -77;
    trial.Gives("GetDouble", map.GetDouble(key, &out), TVX_OK);
    return out;
}

void WritesPointsInEveryLocale(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    const CommaLocale locale;
    trial.Gives("SetDouble", map->SetDouble("double", 2.5), TVX_OK);
    trial.Gives("SetDouble", map->SetDouble("large", 123456.0), TVX_OK);
    trial.Gives("SetInt", map->SetInt("int", 1234567), TVX_OK);
    ExpectEntries(trial, "a map written under a locale with a decimal comma", *map,
                  {"double=2.5", "int=1234567", "large=123456"});
}

void ReadsPointsInEveryLocale(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"point", "2.5"}, {"comma", "2,5"}, {"grouped", "1.234.567"}});
    const CommaLocale locale;
    trial.Equal("GetDouble of 2.5", GetDouble(trial, *map, "point"), 2.5);
    trial.Equal("GetDouble of 2,5", GetDouble(trial, *map, "comma"), 2.0);
    trial.Equal("GetInt of 1.234.567", GetInt(trial, *map, "grouped"), 1);
}

void IntsComeBack(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    using Limits = std::numeric_limits<std::int32_t>;
    for (const std::int32_t value : {0, 1, -1, 999999999, Limits::max(), Limits::min()})
    {
        trial.Gives("SetInt", map->SetInt("key", value), TVX_OK);
        trial.Equal("the int that was written", GetInt(trial, *map, "key"), value);
    }
}

void DoublesComeBackInSixDigits(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetDouble", map->SetDouble("pi", 3.14159265), TVX_OK);
    trial.Gives("SetDouble", map->SetDouble("large", 1234567), TVX_OK);
    trial.Gives("SetDouble", map->SetDouble("exact", 0.125), TVX_OK);
    trial.Equal("GetDouble of what 3.14159265 was written as", GetDouble(trial, *map, "pi"), 3.14159);
    trial.Equal("GetDouble of what 1234567 was written as", GetDouble(trial, *map, "large"), 1234570.0);
    trial.Equal("GetDouble of what 0.125 was written as", GetDouble(trial, *map, "exact"), 0.125);
}

// Whatever an entry was written as, it is a text.
void TypesMix(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"text", "42.9"}});
    trial.Gives("SetInt", map->SetInt("int", -5), TVX_OK);
    trial.Gives("SetDouble", map->SetDouble("double", 1234567), TVX_OK);
    trial.Equal("GetDouble of an int", GetDouble(trial, *map, "int"), -5.0);
    trial.Equal("GetInt of a double with an exponent", GetInt(trial, *map, "double"), 1);
    trial.Equal("GetInt of a text", GetInt(trial, *map, "text"), 42);
    trial.Equal("GetDouble of a text", GetDouble(trial, *map, "text"), 42.9);
}

void ReplaceOneAnother(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"key", "a text"}});
    trial.Gives("SetInt", map->SetInt("key", 5), TVX_OK);
    ExpectEntries(trial, "a map whose text was replaced by an int", *map, {"key=5"});
    trial.Gives("SetDouble", map->SetDouble("key", 0.5), TVX_OK);
    ExpectEntries(trial, "a map whose int was replaced by a double", *map, {"key=0.5"});
}

void AbsentLeavesIntUntouched(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"present", "5"}});
    std::int32_t out = -77;
    trial.Gives("GetInt of an absent key", map->GetInt("absent", &out), TVX_S_NOKEY);
    trial.Equal("the out of GetInt of an absent key, which stays untouched,", out, -77);
}

void AbsentLeavesDoubleUntouched(Trial& trial)
{
    const auto map = MakeFilledMap(trial, {{"present", "5"}});
    double out = -77.5;
    trial.Gives("GetDouble of an absent key", map->GetDouble("absent", &out), TVX_S_NOKEY);
    trial.Equal("the out of GetDouble of an absent key, which stays untouched,", out, -77.5);
}

constexpr Check Checks[] = {
    {"value-settings-map-int-comes-back", "Ints are written and read as ints, also the smallest and the largest.",
     "Every int survives being kept as text.", IntsComeBack},
    {"value-settings-map-double-comes-back-in-six-digits", "Doubles are written and read as doubles.",
     "A double comes back as its text says, which has six significant digits.", DoublesComeBackInSixDigits},
    {"value-settings-map-types-mix", "Entries are read as another type than they were written as.",
     "Every value is kept as text, and each getter reads what it can of it.", TypesMix},
    {"value-settings-map-types-replace-one-another", "A key is written as a text, an int and a double.",
     "An entry has no type: writing its key by any setter replaces the text.", ReplaceOneAnother},
    {"value-settings-map-absent-key-leaves-int-untouched", "GetInt is called for an absent key.",
     "An absent key gives 101, which is no failure, and leaves out untouched.", AbsentLeavesIntUntouched},
    {"value-settings-map-absent-key-leaves-double-untouched", "GetDouble is called for an absent key.",
     "An absent key gives 101, which is no failure, and leaves out untouched.", AbsentLeavesDoubleUntouched},
    {"value-settings-map-numbers-are-written-alike-in-every-locale", "Numbers are written under a decimal comma.",
     "Settings are exchanged between systems: numbers have a decimal point and no grouping, whatever the locale.",
     WritesPointsInEveryLocale},
    {"value-settings-map-numbers-are-read-alike-in-every-locale", "Numbers are read under a decimal comma.",
     "Settings are exchanged between systems: a number ends at a comma, whatever the locale.",
     ReadsPointsInEveryLocale},
};

}  // namespace

extern const Family TypesOfSettingsMapFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
