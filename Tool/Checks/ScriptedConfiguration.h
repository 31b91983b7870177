// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/IConfigurable.h"

#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tvx::check
{

// A configuration of the caller's own values. Reads of a value that is there give the result; of any other -1, with out left
// untouched. Class, which is derived from this, hands out the texts.
template <class Class>
class ScriptedConfigurationImpl : public ClassImpl<Class, IConfiguration>
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;
    using Value = std::variant<bool, std::int32_t, std::string>;
    using Values = std::map<std::string, Value>;

    explicit ScriptedConfigurationImpl(Values content = {}, Result found = TVX_OK)
        : values(std::move(content)),
          result(found)
    {
    }

    Result UnusedSlot11() override { return Record("UnusedSlot11", "", 0); }
    Result UnusedSlot14() override { return Record("UnusedSlot14", "", 0); }

    Result GetBool(const char* key, bool* out, std::uint32_t flags) override
    {
        Record("GetBool", key, flags);
        return Read(key, out);
    }

    Result GetInt(const char* key, std::int32_t* out, std::uint32_t flags) override
    {
        Record("GetInt", key, flags);
        return Read(key, out);
    }

    Values values;
    Result result;
    std::vector<std::string> reads;  // such as: GetInt Main\MinLevel 0

protected:
    ~ScriptedConfigurationImpl() = default;

    Result Record(const std::string& operation, const char* key, std::uint32_t flags)
    {
        reads.push_back(operation + " " + (key == nullptr ? "null" : key) + " " + std::to_string(flags));
        return TVX_E_FAIL;
    }

    template <class Wanted>
    Result Read(const char* key, Wanted* out)
    {
        const auto found = key == nullptr ? values.end() : values.find(key);
        if (found == values.end() || !std::holds_alternative<Wanted>(found->second))
            return TVX_E_FAIL;
        *out = std::get<Wanted>(found->second);
        return result;
    }
};

}  // namespace tvx::check
