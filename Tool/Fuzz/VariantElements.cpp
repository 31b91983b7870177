// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/VariantElements.h"

#include "Tool/Checks/Lines.h"
#include "Tool/Fuzz/AnyObject.h"

namespace tvx::fuzz
{

namespace
{

template <class Value>
Value Get(IVariant& element, Result (IVariant::*getter)(Value*))
{
    Value value{};
    static_cast<void>((element.*getter)(&value));
    return value;
}

std::string DescribeString(IVariant& element)
{
    Ref<IString> text;
    static_cast<void>(element.GetString(text.Receive()));
    return text && text->GetText() != nullptr ? std::string("string ") + text->GetText() : "no string";
}

std::string DescribeObject(IVariant& element, const ObjectPool& objects)
{
    Ref<IObject> object;
    static_cast<void>(element.GetObject(object.Receive()));
    return "object " + std::to_string(objects.Find(object.Get()));
}

}  // namespace

std::string Describe(const Element& due)
{
    const auto quarters = check::Show(due.number / 4.0);
    switch (due.type)
    {
    case OfBool: return due.number == 1 ? "bool true" : "bool false";
    case OfInt: return "int " + std::to_string(due.number);
    case OfFloat: return "float " + quarters;
    case OfDouble: return "double " + quarters;
    case OfString: return "string " + std::to_string(due.number);
    case OfEmptyString: return "string ";
    default: return "object " + std::to_string(due.number);
    }
}

std::string Describe(IVariant& element, const ObjectPool& objects)
{
    switch (element.GetType())
    {
    case OfBool: return Get(element, &IVariant::GetBool) ? "bool true" : "bool false";
    case OfInt: return "int " + std::to_string(Get(element, &IVariant::GetInt));
    case OfFloat: return "float " + check::Show(double{Get(element, &IVariant::GetFloat)});
    case OfDouble: return "double " + check::Show(Get(element, &IVariant::GetDouble));
    case OfString: return DescribeString(element);
    case OfObject: return DescribeObject(element, objects);
    default: return "another type";
    }
}

Ref<check::ScriptedReader> MakeRecord(const Step& step, std::span<const HeldElement> held, const ObjectPool& objects,
                                      std::vector<Element>& due)
{
    const auto size = static_cast<std::int32_t>(step.first % 12) - 2;
    auto record = MakeRef<check::ScriptedReader>();
    if (size != -2)
        record->named["size"] = size;
    for (std::int32_t index = 0; index < size; ++index)
    {
        const auto choice = (step.second >> (3 * index)) & 7;
        const auto name = "param" + std::to_string(index);
        due.push_back(choice < held.size() ? held[choice].element : Element());
        if (choice < held.size())
            record->named[name] = Ref<IObjectBase>(held[choice].variant);
        else if (choice < ObjectPool::Size)
            record->named[name] = Ref<IObjectBase>(objects.Get(choice));
        else if (choice == ObjectPool::Size)
            record->named[name] = index;
    }
    return record;
}

void CompareReading(check::Trial& trial, check::ScriptedReader& record)
{
    check::Lines due{"ReadNamedInt size"};
    for (std::size_t index = 1; index < record.calls.size(); ++index)
        due.push_back("ReadNamedObject param" + std::to_string(index - 1));
    trial.Equal("the calls that read", record.calls, due);
    CompareCount(trial, "a reader afterwards", record, 1);
}

}  // namespace tvx::fuzz
