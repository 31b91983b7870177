// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Host/HostString.h"
#include "Interfaces/IConfigurable.h"
#include "Interfaces/ILibManager.h"
#include "Interfaces/ILogger.h"

#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// What a host gives its logger: each does what it is told and records what is asked of it.
namespace tvx::check
{

// A configuration of the check's own values. Reads of a value that is there give the result; of any other -1, with out left
// untouched.
class ScriptedConfiguration final : public ClassImpl<ScriptedConfiguration, IConfiguration>
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;
    using Value = std::variant<bool, std::int32_t, std::string>;
    using Values = std::map<std::string, Value>;

    explicit ScriptedConfiguration(Values content = {}, Result found = TVX_OK)
        : values(std::move(content)),
          result(found)
    {
    }

    Result QueryInterface(const char* id, void** out) override
    {
        queries.emplace_back(id == nullptr ? "null" : id);
        return DoQueryInterface(id, out);
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

    // The texts that were handed out are kept, so that a check sees whether they were released.
    Result GetString(const char* key, IString** out, std::uint32_t flags) override
    {
        Record("GetString", key, flags);
        std::string text;
        const auto found = Read(key, &text);
        if (text.empty() && TVX_FAILED(found))
            return found;
        texts.push_back(MakeRef<host::HostString>(text));
        HandOut<IString>(texts.back().Get(), out);
        return found;
    }

    Values values;
    Result result;
    std::vector<std::string> reads;  // such as: GetInt Main\MinLevel 0
    std::vector<std::string> queries;
    std::vector<Ref<host::HostString>> texts;

private:
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

// Lists the plug-ins with a text and a result of the check's own.
class ListingLibManager final : public ClassImpl<ListingLibManager, ILibManager>
{
public:
    using Interfaces = InterfaceList<ILibManager, IObject, IObjectBase>;

    explicit ListingLibManager(const char* list, Result result = TVX_OK)
        : text(MakeRef<host::HostString>(list)),
          result_(result)
    {
    }

    Result GetInstalledPluginsVersions(IString** out) override
    {
        ++calls;
        HandOut<IString>(text.Get(), out);
        return result_;
    }

    Ref<host::HostString> text;
    int calls = 0;

private:
    Result result_;
};

class RecordingCrashDumpServer final : public ClassImpl<RecordingCrashDumpServer, ICrashDumpServer>
{
public:
    using Interfaces = InterfaceList<ICrashDumpServer, IObject, IObjectBase>;

    explicit RecordingCrashDumpServer(Result result = TVX_OK) : result_(result) {}

    Result AddFile(const char* path, const char* label) override
    {
        files.emplace_back(path == nullptr ? "null" : path);
        labels.emplace_back(label == nullptr ? "null" : label);
        return result_;
    }

    std::vector<std::string> files;
    std::vector<std::string> labels;

private:
    Result result_;
};

}  // namespace tvx::check
