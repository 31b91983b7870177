// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

// All byte values that a text can hold, in order.
std::string MakeEveryByte()
{
    std::string text;
    for (int byte = 1; byte < 256; ++byte)
        text.push_back(static_cast<char>(byte));
    return text;
}

// Texts are compared as far as the text says, so the length is compared as well.
void ExpectText(Trial& trial, const std::string& what, const Ref<IString>& string, const std::string& expected)
{
    trial.Equal("GetText of " + what, string->GetText(), expected);
    trial.Equal("GetLength of " + what, string->GetLength(), static_cast<std::uint32_t>(expected.size()));
}

void KeepsEveryByte(Trial& trial)
{
    const auto text = MakeEveryByte();
    ExpectText(trial, "a string of the bytes 1 to 255", MakeString(trial, text.c_str()), text);
}

void CountsBytes(Trial& trial)
{
    trial.Equal("GetLength of six letters in seven bytes", MakeString(trial, "W\xC3\xB6rter")->GetLength(), 7u);
}

void MakesAnEmptyText(Trial& trial)
{
    ExpectText(trial, "a string of the empty text", MakeString(trial, ""), "");
}

void TakesNullAsEmpty(Trial& trial)
{
    ExpectText(trial, "a string of a null text", MakeString(trial, nullptr), "");
}

void EndsAtTheFirstNul(Trial& trial)
{
    ExpectText(trial, "a string of abc, a NUL and def", MakeString(trial, "abc\0def"), "abc");
}

void KeepsALongText(Trial& trial)
{
    std::string text(1 << 20, ' ');
    for (std::size_t index = 0; index < text.size(); ++index)
        text[index] = static_cast<char>(index % 251 + 1);
    ExpectText(trial, "a string of 1 MiB", MakeString(trial, text.c_str()), text);
}

void CopiesItsText(Trial& trial)
{
    std::string text = "before";
    const auto string = MakeString(trial, text.c_str());
    text = "behind";
    ExpectText(trial, "a string whose maker wrote over the text", string, "before");
}

void KeepsItsTextInPlace(Trial& trial)
{
    const auto string = MakeString(trial, "stays");
    const char* const text = string->GetText();
    const auto another = MakeString(trial, "comes later");
    trial.Expect(string->GetText() == text, "GetText to give the same address every time", "another address");
    ExpectText(trial, "a string that others were made after", string, "stays");
}

void IsNewEachTime(Trial& trial)
{
    for (const char* const text : {"text", "", static_cast<const char*>(nullptr)})
    {
        const auto first = MakeString(trial, text);
        const auto second = MakeString(trial, text);
        trial.Expect(first.Get() != second.Get(), "CreateString of " + Show(text) + " to make a new string each time",
                     "the same one twice");
    }
}

void BelongsToItsCaller(Trial& trial)
{
    const auto string = MakeString(trial, "text");
    trial.Equal("the reference count of a new string", string->GetRefCount(), 1u);
    trial.Equal("IsUnique of a new string", string->IsUnique(), true);
}

void OverwritesItsOut(Trial& trial)
{
    const auto factory = trial.Get<IStringFactory>(StringExport);
    const auto before = MakeString(trial, "before");
    IString* out = before.Get();
    trial.Gives("CreateString with an out that holds a pointer", factory->CreateString("new", &out), TVX_OK);
    trial.Expect(out != nullptr && out != before.Get(), "CreateString to write a new string to its out",
                 out == nullptr ? "null" : "what was there");
    const auto made = Ref<IString>::Adopt(out);
    ExpectText(trial, "the new string", made, "new");
    trial.Equal("the reference count of the string that the out held", before->GetRefCount(), 1u);
}

void RefusesANullOut(Trial& trial)
{
    const auto factory = trial.Get<IStringFactory>(StringExport);
    trial.Gives("CreateString with a null out", factory->CreateString("text", nullptr), TVX_E_POINTER);
    trial.Gives("CreateString with two nulls", factory->CreateString(nullptr, nullptr), TVX_E_POINTER);
}

constexpr Check Checks[] = {
    {"value-string-keeps-every-byte", "A string is made of all bytes from 1 to 255.",
     "A text is kept byte for byte: no encoding is assumed and nothing is converted.", KeepsEveryByte},
    {"value-string-length-counts-bytes", "The length of a text with a letter of two bytes is asked for.",
     "GetLength counts bytes without the NUL, not letters.", CountsBytes},
    {"value-string-empty-text-is-a-text", "A string is made of the empty text.",
     "GetLength gives 0 and GetText an empty NUL-terminated text, not null.", MakesAnEmptyText},
    {"value-string-null-text-is-the-empty-text", "CreateString is called with a null text.",
     "A null text counts as the empty text.", TakesNullAsEmpty},
    {"value-string-text-ends-at-the-first-nul", "A string is made of bytes with a NUL in between.",
     "Texts are NUL-terminated: a string holds what stands before the first NUL.", EndsAtTheFirstNul},
    {"value-string-keeps-a-long-text", "A string is made of a text of 1 MiB.",
     "A text may have any length that memory holds, and none of it is cut.", KeepsALongText},
    {"value-string-copies-its-text", "The text that a string was made of is written over afterwards.",
     "A string owns a copy of its text, which never changes.", CopiesItsText},
    {"value-string-text-stays-in-place", "GetText is called before and after another string is made.",
     "The pointer that GetText gives is valid and the same as long as the string lives.", KeepsItsTextInPlace},
    {"value-string-is-new-each-time", "Two strings are made of the same text.",
     "Every CreateString makes an object of its own.", IsNewEachTime},
    {"value-string-belongs-to-its-caller", "The reference count of a new string is asked for.",
     "A new string carries exactly one reference, which the caller owns.", BelongsToItsCaller},
    {"value-string-out-is-overwritten", "CreateString is called with an out that holds another string's pointer.",
     "The out of a creation is a place to write to: what it held is neither used nor released.", OverwritesItsOut},
    {"value-string-null-out-is-refused-silently", "CreateString is called with a null out.",
     "A null out gives -4 without a report line.", RefusesANullOut},
};

}  // namespace

extern const Family ValuesOfStringFamily = {"values", StringExport, Needs::Module, Checks};

}  // namespace tvx::check
