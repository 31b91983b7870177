// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Host/HostString.h"
#include "Interfaces/ILibManager.h"
#include "Interfaces/ILogger.h"
#include "Tool/Checks/ScriptedConfiguration.h"

#include <string>
#include <vector>

// What a host gives its logger: each does what it is told and records what is asked of it.
namespace tvx::check
{

class ScriptedConfiguration final : public ScriptedConfigurationImpl<ScriptedConfiguration>
{
public:
    using ScriptedConfigurationImpl::ScriptedConfigurationImpl;

    Result QueryInterface(const char* id, void** out) override
    {
        queries.emplace_back(id == nullptr ? "null" : id);
        return DoQueryInterface(id, out);
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

    std::vector<std::string> queries;
    std::vector<Ref<host::HostString>> texts;
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
