// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/TableWalker.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tvx::fuzz
{

namespace
{

constexpr std::int32_t OfNothing = 0;
constexpr std::int32_t OfBool = 1;
constexpr std::int32_t OfInt = 2;
constexpr std::int32_t OfFloat = 3;
constexpr std::int32_t OfDouble = 4;
constexpr std::int32_t OfString = 5;
constexpr std::int32_t OfObject = 6;

// A variant array beside a vector of types and numbers from which its elements were made.
class VariantArrayModel final : public TableWalker<VariantArrayModel>
{
public:
    explicit VariantArrayModel(check::Trial& trial) : trial_(trial), array_(check::MakeVariantArray(trial)) {}

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

    void AppendNull(const Step&) { Append(OfNothing, 0, array_->AppendVariant(nullptr)); }

    // An element of the array itself, which then stands in it twice.
    void AppendElement(const Step& step)
    {
        if (model_.empty())
            return;
        const auto index = step.first % static_cast<std::uint32_t>(model_.size());
        Ref<IVariant> element;
        trial_.Gives("GetAt", array_->GetAt(index, element.Receive()), TVX_OK);
        const auto same = model_[index];
        Append(same.type, same.number, array_->AppendVariant(element.Get()));
        model_.back().sharesVariant = true;
        Ref<IVariant> last;
        trial_.Gives("GetAt", array_->GetAt(static_cast<std::uint32_t>(model_.size()) - 1, last.Receive()), TVX_OK);
        trial_.Same("an element that was appended again", last.Get(), element.Get());
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

    void Compare() override
    {
        std::uint32_t size = 0;
        trial_.Gives("GetSize", array_->GetSize(&size), TVX_OK);
        trial_.Equal("the size", size, static_cast<std::uint32_t>(model_.size()));
        for (std::uint32_t index = 0; index < size; ++index)
            CompareElement(index);
        CompareReferences();
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
    };

private:
    struct Element
    {
        std::int32_t type;
        std::int32_t number;
        bool sharesVariant;  // with an element before it
    };

    static std::int32_t GetNumber(const Step& step) { return static_cast<std::int32_t>(step.first); }

    void Append(std::int32_t type, std::int32_t number, Result result)
    {
        trial_.Gives("an append", result, TVX_OK);
        model_.push_back({type, number, false});
    }

    void CompareElement(std::uint32_t index)
    {
        Ref<IVariant> element;
        trial_.Gives("GetAt", array_->GetAt(index, element.Receive()), TVX_OK);
        const auto& due = model_[index];
        trial_.Equal("whether an element is null", !element, due.type == OfNothing);
        if (element)
            trial_.Equal("the type and value of an element", Describe(*element), Describe(due));
    }

    static std::string Describe(const Element& due)
    {
        const auto quarters = check::Show(due.number / 4.0);
        switch (due.type)
        {
        case OfBool: return due.number == 1 ? "bool true" : "bool false";
        case OfInt: return "int " + std::to_string(due.number);
        case OfFloat: return "float " + quarters;
        case OfDouble: return "double " + quarters;
        case OfString: return "string " + std::to_string(due.number);
        default: return "object " + std::to_string(due.number);
        }
    }

    template <class Value>
    static Value Get(IVariant& element, Result (IVariant::*getter)(Value*))
    {
        Value value{};
        static_cast<void>((element.*getter)(&value));
        return value;
    }

    std::string Describe(IVariant& element) const
    {
        switch (element.GetType())
        {
        case OfBool: return Get(element, &IVariant::GetBool) ? "bool true" : "bool false";
        case OfInt: return "int " + std::to_string(Get(element, &IVariant::GetInt));
        case OfFloat: return "float " + check::Show(double{Get(element, &IVariant::GetFloat)});
        case OfDouble: return "double " + check::Show(Get(element, &IVariant::GetDouble));
        case OfString: return DescribeString(element);
        case OfObject: return DescribeObject(element);
        default: return "another type";
        }
    }

    static std::string DescribeString(IVariant& element)
    {
        Ref<IString> text;
        static_cast<void>(element.GetString(text.Receive()));
        return text && text->GetText() != nullptr ? std::string("string ") + text->GetText() : "no string";
    }

    std::string DescribeObject(IVariant& element) const
    {
        Ref<IObject> object;
        static_cast<void>(element.GetObject(object.Receive()));
        return "object " + std::to_string(objects_.Find(object.Get()));
    }

    // Each variant holds one; an element that stands in the array twice is one variant.
    void CompareReferences()
    {
        objects_.Compare(trial_,
                         [&](std::size_t object)
                         {
                             return std::count_if(model_.begin(), model_.end(),
                                                  [&](const Element& due) {
                                                      return due.type == OfObject && !due.sharesVariant &&
                                                             due.number == static_cast<std::int32_t>(object);
                                                  });
                         });
    }

    check::Trial& trial_;
    ObjectPool objects_;
    Ref<IVariantArray> array_;
    std::vector<Element> model_;
};

constexpr auto Names = GetNames(VariantArrayModel::Operations);

}  // namespace

const Walk VariantArrayWalk = {"variant-array", check::VariantArrayExport, Names, &VariantArrayModel::Start};

}  // namespace tvx::fuzz
