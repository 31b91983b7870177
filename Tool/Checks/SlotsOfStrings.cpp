// SPDX-License-Identifier: MIT
#include "Tool/Checks/SlotsOfObjects.h"

namespace tvx::check
{

namespace
{

constexpr const char Text[] = "a text of 18 bytes";
constexpr std::uint32_t TextLength = sizeof Text - 1;

Ref<IObject> MakeStringObject(Trial& trial)
{
    return MakeString(trial, Text);
}

void GivesText(Trial& trial)
{
    const auto string = MakeString(trial, Text);
    const char* const came = CallIStringGetText(ToC<IString>(string));
    ExpectText(trial, "slot 11 (GetText) of IString", came, Text);
    trial.Same("the text that GetText gives by name", string->GetText(), came);
}

void GivesLength(Trial& trial)
{
    const auto string = MakeString(trial, Text);
    const auto came = CallIStringGetLength(ToC<IString>(string));
    trial.Equal("slot 12 (GetLength) of IString", came, TextLength);
    trial.Equal("GetLength by name", string->GetLength(), came);
}

void CreatesStrings(Trial& trial)
{
    const std::string what = "slot 11 (CreateString) of IStringFactory";
    const auto factory = trial.Get<IStringFactory>(StringExport);
    const auto create = [&](void** out)
    { return CallIStringFactoryCreateString(ToC<IStringFactory>(factory), Text, out); };
    const auto object = TakeFromC<IString>(trial, what, TVX_OK, create);
    const auto string = trial.QueryAs<IString>(object, "what " + what + " gives");
    ExpectTextOf(trial, what, string, Text);
    const auto other = TakeFromC<IString>(trial, what, TVX_OK, create);
    trial.Expect(other.Get() != string.Get(), what + " to give a new string each time", "the same one");
}

constexpr Check Checks[] = {
    {"slot-string-11-get-text", "GetText of a string is called by its number.",
     "Slot 11 of IString is GetText: it gives the pointer of the NUL-terminated text.", GivesText},
    {"slot-string-12-get-length", "GetLength of a string is called by its number.",
     "Slot 12 of IString is GetLength: it gives the number of bytes of the text.", GivesLength},
    {"slot-string-factory-11-create-string", "CreateString of the string factory is called by its number.",
     "Slot 11 of IStringFactory is CreateString: it makes a new string of a text each time.", CreatesStrings},
};

}  // namespace

extern const Family SlotsOfStringFamily = {"slots", StringExport, Needs::Module, Checks};
extern const Family SlotsOfStringObjectFamily = {"slots", StringExport, Needs::Module,
                                                 ObjectSlots<"string", MakeStringObject>};

}  // namespace tvx::check
