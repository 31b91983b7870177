// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/HandOut.h"
#include "Helpers/Results.h"
#include "Interfaces/IMap.h"
#include "Interfaces/ISerializable.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace tvx
{

// The dictionary, for any module: Text is the module's own class of strings. One thread at a time.
//
// It writes null values, but a document with one cannot be read back: that is intended.
template <class Text>
class BasicMap final : public ClassImpl<BasicMap<Text>, IMap, ISerializable>
{
public:
    using Interfaces = InterfaceList<IMap, IObject, IObjectBase, ISerializable>;

    // The identifier of the format that dictionaries are serialised in.
    static constexpr const char FormatId[] = "com.talvere.general.tvx.GenericMapImplementationFormat/1.1";

    // The name of the one sequence in the document.
    static constexpr const char ValuesName[] = "Values";

    BasicMap() = default;

    // Empty first: a value that dies now may look in here.
    ~BasicMap() { Values().swap(values_); }

    // The old value is released when the new one is in place.
    Result SetValue(const char* key, IObject* value) override
    try
    {
        TVX_RETURN_EPOINTER_IF_NULL(key);
        const std::string_view text(key);
        const auto place = values_.lower_bound(text);
        if (place != values_.end() && place->first == text)
            place->second = Ref<IObject>(value);
        else
            values_.emplace_hint(place, text, Ref<IObject>(value));
        return TVX_OK;
    }
    catch (...)  // want of memory
    {
        return TVX_E_POINTER;
    }

    Result GetValue(const char* key, IObject** out) override { return Find(key, out); }

    Result LookupValue(const char* key, IObject** out) override { return Find(key, out); }

    Result GetFormatId(IString** out) override { return HandOutNew<Text>(out, FormatId); }

    Result Serialize(ISerializer* writer) override
    {
        TVX_RETURN_EPOINTER_IF_NULL(writer);
        writer->BeginArray(ValuesName);
        for (const auto& [key, value] : values_)
        {
            writer->WriteString(key.c_str());
            writer->WriteObject(value.Get());
        }
        writer->EndArray();
        return TVX_OK;
    }

private:
    using Values = std::map<std::string, Ref<IObject>, std::less<>>;

    Result Find(const char* key, IObject** out) const
    {
        TVX_RETURN_EPOINTER_IF_NULL(out);
        *out = nullptr;
        const auto found = key == nullptr ? values_.end() : values_.find(std::string_view(key));
        if (found == values_.end())
            return TVX_S_NOKEY;
        HandOut(found->second.Get(), out);
        return TVX_S_VALUE;
    }

    Values values_;
};

}  // namespace tvx
