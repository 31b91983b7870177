// SPDX-License-Identifier: MIT
#include "Tool/Checks/Serialising.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/Refusals.h"
#include "Tool/Fuzz/TableWalker.h"
#include "Tool/Fuzz/VariantValues.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

namespace tvx::fuzz
{

namespace
{

constexpr std::size_t VariantCount = 8;
constexpr const char FormatId[] = "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1";

// Any bits are a number, also those that are none.
double MakeDouble(const Step& step)
{
    const auto bits = (std::uint64_t{step.first} << 32) | step.second;
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Some variants beside what each was made from.
class VariantModel final : public TableWalker<VariantModel>
{
public:
    explicit VariantModel(check::Trial& trial)
        : trial_(trial),
          values_(trial),
          factory_(trial.Get<IVariantFactory>(check::VariantExport))
    {
    }

    void CreateBool(const Step& step)
    {
        const bool value = step.first % 2 == 0;
        Keep(step, value, [&](IVariant** out) { return factory_->CreateBool(value, out); });
    }

    void CreateInt(const Step& step)
    {
        const auto value = static_cast<std::int32_t>(step.first);
        Keep(step, value, [&](IVariant** out) { return factory_->CreateInt(value, out); });
    }

    // Of those that are a number: what becomes of the bits of the others on the way is the processor's affair.
    void CreateFloat(const Step& step)
    {
        const auto value = static_cast<float>(static_cast<std::int32_t>(step.first)) / 1024.0f;
        Keep(step, value, [&](IVariant** out) { return factory_->CreateFloat(value, out); });
    }

    void CreateDouble(const Step& step)
    {
        const auto value = MakeDouble(step);
        Keep(step, value, [&](IVariant** out) { return factory_->CreateDouble(value, out); });
    }

    void CreateString(const Step& step)
    {
        const std::string value(step.first % 300, static_cast<char>('a' + step.second % 26));
        Keep(step, value, [&](IVariant** out) { return factory_->CreateString(value.c_str(), out); });
    }

    void CreateObject(const Step& step)
    {
        const auto object = ObjectPool::Choose(step.first);
        Keep(step, object, [&](IVariant** out) { return factory_->CreateObject(GetObject(object), out); });
    }

    void Ask(const Step& step)
    {
        if (auto* const variant = Find(step.first))
            values_.Compare(*variant, kept_[step.first % VariantCount].value);
    }

    // Of all getters only that of the own type answers, and the others leave their out alone.
    void AskForInt(const Step& step)
    {
        const auto& [variant, value] = kept_[step.first % VariantCount];
        std::int32_t number = -99;
        if (!variant || std::holds_alternative<std::int32_t>(value))
            return;
        trial_.Gives("GetInt of a variant of another type", variant->GetInt(&number), TVX_E_FAIL);
        trial_.Equal("the out of GetInt", number, -99);
    }

    void Drop(const Step& step) { kept_[step.first % VariantCount] = {}; }

    void AskAllInVain(const Step& step)
    {
        if (auto* const variant = Find(step.first))
            values_.AskInVain(*variant, kept_[step.first % VariantCount].value, step.second);
    }

    // What is made and cannot be handed out keeps nothing of what it was made from.
    void CreateForNobody(const Step& step)
    {
        const Result results[] = {
            factory_->CreateBool(true, nullptr),
            factory_->CreateInt(1, nullptr),
            factory_->CreateFloat(1, nullptr),
            factory_->CreateDouble(1, nullptr),
            factory_->CreateString("text", nullptr),
            factory_->CreateString(nullptr, nullptr),
            factory_->CreateObject(GetObject(ObjectPool::Choose(step.first)), nullptr),
            factory_->CreateStringFromIString(values_.GetText(1), nullptr),
        };
        for (const auto result : results)
            trial_.Gives("a creation with a null out", result, TVX_E_POINTER);
    }

    void CreateNullString(const Step& step)
    {
        Keep(step, std::string(), [&](IVariant** out) { return factory_->CreateString(nullptr, out); });
    }

    void CreateSharedString(const Step& step)
    {
        const SharedText text = {1 + step.first % (VariantValues::TextCount - 1)};
        Keep(step, text,
             [&](IVariant** out) { return factory_->CreateStringFromIString(values_.GetText(text.place), out); });
    }

    void Share(const Step& step) { kept_[step.second % VariantCount] = kept_[step.first % VariantCount]; }

    void AskAsObject(const Step& step)
    {
        if (Find(step.first) != nullptr)
            fuzz::AskAsObject(trial_, "a variant", kept_[step.first % VariantCount].variant, step.second);
    }

    void DropBeforeWitnesses(const Step& step)
    {
        auto& kept = kept_[step.first % VariantCount];
        if (CountPlaces(kept.variant) == 1)
            EndBeforeWitnesses(trial_, "a variant", kept.variant);
    }

    // A writer that fails is written to all the same.
    void Serialize(const Step& step)
    {
        const auto& [variant, value] = kept_[step.first % VariantCount];
        if (!variant || value == Value(SharedText{0}))
            return;
        const auto due = MakeRef<check::RecordingWriter>();
        values_.Write(value, *due);
        const auto writer = MakeRef<check::RecordingWriter>(step.second % 2 == 0 ? TVX_OK : -42);
        const auto face = trial_.QueryAs<ISerializable>(variant, "a variant");
        trial_.Gives("Serialize", face->Serialize(writer.Get()), TVX_OK);
        trial_.Equal("what Serialize writes", writer->calls, due->calls);
        trial_.Expect(std::equal(writer->objects.begin(), writer->objects.end(), due->objects.begin(),
                                 due->objects.end(),
                                 [](const auto& left, const auto& right) { return left.Get() == right.Get(); }),
                      "Serialize to write the very object", "another one");
    }

    void SerializeToNobody(const Step& step)
    {
        if (Find(step.first) != nullptr)
            check::ExpectNullWriterReported(trial_, kept_[step.first % VariantCount].variant);
    }

    // What is read has a text of its own.
    void ReadBack(const Step& step)
    {
        auto [variant, value] = kept_[step.first % VariantCount];
        if (!variant || value == Value(SharedText{0}))
            return;
        if (const auto* const text = std::get_if<SharedText>(&value))
            value = std::string(values_.GetText(text->place)->GetText());
        kept_[step.second % VariantCount] = {check::Copy(trial_, check::VariantExport, variant), value};
    }

    // What is missing in a record is zero; only a type that there is not is refused.
    void ReadRecord(const Step& step)
    {
        const auto record = values_.MakeRecord(step);
        const auto due = values_.Foresee(*record);
        if (!due)
            return LeavesOutAlone<IObjectBase>(trial_, "Deserialize of an unknown type", TVX_E_FAIL, GetObject(1),
                                               [&](IObjectBase** out)
                                               { return GetReading()->Deserialize(record.Get(), out); });
        auto variant = check::ReadAs<IVariant>(trial_, check::VariantExport, *record);
        CompareCount(trial_, "a reader afterwards", *record, 1);
        kept_[step.second % VariantCount] = {std::move(variant), *due};
    }

    // Everything is read, and given up.
    void ReadForNobody(const Step& step)
    {
        const auto record = values_.MakeRecord(step);
        trial_.Gives("Deserialize with a null out", GetReading()->Deserialize(record.Get(), nullptr),
                     values_.Foresee(*record) ? TVX_OK : TVX_E_FAIL);
        CompareCount(trial_, "a reader afterwards", *record, 1);
    }

    void NameFormat(const Step& step)
    {
        if (Find(step.first) != nullptr)
            check::ExpectFormat(trial_, check::VariantExport, kept_[step.first % VariantCount].variant, FormatId);
    }

    void Compare() override
    {
        for (const auto& [variant, value] : kept_)
        {
            if (!variant)
                continue;
            values_.Compare(*variant, value);
            CompareCount(trial_, "a variant", *variant, CountPlaces(variant));
        }
        values_.GetObjects().Compare(trial_, [&](std::size_t object) { return CountVariants(object); });
        values_.CompareTexts([&](std::size_t text) { return CountVariants(SharedText{text}); });
    }

    static constexpr Operation<VariantModel> Operations[] = {
        {"create-bool", &VariantModel::CreateBool},
        {"create-int", &VariantModel::CreateInt},
        {"create-float", &VariantModel::CreateFloat},
        {"create-double", &VariantModel::CreateDouble},
        {"create-string", &VariantModel::CreateString},
        {"create-object", &VariantModel::CreateObject},
        {"ask", &VariantModel::Ask},
        {"ask-for-int", &VariantModel::AskForInt},
        {"drop", &VariantModel::Drop},
        {"ask-all-in-vain", &VariantModel::AskAllInVain},
        {"create-for-nobody", &VariantModel::CreateForNobody},
        {"create-null-string", &VariantModel::CreateNullString},
        {"create-shared-string", &VariantModel::CreateSharedString},
        {"share", &VariantModel::Share},
        {"ask-as-object", &VariantModel::AskAsObject},
        {"drop-before-witnesses", &VariantModel::DropBeforeWitnesses},
        {"serialize", &VariantModel::Serialize},
        {"serialize-to-nobody", &VariantModel::SerializeToNobody},
        {"read-back", &VariantModel::ReadBack},
        {"read-record", &VariantModel::ReadRecord},
        {"read-for-nobody", &VariantModel::ReadForNobody},
        {"name-format", &VariantModel::NameFormat},
    };

private:
    struct Kept
    {
        Ref<IVariant> variant;
        Value value;
    };

    IObject* GetObject(std::size_t object) const { return values_.GetObjects().Get(object); }
    IVariant* Find(std::uint32_t number) const { return kept_[number % VariantCount].variant.Get(); }

    template <class Create>
    void Keep(const Step& step, Value value, Create&& create)
    {
        auto variant = check::Make<IVariant>(trial_, "a creation", create);
        kept_[step.second % VariantCount] = {std::move(variant), std::move(value)};
    }

    // In how many places it is kept.
    std::size_t CountPlaces(const Ref<IVariant>& variant) const
    {
        return static_cast<std::size_t>(std::count_if(kept_.begin(), kept_.end(),
                                                      [&](const Kept& kept)
                                                      { return variant && kept.variant.Get() == variant.Get(); }));
    }

    // How many variants hold it; one that is kept in several places is one.
    template <class Held>
    int CountVariants(const Held& held) const
    {
        int count = 0;
        for (auto kept = kept_.begin(); kept != kept_.end(); ++kept)
        {
            const bool isFirst = std::none_of(
                kept_.begin(), kept, [&](const Kept& before) { return before.variant.Get() == kept->variant.Get(); });
            count += kept->variant && isFirst && kept->value == Value(held) ? 1 : 0;
        }
        return count;
    }

    Ref<IDeserializable> GetReading() { return trial_.QueryAs<IDeserializable>(factory_, "the factory"); }

    check::Trial& trial_;
    VariantValues values_;
    Ref<IVariantFactory> factory_;
    std::array<Kept, VariantCount> kept_;
};

constexpr auto Names = GetNames(VariantModel::Operations);

}  // namespace

const Walk VariantWalk = {"variant", check::VariantExport, Names, &VariantModel::Start};

}  // namespace tvx::fuzz
