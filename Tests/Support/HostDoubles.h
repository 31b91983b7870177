// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/IConfigurable.h"
#include "Interfaces/ILibManager.h"
#include "Interfaces/ISerializerFactory.h"

#include <string>
#include <utility>
#include <vector>

namespace tvx::test
{

// The calls that a double of the host's received, as lines, and what it answers to each.
class CallLog
{
public:
    explicit CallLog(Result result) : result_(result) {}

    Result Record(std::string call)
    {
        calls.push_back(std::move(call));
        return result_;
    }

    std::vector<std::string> calls;

private:
    Result result_;
};

// A configuration without values: reads leave out untouched.
class RecordingConfiguration final : public ClassImpl<RecordingConfiguration, IConfiguration>, public CallLog
{
public:
    using Interfaces = InterfaceList<IConfiguration, IObject, IObjectBase>;

    explicit RecordingConfiguration(Result result = TVX_OK) : CallLog(result) {}

    Result UnusedSlot11() override { return Record("UnusedSlot11"); }
    Result GetBool(const char* key, bool*, std::uint32_t flags) override { return RecordRead("GetBool", key, flags); }
    Result GetInt(const char* key, std::int32_t*, std::uint32_t flags) override
    {
        return RecordRead("GetInt", key, flags);
    }
    Result UnusedSlot14() override { return Record("UnusedSlot14"); }
    Result GetString(const char* key, IString**, std::uint32_t flags) override
    {
        return RecordRead("GetString", key, flags);
    }

private:
    Result RecordRead(const char* call, const char* key, std::uint32_t flags)
    {
        return Record(std::string(call) + " " + key + " " + std::to_string(flags));
    }
};

class RecordingLibManager final : public ClassImpl<RecordingLibManager, ILibManager>, public CallLog
{
public:
    using Interfaces = InterfaceList<ILibManager, IObject, IObjectBase>;

    explicit RecordingLibManager(Result result = TVX_OK) : CallLog(result) {}

    Result GetInstalledPluginsVersions(IString**) override { return Record("GetInstalledPluginsVersions"); }
};

class RecordingCrashDumpServer final : public ClassImpl<RecordingCrashDumpServer, ICrashDumpServer>, public CallLog
{
public:
    using Interfaces = InterfaceList<ICrashDumpServer, IObject, IObjectBase>;

    explicit RecordingCrashDumpServer(Result result = TVX_OK) : CallLog(result) {}

    Result AddFile(const char* path, const char* label) override
    {
        return Record("AddFile " + std::string(path) + " " + label);
    }
};

class RecordingSerializerFactory final : public ClassImpl<RecordingSerializerFactory, ISerializerFactory>,
                                         public CallLog
{
public:
    using Interfaces = InterfaceList<ISerializerFactory, IObject, IObjectBase>;

    explicit RecordingSerializerFactory(Result result = TVX_OK) : CallLog(result) {}

    Result CreateSerializer(ISerializer**) override { return Record("CreateSerializer"); }
    Result CreateDeserializer(IDeserializer**) override { return Record("CreateDeserializer"); }
};

class RecordingStringSerializer final : public ClassImpl<RecordingStringSerializer, IStringSerializer>, public CallLog
{
public:
    using Interfaces = InterfaceList<IStringSerializer, IObject, IObjectBase>;

    explicit RecordingStringSerializer(Result result = TVX_OK) : CallLog(result) {}

    Result Begin() override { return Record("Begin"); }
    Result End() override { return Record("End"); }
    Result GetText(IString**) override { return Record("GetText"); }
};

class RecordingStringDeserializer final : public ClassImpl<RecordingStringDeserializer, IStringDeserializer>,
                                          public CallLog
{
public:
    using Interfaces = InterfaceList<IStringDeserializer, IObject, IObjectBase>;

    explicit RecordingStringDeserializer(Result result = TVX_OK) : CallLog(result) {}

    Result Begin() override { return Record("Begin"); }
    Result End() override { return Record("End"); }
    Result SetText(IString* text) override { return Record("SetText " + std::string(text->GetText())); }
};

}  // namespace tvx::test
