// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/TableWalker.h"

#include <array>
#include <cstring>
#include <string>
#include <variant>

namespace tvx::fuzz
{

namespace
{

using Value = std::variant<bool, std::int32_t, float, double, std::string, std::size_t>;

// The alternatives of Value, whose places are the type tags less one.
constexpr std::size_t OfObject = 5;
constexpr std::size_t VariantCount = 8;

// Any bits are a number, also those that are none.
double MakeDouble(const Step& step)
{
    const auto bits = (std::uint64_t{step.first} << 32) | step.second;
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <class Number>
bool HasSameBits(Number left, Number right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

// Some variants beside what each was made from.
class VariantModel final : public TableWalker<VariantModel>
{
public:
    explicit VariantModel(check::Trial& trial)
        : trial_(trial),
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
        Keep(step, object, [&](IVariant** out) { return factory_->CreateObject(objects_.Get(object), out); });
    }

    void Ask(const Step& step)
    {
        const auto& [variant, value] = kept_[step.first % VariantCount];
        if (variant)
            CompareOne(*variant, value);
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

    void Compare() override
    {
        for (const auto& [variant, value] : kept_)
        {
            if (variant)
                CompareOne(*variant, value);
        }
        objects_.Compare(trial_, [&](std::size_t object) { return Count(object); });
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
    };

private:
    struct Kept
    {
        Ref<IVariant> variant;
        Value value;
    };

    template <class Create>
    void Keep(const Step& step, Value value, Create&& create)
    {
        auto variant = check::Make<IVariant>(trial_, "a creation", create);
        kept_[step.second % VariantCount] = {std::move(variant), std::move(value)};
    }

    int Count(std::size_t object) const
    {
        int count = 0;
        for (const auto& kept : kept_)
            count += kept.variant && kept.value == Value(std::in_place_index<OfObject>, object) ? 1 : 0;
        return count;
    }

    // The value of a getter.
    template <class Number>
    Number Get(IVariant& variant, Result (IVariant::*getter)(Number*))
    {
        Number number{};
        trial_.Gives("the getter of the own type", (variant.*getter)(&number), TVX_OK);
        return number;
    }

    void CompareOne(IVariant& variant, const Value& value)
    {
        trial_.Equal("GetType", variant.GetType(), static_cast<std::int32_t>(value.index()) + 1);
        std::visit([&](const auto& due) { CompareValue(variant, due); }, value);
    }

    void CompareValue(IVariant& variant, bool due) { trial_.Equal("GetBool", Get(variant, &IVariant::GetBool), due); }

    void CompareValue(IVariant& variant, std::int32_t due)
    {
        trial_.Equal("GetInt", Get(variant, &IVariant::GetInt), due);
    }

    void CompareValue(IVariant& variant, float due)
    {
        trial_.Equal("GetFloat", Get(variant, &IVariant::GetFloat), due);
    }

    void CompareValue(IVariant& variant, double due)
    {
        const auto came = Get(variant, &IVariant::GetDouble);
        trial_.Expect(HasSameBits(came, due), "GetDouble to give " + check::Show(due) + " bit for bit",
                      check::Show(came));
    }

    void CompareValue(IVariant& variant, const std::string& due)
    {
        Ref<IString> text;
        trial_.Gives("GetString", variant.GetString(text.Receive()), TVX_OK);
        trial_.Expect(static_cast<bool>(text), "GetString to give a text", "null");
        trial_.Equal("the text", text->GetText(), due);
    }

    void CompareValue(IVariant& variant, std::size_t due)
    {
        Ref<IObject> object;
        trial_.Gives("GetObject", variant.GetObject(object.Receive()), TVX_OK);
        trial_.Same("the object", object.Get(), objects_.Get(due));
    }

    check::Trial& trial_;
    ObjectPool objects_;
    Ref<IVariantFactory> factory_;
    std::array<Kept, VariantCount> kept_;
};

constexpr auto Names = GetNames(VariantModel::Operations);

}  // namespace

const Walk VariantWalk = {"variant", check::VariantExport, Names, &VariantModel::Start};

}  // namespace tvx::fuzz
