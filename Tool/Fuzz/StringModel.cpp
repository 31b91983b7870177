// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/Refusals.h"
#include "Tool/Fuzz/TableWalker.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace tvx::fuzz
{

namespace
{

constexpr std::size_t StringCount = 8;

// What refused calls are made with.
struct Subject
{
    Ref<IStringFactory> factory;
    Ref<IString> string;
    const char* text;

    struct Outs
    {
        void* face;

        bool operator==(const Outs&) const = default;
    };
    Outs outs = {this};
};

constexpr Refusal<Subject> Refusals[] = {
    {"CreateString with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.factory->CreateString(it.text, nullptr); }},
    {"CreateString of null with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.factory->CreateString(nullptr, nullptr); }},
    {"a query of a string for IObject", Silent, TVX_E_NOINTERFACE,
     [](Subject& it) { return it.string->QueryInterface(IObject::Id, &it.outs.face); }},
    {"a query of a string for IStringFactory", Silent, TVX_E_NOINTERFACE,
     [](Subject& it) { return it.string->QueryInterface(IStringFactory::Id, &it.outs.face); }},
    {"a query of a string for ISerializable", Silent, TVX_E_NOINTERFACE,
     [](Subject& it) { return it.string->QueryInterface(ISerializable::Id, &it.outs.face); }},
    {"a query of the string factory for IString", Silent, TVX_E_NOINTERFACE,
     [](Subject& it) { return it.factory->QueryInterface(IString::Id, &it.outs.face); }},
};

// Some strings beside the texts that they were made from.
class StringModel final : public TableWalker<StringModel>
{
public:
    explicit StringModel(check::Trial& trial) : trial_(trial), factory_(trial.Get<IStringFactory>(check::StringExport))
    {
    }

    // The buffer that it is made from goes away at once.
    void Create(const Step& step)
    {
        std::string text;
        for (std::uint32_t place = 0; place < step.first % 64; ++place)
            text += static_cast<char>(1 + (step.second + place * place) % 255);
        Keep(step, text);
    }

    void CreateLong(const Step& step) { Keep(step, std::string(step.first % 5000, '\xE4')); }

    void Share(const Step& step) { kept_[step.first % StringCount] = kept_[step.second % StringCount]; }

    void Drop(const Step& step) { kept_[step.first % StringCount] = {}; }

    // Null counts as the empty text.
    void CreateOfNull(const Step& step) { KeepNew(step, nullptr, ""); }

    // The text ends where its first NUL is.
    void CreateWithNul(const Step& step)
    {
        const std::string text(step.first % 100, 'n');
        KeepNew(step, (text + '\0' + "behind").c_str(), text);
    }

    // What stands in the out before is neither used nor released.
    void CreateOverAnother(const Step& step)
    {
        IString* out = kept_[step.first % StringCount].string.Get();
        trial_.Gives("CreateString", factory_->CreateString("over", &out), TVX_OK);
        trial_.Expect(out != nullptr && CountPlaces(out) == 0, "CreateString to give a new string", "none");
        Keep(step, Ref<IString>::Adopt(out), "over");
    }

    void Refuse(const Step& step)
    {
        const auto& string = kept_[step.second % StringCount].string;
        TryRefused(trial_, Refusals, step.first,
                   Subject{factory_, string ? string : check::MakeString(trial_, "refuses"), "refused"});
    }

    void AskAsObject(const Step& step)
    {
        const auto& string = kept_[step.first % StringCount].string;
        if (!string)
            return;
        trial_.Same("the IString of a string", trial_.QueryAs<IString>(string, "a string").Get(), string.Get());
        trial_.Same("the IObjectBase of a string", trial_.QueryAs<IObjectBase>(string, "a string").Get(), string.Get());
        fuzz::AskAsObject(trial_, "a string", string, step.second);
    }

    // Only where nobody shares it.
    void End(const Step& step)
    {
        auto& kept = kept_[step.first % StringCount];
        if (kept.string && CountPlaces(kept.string.Get()) == 1)
            EndBeforeWitnesses(trial_, "a string", kept.string);
    }

    void Compare() override
    {
        for (const auto& [string, text, place] : kept_)
        {
            if (!string)
                continue;
            trial_.Equal("GetText", string->GetText(), text);
            trial_.Equal("GetLength", string->GetLength(), static_cast<std::uint32_t>(text.size()));
            trial_.Expect(string->GetText() == place, "GetText to give the same place as long as the string lives",
                          "another one");
            CompareCount(trial_, "a string", *string, CountPlaces(string.Get()));
        }
    }

    static constexpr Operation<StringModel> Operations[] = {
        {"create", &StringModel::Create},
        {"create-long", &StringModel::CreateLong},
        {"share", &StringModel::Share},
        {"drop", &StringModel::Drop},
        {"create-of-null", &StringModel::CreateOfNull},
        {"create-with-nul", &StringModel::CreateWithNul},
        {"create-over-another", &StringModel::CreateOverAnother},
        {"refuse", &StringModel::Refuse},
        {"ask-as-object", &StringModel::AskAsObject},
        {"end", &StringModel::End},
    };

private:
    struct Kept
    {
        Ref<IString> string;
        std::string text;
        const char* place;  // where GetText gave it first
    };

    void Keep(const Step& step, const std::string& text) { KeepNew(step, text.c_str(), text); }

    void KeepNew(const Step& step, const char* from, const std::string& text)
    {
        Keep(step, check::MakeString(trial_, from), text);
    }

    void Keep(const Step& step, Ref<IString> string, const std::string& text)
    {
        const auto* const place = string->GetText();
        kept_[step.second % StringCount] = {std::move(string), text, place};
    }

    std::size_t CountPlaces(const IString* string) const
    {
        return static_cast<std::size_t>(
            std::count_if(kept_.begin(), kept_.end(), [&](const Kept& kept) { return kept.string.Get() == string; }));
    }

    check::Trial& trial_;
    Ref<IStringFactory> factory_;
    std::array<Kept, StringCount> kept_{};
};

constexpr auto Names = GetNames(StringModel::Operations);

}  // namespace

const Walk StringWalk = {"string", check::StringExport, Names, &StringModel::Start};

}  // namespace tvx::fuzz
