// SPDX-License-Identifier: MIT
#include "Tool/Checks/Serialising.h"
#include "Tool/Checks/SlotChecking.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/TableWalker.h"
#include "Tool/Fuzz/VariantArrayRefusals.h"
#include "Tool/Fuzz/VariantElements.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

namespace tvx::fuzz
{

namespace
{

constexpr const char FormatId[] = "com.talvere.general.tvx.GenericVariantArrayImplementationFormat/1.0";

// A variant array beside a vector of types and numbers from which its elements were made.
class VariantArrayModel final : public TableWalker<VariantArrayModel>
{
public:
    explicit VariantArrayModel(check::Trial& trial)
        : trial_(trial),
          reading_(trial.Get<IDeserializable>(check::VariantArrayExport)),
          array_(check::MakeVariantArray(trial))
    {
    }

    void AppendObject(const Step& step)
    {
        const auto object = ObjectPool::Choose(step.first);
        Append(OfObject, static_cast<std::int32_t>(object), array_->AppendObject(objects_.Get(object)));
    }

    void AppendString(const Step& step)
    {
        const auto number = GetNumber(step);
        Append(OfString, number, array_->AppendString(std::to_string(number).c_str()));
    }

    void AppendDouble(const Step& step)
    {
        const auto number = GetNumber(step);
        Append(OfDouble, number, array_->AppendDouble(number / 4.0));
    }

    void AppendFloat(const Step& step)
    {
        const auto number = GetNumber(step) % 1'000'000;
        Append(OfFloat, number, array_->AppendFloat(static_cast<float>(number) / 4.0f));
    }

    void AppendInt(const Step& step)
    {
        const auto number = GetNumber(step);
        Append(OfInt, number, array_->AppendInt(number));
    }

    void AppendBool(const Step& step)
    {
        const bool value = step.first % 2 == 1;
        Append(OfBool, value ? 1 : 0, array_->AppendBool(value));
    }

    void AppendNull(const Step&) { AppendKnown({}, array_->AppendVariant(nullptr)); }

    // An element of the array itself, which then stands in it twice.
    void AppendElement(const Step& step)
    {
        if (model_.empty())
            return;
        const auto index = ChooseIndex(step);
        const auto element = GetAt(index);
        AppendKnown(Element(model_[index]), array_->AppendVariant(element.Get()));
        trial_.Same("an element that was appended again", GetAt(model_.size() - 1).Get(), element.Get());
    }

    void GetBehindTheEnd(const Step& step)
    {
        const auto index = static_cast<std::uint32_t>(model_.size()) + step.first % 3;
        Ref<IVariant> element;
        trial_.Reports("GetAt behind the end", "TVX_RETURN_FAIL_IF", TVX_E_FAIL,
                       [&] { return array_->GetAt(index, element.Receive()); });
        trial_.Same("the out of GetAt behind the end", element.Get(), nullptr);
    }

    void StartAnew(const Step& step)
    {
        if (step.first % 16 != 0)
            return;
        array_ = check::MakeVariantArray(trial_);
        model_.clear();
    }

    void TryRefused(const Step& step) { TryVariantArrayRefused(trial_, array_, GetSize(), step.first); }

    void GetForNobody(const Step& step)
    {
        if (!model_.empty())
            trial_.Gives("GetAt with a null out", array_->GetAt(ChooseIndex(step), nullptr), TVX_E_POINTER);
    }

    void AppendNullString(const Step&) { Append(OfEmptyString, 0, array_->AppendString(nullptr)); }

    // A variant of another make, which is an element like the others.
    void AppendForeign(const Step& step)
    {
        const auto number = GetNumber(step);
        const Ref<IVariant> variant(MakeRef<check::FixedVariant>(number));
        Append(OfInt, number, array_->AppendVariant(variant.Get()));
        trial_.Same("an element of another make", GetAt(model_.size() - 1).Get(), variant.Get());
    }

    // From now on the element lives as long as it is held, whatever becomes of the array.
    void Hold(const Step& step)
    {
        if (model_.empty())
            return;
        const auto index = ChooseIndex(step);
        held_[step.second % held_.size()] = {GetAt(index), model_[index]};
    }

    void LetGo(const Step& step) { held_[step.first % held_.size()] = {}; }

    void AppendHeld(const Step& step)
    {
        const auto& held = held_[step.first % held_.size()];
        AppendKnown(held.element, array_->AppendVariant(held.variant.Get()));
    }

    // A writer that fails is written to all the same, an element that is null ends it.
    void Serialize(const Step& step)
    {
        const auto written = FindNull();
        const auto writer = MakeRef<check::RecordingWriter>(step.first % 2 == 0 ? TVX_OK : -42);
        const auto face = trial_.QueryAs<ISerializable>(array_, "an array");
        trial_.Gives("Serialize", face->Serialize(writer.Get()), written == model_.size() ? TVX_OK : TVX_E_FAIL);
        check::Lines due{"WriteNamedInt size " + std::to_string(model_.size())};
        for (std::size_t index = 0; index < written; ++index)
            due.push_back("WriteNamedObject param" + std::to_string(index));
        trial_.Equal("what Serialize writes", writer->calls, due);
        for (std::size_t index = 0; index < written; ++index)
        {
            const IObjectBase* const object = Query<ISerializable>(GetAt(index)).Get();
            trial_.Same("the object that Serialize writes", writer->objects[index].Get(), object);
        }
    }

    // The array that was read has the very elements of the one that was written, which goes.
    void ReadBack(const Step&)
    {
        if (FindNull() == model_.size())
            array_ = check::Copy(trial_, check::VariantArrayExport, array_);
    }

    // What is missing or no variant becomes a null element. Rarely: the array that was there goes.
    void ReadRecord(const Step& step)
    {
        if (step.second >> 30 != 0)
            return;
        std::vector<Element> due;
        const auto record = MakeRecord(step, held_, objects_, due);
        array_ = check::ReadAs<IVariantArray>(trial_, check::VariantArrayExport, *record);
        model_ = std::move(due);
        CompareReading(trial_, *record);
    }

    // Everything is read, and given up.
    void ReadForNobody(const Step& step)
    {
        std::vector<Element> due;
        const auto record = MakeRecord(step, held_, objects_, due);
        trial_.Gives("Deserialize with a null out", reading_->Deserialize(record.Get(), nullptr), TVX_E_POINTER);
        trial_.Equal("the number of reads", record->calls.size(), 1 + due.size());
        CompareReading(trial_, *record);
    }

    void NameFormat(const Step&) { check::ExpectFormat(trial_, check::VariantArrayExport, array_, FormatId); }

    void AskAsObject(const Step& step) { fuzz::AskAsObject(trial_, "an array", array_, step.first); }

    void StartBeforeWitnesses(const Step& step)
    {
        if (step.first % 8 != 0)
            return;
        EndBeforeWitnesses(trial_, "an array", array_);
        StartAnew({0, 0, 0});
    }

    void Compare() override
    {
        std::uint32_t size = 0;
        trial_.Gives("GetSize", array_->GetSize(&size), TVX_OK);
        trial_.Equal("the size", size, GetSize());
        CompareCount(trial_, "an array", *array_, 1);
        for (std::size_t index = 0; index < size; ++index)
            CompareVariant(GetAt(index), model_[index], 1);
        for (const auto& [variant, element] : held_)
            CompareVariant(variant, element, 0);
        objects_.Compare(trial_, [&](std::size_t object) { return CountVariants(object); });
    }

    static constexpr Operation<VariantArrayModel> Operations[] = {
        {"append-object", &VariantArrayModel::AppendObject},
        {"append-string", &VariantArrayModel::AppendString},
        {"append-double", &VariantArrayModel::AppendDouble},
        {"append-float", &VariantArrayModel::AppendFloat},
        {"append-int", &VariantArrayModel::AppendInt},
        {"append-bool", &VariantArrayModel::AppendBool},
        {"append-null", &VariantArrayModel::AppendNull},
        {"append-element", &VariantArrayModel::AppendElement},
        {"get-behind-the-end", &VariantArrayModel::GetBehindTheEnd},
        {"start-anew", &VariantArrayModel::StartAnew},
        {"try-refused", &VariantArrayModel::TryRefused},
        {"get-for-nobody", &VariantArrayModel::GetForNobody},
        {"append-null-string", &VariantArrayModel::AppendNullString},
        {"append-foreign", &VariantArrayModel::AppendForeign},
        {"hold", &VariantArrayModel::Hold},
        {"let-go", &VariantArrayModel::LetGo},
        {"append-held", &VariantArrayModel::AppendHeld},
        {"serialize", &VariantArrayModel::Serialize},
        {"read-back", &VariantArrayModel::ReadBack},
        {"read-record", &VariantArrayModel::ReadRecord},
        {"read-for-nobody", &VariantArrayModel::ReadForNobody},
        {"name-format", &VariantArrayModel::NameFormat},
        {"ask-as-object", &VariantArrayModel::AskAsObject},
        {"start-before-witnesses", &VariantArrayModel::StartBeforeWitnesses},
    };

private:
    std::uint32_t GetSize() const { return static_cast<std::uint32_t>(model_.size()); }

    std::uint32_t ChooseIndex(const Step& step) const { return step.first % GetSize(); }

    // The place of the first null element; the size when there is none.
    std::size_t FindNull() const
    {
        const auto found = std::find_if(model_.begin(), model_.end(),
                                        [](const Element& element) { return element.type == OfNothing; });
        return static_cast<std::size_t>(found - model_.begin());
    }

    Ref<IVariant> GetAt(std::size_t index)
    {
        Ref<IVariant> element;
        trial_.Gives("GetAt", array_->GetAt(static_cast<std::uint32_t>(index), element.Receive()), TVX_OK);
        return element;
    }

    static std::int32_t GetNumber(const Step& step) { return static_cast<std::int32_t>(step.first); }

    void Append(std::int32_t type, std::int32_t number, Result result) { AppendKnown({type, number, ++made_}, result); }

    void AppendKnown(const Element& element, Result result)
    {
        trial_.Gives("an append", result, TVX_OK);
        model_.push_back(element);
    }

    // The asker holds so many references of its own.
    void CompareVariant(const Ref<IVariant>& variant, const Element& due, std::size_t own)
    {
        trial_.Equal("whether an element is null", !variant, due.type == OfNothing);
        if (!variant)
            return;
        trial_.Equal("the type and value of an element", Describe(*variant, objects_), Describe(due));
        CompareCount(trial_, "an element", *variant, CountPlaces(due) + own);
    }

    template <class Visit>
    void VisitElements(Visit&& visit) const
    {
        std::for_each(model_.begin(), model_.end(), visit);
        for (const auto& held : held_)
            visit(held.element);
    }

    // Where the variant is kept: an element that stands in the array twice is one variant.
    std::size_t CountPlaces(const Element& due) const
    {
        std::size_t count = 0;
        VisitElements([&](const Element& element) { count += element.variant == due.variant ? 1u : 0u; });
        return count;
    }

    // The variants that hold an object.
    std::size_t CountVariants(std::size_t object) const
    {
        std::set<std::size_t> variants;
        VisitElements(
            [&](const Element& element)
            {
                if (element.type == OfObject && element.number == static_cast<std::int32_t>(object))
                    variants.insert(element.variant);
            });
        return variants.size();
    }

    check::Trial& trial_;
    ObjectPool objects_;
    Ref<IDeserializable> reading_;
    Ref<IVariantArray> array_;
    std::vector<Element> model_;
    std::array<HeldElement, 3> held_;
    std::size_t made_ = 0;  // the number of the last variant
};

constexpr auto Names = GetNames(VariantArrayModel::Operations);

}  // namespace

const Walk VariantArrayWalk = {"variant-array", check::VariantArrayExport, Names, &VariantArrayModel::Start};

}  // namespace tvx::fuzz
