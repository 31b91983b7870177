// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/ThreadPromises.h"
#include "Tool/Checks/Threads.h"

#include <atomic>
#include <cstring>
#include <functional>

// Strings and variants never change, so any number of threads may use one.
namespace tvx::check
{

namespace
{

constexpr int Rounds = 2000;

// Reads on several threads at once; each read tells whether it came out right.
void ExpectRightReads(Trial& trial, const std::string& what, const std::function<bool()>& read)
{
    std::atomic<int> wrong = 0;
    RunTogether(
        [&](int)
        {
            for (int round = 0; round < Rounds; ++round)
                wrong += read() ? 0 : 1;
        });
    trial.Equal("the number of wrong reads of " + what + " on many threads", wrong.load(), 0);
}

bool Says(IString* string, const char* text)
{
    return string != nullptr && string->GetText() != nullptr && std::strcmp(string->GetText(), text) == 0 &&
           string->GetLength() == std::strlen(text);
}

void IsReadByManyThreads(Trial& trial)
{
    const auto string = MakeString(trial, "one text for all");
    ExpectRightReads(trial, "a string", [&] { return Says(string.Get(), "one text for all"); });
    trial.Equal("the count of a string that was read", string->GetRefCount(), 1u);
}

// Each thread's strings have a text of its own.
void AreMadeWithTheirOwnTexts(Trial& trial)
{
    const auto factory = trial.Get<IStringFactory>(StringExport);
    std::atomic<int> wrong = 0;
    RunTogether(
        [&](int number)
        {
            for (int round = 0; round < 500; ++round)
            {
                const auto text = "text " + std::to_string(round) + " of thread " + std::to_string(number);
                Ref<IString> string;
                const auto result = factory->CreateString(text.c_str(), string.Receive());
                wrong += result == TVX_OK && Says(string.Get(), text.c_str()) ? 0 : 1;
            }
        });
    trial.Equal("the number of strings with another text than their thread's", wrong.load(), 0);
}

// Whether the getter gives the value.
template <class Value>
bool Gives(const Ref<IVariant>& variant, Result (IVariant::*get)(Value*), Value expected)
{
    Value value{};
    return (variant.Get()->*get)(&value) == TVX_OK && value == expected;
}

void NumbersAreReadByManyThreads(Trial& trial)
{
    const auto flag = MakeBool(trial, true);
    const auto whole = MakeInt(trial, -42);
    const auto single = MakeFloat(trial, 0.5f);
    const auto real = MakeDouble(trial, 0.25);
    ExpectRightReads(trial, "variants",
                     [&]
                     {
                         float untouched = 1;
                         return Gives(flag, &IVariant::GetBool, true) && Gives(whole, &IVariant::GetInt, -42) &&
                                Gives(single, &IVariant::GetFloat, 0.5f) && Gives(real, &IVariant::GetDouble, 0.25) &&
                                whole->GetFloat(&untouched) == TVX_E_FAIL && untouched == 1;
                     });
}

// All threads get the string that the variant holds, with a reference each.
void StringIsSharedByManyThreads(Trial& trial)
{
    const auto variant = MakeText(trial, "shared");
    Ref<IString> held;
    trial.Gives("GetString", variant->GetString(held.Receive()), TVX_OK);
    trial.Expect(static_cast<bool>(held), "GetString to give a string", "null");
    const auto count = held->GetRefCount();
    ExpectRightReads(trial, "a string variant",
                     [&]
                     {
                         Ref<IString> string;
                         return variant->GetString(string.Receive()) == TVX_OK && string.Get() == held.Get() &&
                                Says(string.Get(), "shared");
                     });
    trial.Equal("the count of the string that many threads have read", held->GetRefCount(), count);
}

void ObjectIsSharedByManyThreads(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto variant = MakeObject(trial, object.Get());
    ExpectRightReads(trial, "an object variant",
                     [&]
                     {
                         Ref<IObject> held;
                         return variant->GetObject(held.Receive()) == TVX_OK && held.Get() == object.Get();
                     });
    trial.Equal("the count of the object that many threads have read", object->GetRefCount(), 2u);
}

// The writer is each thread's own; what it was given is the same for all.
void IsWrittenByManyThreads(Trial& trial)
{
    const auto variant = MakeInt(trial, 7);
    const auto serializable = trial.QueryAs<ISerializable>(variant, "an int variant");
    const auto whole = [&]
    {
        const auto writer = MakeRef<RecordingWriter>();
        return serializable->Serialize(writer.Get()) == TVX_OK &&
               writer->calls == std::vector<std::string>{"WriteNamedInt type 2", "WriteNamedInt value 7"};
    };
    std::atomic<int> wrong = 0;
    RunTogether(
        [&](int)
        {
            for (int round = 0; round < 200; ++round)
                wrong += whole() ? 0 : 1;
        });
    trial.Equal("the number of other records of an int variant that many threads write", wrong.load(), 0);
}

constexpr Check StringChecks[] = {
    CountExactly<StringOffer>("thread-strings-count-exactly"),
    AreMadeOnManyThreads<StringOffer>("thread-strings-are-made-on-many-threads"),
    MayEndOnAnotherThread<StringOffer>("thread-strings-may-end-on-another-thread"),
    EndOnce<StringOffer>("thread-strings-end-once"),
    LockTheirSubscriptions<StringOffer>("thread-strings-lock-their-subscriptions"),
    {"thread-string-is-read-by-many", "Four threads read the text and the length of one string.",
     "A string never changes and may be read on any number of threads at once.", IsReadByManyThreads},
    {"thread-strings-have-their-own-texts", "Four threads make strings of different texts at once.",
     "Each string has the text that it was made from, whatever others make meanwhile.", AreMadeWithTheirOwnTexts},
};

constexpr Check VariantChecks[] = {
    CountExactly<VariantOffer>("thread-variants-count-exactly"),
    AreMadeOnManyThreads<VariantOffer>("thread-variants-are-made-on-many-threads"),
    MayEndOnAnotherThread<VariantOffer>("thread-variants-may-end-on-another-thread"),
    EndOnce<VariantOffer>("thread-variants-end-once"),
    LockTheirSubscriptions<VariantOffer>("thread-variants-lock-their-subscriptions"),
    {"thread-variants-are-read-by-many", "Four threads read a bool, an int, a float and a double variant.",
     "A variant never changes and may be read on any number of threads at once.", NumbersAreReadByManyThreads},
    {"thread-string-variant-is-shared-by-many", "Four threads get the string of one variant.",
     "Each thread gets the string that the variant holds, with a reference of its own.", StringIsSharedByManyThreads},
    {"thread-object-variant-is-shared-by-many", "Four threads get the object of one variant.",
     "Each thread gets the object that the variant holds, with a reference of its own.", ObjectIsSharedByManyThreads},
    {"thread-variant-is-written-by-many", "Four threads write one variant, each into a writer of its own.",
     "Writing a variant changes nothing in it: every writer is given the same.", IsWrittenByManyThreads},
};

}  // namespace

extern const Family ThreadsOfStringFamily = {"threads", StringExport, Needs::Module, StringChecks};
extern const Family ThreadsOfVariantFamily = {"threads", VariantExport, Needs::Module, VariantChecks};

}  // namespace tvx::check
