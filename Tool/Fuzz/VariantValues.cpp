// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/VariantValues.h"

#include "Tool/Checks/VariantRecords.h"

#include <cstring>
#include <type_traits>

namespace tvx::fuzz
{

namespace
{

bool HasSameBits(double left, double right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

// Looks at what a variant gives.
class Looking
{
public:
    Looking(check::Trial& trial, const VariantValues& values, IVariant& variant)
        : trial_(trial),
          values_(values),
          variant_(variant)
    {
    }

    void operator()(bool due) const { trial_.Equal("GetBool", Get(&IVariant::GetBool), due); }
    void operator()(std::int32_t due) const { trial_.Equal("GetInt", Get(&IVariant::GetInt), due); }
    void operator()(float due) const { trial_.Equal("GetFloat", Get(&IVariant::GetFloat), due); }

    void operator()(double due) const
    {
        const auto came = Get(&IVariant::GetDouble);
        trial_.Expect(HasSameBits(came, due), "GetDouble to give " + check::Show(due) + " bit for bit",
                      check::Show(came));
    }

    void operator()(const std::string& due) const
    {
        const auto text = GetString();
        trial_.Expect(static_cast<bool>(text), "GetString to give a text", "null");
        trial_.Equal("the text", text->GetText(), due);
        trial_.Equal("the length of the text", text->GetLength(), static_cast<std::uint32_t>(due.size()));
        trial_.Equal("the references on a text that a variant and its asker hold", text->GetRefCount(), 2u);
    }

    void operator()(SharedText due) const
    {
        trial_.Same("the text that is shared", GetString().Get(), values_.GetText(due.place));
    }

    // Whatever was in the out before, also where null comes.
    void operator()(std::size_t due) const
    {
        IObject* object = &variant_;
        const auto result = variant_.GetObject(&object);
        const auto held = Ref<IObject>::Adopt(object == &variant_ ? nullptr : object);
        trial_.Gives("GetObject", result, TVX_OK);
        trial_.Same("the object", object, values_.GetObjects().Get(due));
    }

private:
    template <class Number>
    Number Get(Result (IVariant::*getter)(Number*)) const
    {
        Number number{};
        trial_.Gives("the getter of the own type", (variant_.*getter)(&number), TVX_OK);
        return number;
    }

    Ref<IString> GetString() const
    {
        Ref<IString> text;
        trial_.Gives("GetString", variant_.GetString(text.Receive()), TVX_OK);
        return text;
    }

    check::Trial& trial_;
    const VariantValues& values_;
    IVariant& variant_;
};

// Asks a getter for what it has to refuse. The type comes first: only the getter of the own one looks at its out.
struct InVain
{
    template <class Out>
    void operator()(std::int32_t asked, Result (IVariant::*getter)(Out*), std::common_type_t<Out> mark) const
    {
        const auto askWithoutOut = [&] { return (variant.*getter)(nullptr); };
        if (asked == type)
            return trial.Reports("the getter of the own type with a null out", "TVX_RETURN_EPOINTER_IF_NULL",
                                 TVX_E_POINTER, askWithoutOut);
        Out out = mark;
        trial.Gives("the getter of another type", (variant.*getter)(&out), TVX_E_FAIL);
        trial.Equal("whether the getter of another type leaves its out alone", out == mark, true);
        trial.Gives("the getter of another type with a null out", askWithoutOut(), TVX_E_FAIL);
    }

    check::Trial& trial;
    IVariant& variant;
    std::int32_t type;
};

// Writes the entry "value".
class Writing
{
public:
    Writing(const VariantValues& values, ISerializer& writer) : values_(values), writer_(writer) {}

    void operator()(bool value) const { writer_.WriteNamedBool("value", value); }
    void operator()(std::int32_t value) const { writer_.WriteNamedInt("value", value); }
    void operator()(float value) const { writer_.WriteNamedDouble("value", double{value}); }
    void operator()(double value) const { writer_.WriteNamedDouble("value", value); }
    void operator()(const std::string& value) const { writer_.WriteNamedString("value", value.c_str()); }
    void operator()(std::size_t value) const { writer_.WriteNamedObject("value", values_.GetObjects().Get(value)); }
    void operator()(SharedText value) const
    {
        writer_.WriteNamedString("value", values_.GetText(value.place)->GetText());
    }

private:
    const VariantValues& values_;
    ISerializer& writer_;
};

// The value of a record when it is of this kind.
template <class Held>
const Held* FindValue(const check::ScriptedReader& record)
{
    const auto found = record.named.find("value");
    return found == record.named.end() ? nullptr : std::get_if<Held>(&found->second);
}

template <class Held>
Held TakeOrZero(const check::ScriptedReader& record)
{
    const auto* const held = FindValue<Held>(record);
    return held == nullptr ? Held{} : *held;
}

Value TakeText(const check::ScriptedReader& record)
{
    const auto* const text = FindValue<std::string>(record);
    return text == nullptr ? Value(SharedText{0}) : Value(*text);
}

}  // namespace

std::int32_t GetType(const Value& value)
{
    const bool isShared = std::holds_alternative<SharedText>(value);
    return isShared ? IVariant::TypeString : static_cast<std::int32_t>(value.index()) + 1;
}

VariantValues::VariantValues(check::Trial& trial) : trial_(trial)
{
    for (std::size_t text = 1; text < TextCount; ++text)
        texts_[text] = MakeRef<host::HostString>("text " + std::to_string(text));
}

void VariantValues::Compare(IVariant& variant, const Value& due) const
{
    trial_.Equal("GetType", variant.GetType(), fuzz::GetType(due));
    std::visit(Looking(trial_, *this, variant), due);
}

void VariantValues::AskInVain(IVariant& variant, const Value& held, std::uint32_t number) const
{
    const InVain ask{trial_, variant, fuzz::GetType(held)};
    ask(IVariant::TypeBool, &IVariant::GetBool, number % 2 == 0);
    ask(IVariant::TypeInt, &IVariant::GetInt, static_cast<std::int32_t>(number));
    ask(IVariant::TypeFloat, &IVariant::GetFloat, -99.5f);
    ask(IVariant::TypeDouble, &IVariant::GetDouble, -99.25);
    ask(IVariant::TypeString, &IVariant::GetString, texts_[1].Get());
    ask(IVariant::TypeObject, &IVariant::GetObject, objects_.Get(1));
}

void VariantValues::Write(const Value& value, ISerializer& writer) const
{
    writer.WriteNamedInt("type", fuzz::GetType(value));
    std::visit(Writing(*this, writer), value);
}

Ref<check::ScriptedReader> VariantValues::MakeRecord(const Step& step) const
{
    auto record = check::MakeRecord(static_cast<std::int32_t>(step.first % 9) - 1);
    auto& value = record->named["value"];
    switch (step.first / 9 % 6)
    {
    case 0: value = step.second % 2 == 0; break;
    case 1: value = static_cast<std::int32_t>(step.second); break;
    case 2: value = static_cast<std::int32_t>(step.second) / 3.0; break;
    case 3: value = std::string(step.second % 40, 't'); break;
    case 4: value = Ref<IObjectBase>(objects_.Get(ObjectPool::Choose(step.second))); break;
    default: record->named.erase("value");
    }
    return record;
}

std::optional<Value> VariantValues::Foresee(const check::ScriptedReader& record) const
{
    switch (std::get<std::int32_t>(record.named.at("type")))
    {
    case IVariant::TypeBool: return TakeOrZero<bool>(record);
    case IVariant::TypeInt: return TakeOrZero<std::int32_t>(record);
    case IVariant::TypeFloat: return static_cast<float>(TakeOrZero<double>(record));
    case IVariant::TypeDouble: return TakeOrZero<double>(record);
    case IVariant::TypeString: return TakeText(record);
    case IVariant::TypeObject: return objects_.Find(Query<IObject>(TakeOrZero<Ref<IObjectBase>>(record)).Get());
    default: return std::nullopt;
    }
}

}  // namespace tvx::fuzz
