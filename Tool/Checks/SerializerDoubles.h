// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/ISerializer.h"
#include "Tool/Checks/Doubles.h"

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tvx::check
{

// Records every call as a line such as: WriteNamedInt type 3. Objects are recorded by address and kept with a reference.
// Counted is the base that counts the references of the class derived from this.
template <class Counted>
class RecordingWriterImpl : public Counted
{
public:
    explicit RecordingWriterImpl(Result result = TVX_OK) : result_(result) {}

    Result WriteNamedBool(const char* name, bool value) override
    {
        return Record("WriteNamedBool " + ToText(name) + (value ? " true" : " false"));
    }
    Result WriteNamedInt(const char* name, std::int32_t value) override
    {
        return Record("WriteNamedInt " + ToText(name) + " " + std::to_string(value));
    }
    Result UnusedSlot9() override { return Record("UnusedSlot9"); }
    Result WriteNamedDouble(const char* name, double value) override
    {
        char text[64];
        std::snprintf(text, sizeof text, "%.17g", value);
        return Record("WriteNamedDouble " + ToText(name) + " " + ToText(text));
    }
    Result WriteNamedString(const char* name, const char* text) override
    {
        return Record("WriteNamedString " + ToText(name) + " " + ToText(text));
    }
    Result WriteNamedObject(const char* name, IObjectBase* object) override
    {
        objects.emplace_back(object);
        return Record("WriteNamedObject " + ToText(name));
    }
    Result UnusedSlot13() override { return Record("UnusedSlot13"); }
    Result BeginArray(const char* name) override { return Record("BeginArray " + ToText(name)); }
    Result UnusedSlot15() override { return Record("UnusedSlot15"); }
    Result UnusedSlot16() override { return Record("UnusedSlot16"); }
    Result UnusedSlot17() override { return Record("UnusedSlot17"); }
    Result UnusedSlot18() override { return Record("UnusedSlot18"); }
    Result WriteString(const char* text) override { return Record("WriteString " + ToText(text)); }
    Result WriteObject(IObjectBase* object) override
    {
        objects.emplace_back(object);
        return Record("WriteObject");
    }
    Result UnusedSlot21() override { return Record("UnusedSlot21"); }
    Result EndArray() override { return Record("EndArray"); }

    std::vector<std::string> calls;
    std::vector<Ref<IObjectBase>> objects;

protected:
    ~RecordingWriterImpl() = default;

    Result Record(std::string call)
    {
        calls.push_back(std::move(call));
        return result_;
    }

private:
    Result result_;
};

class RecordingWriter final : public RecordingWriterImpl<CountedImpl<RecordingWriter, ISerializer>>
{
public:
    using Interfaces = InterfaceList<ISerializer, IObjectBase>;
    using RecordingWriterImpl::RecordingWriterImpl;
};

// Reads from what was put in: named values, and one sequence of items. A value of another type or an absent one gives
// -1 and leaves out untouched. The announced count may differ from the number of items.
// Counted is the base that counts the references of the class derived from this, Text the class of the texts handed out.
template <class Counted, class Text>
class ScriptedReaderImpl : public Counted
{
public:
    using Value = std::variant<bool, std::int32_t, double, std::string, Ref<IObjectBase>>;

    Result ReadNamedBool(const char* name, bool* out) override { return Give("ReadNamedBool", named, name, out); }
    Result ReadNamedInt(const char* name, std::int32_t* out) override { return Give("ReadNamedInt", named, name, out); }
    Result UnusedSlot9() override { return Record("UnusedSlot9"); }
    Result ReadNamedDouble(const char* name, double* out) override { return Give("ReadNamedDouble", named, name, out); }
    Result ReadNamedString(const char* name, IString** out) override
    {
        Record("ReadNamedString " + ToText(name));
        const auto found = named.find(ToText(name));
        return found == named.end() ? TVX_E_FAIL : GiveString(found->second, out);
    }
    Result ReadNamedObject(const char* name, IObjectBase** out) override
    {
        Record("ReadNamedObject " + ToText(name));
        const auto found = named.find(ToText(name));
        return found == named.end() ? TVX_E_FAIL : GiveObject(found->second, out);
    }
    Result UnusedSlot13() override { return Record("UnusedSlot13"); }
    Result BeginArray(const char* name, std::uint32_t* count) override
    {
        Record("BeginArray " + ToText(name));
        if (TVX_FAILED(beginResult))
            return beginResult;
        *count = announced == Unannounced ? static_cast<std::uint32_t>(items.size()) : announced;
        return TVX_OK;
    }
    Result UnusedSlot15() override { return Record("UnusedSlot15"); }
    Result UnusedSlot16() override { return Record("UnusedSlot16"); }
    Result UnusedSlot17() override { return Record("UnusedSlot17"); }
    Result UnusedSlot18() override { return Record("UnusedSlot18"); }
    Result ReadString(IString** out) override
    {
        Record("ReadString");
        return next >= items.size() ? itemResult : GiveString(items[next++], out);
    }
    Result ReadObject(IObjectBase** out) override
    {
        Record("ReadObject");
        return next >= items.size() ? itemResult : GiveObject(items[next++], out);
    }
    Result UnusedSlot21() override { return Record("UnusedSlot21"); }
    Result EndArray() override { return Record("EndArray"); }

    static constexpr std::uint32_t Unannounced = 0xFFFFFFFF;

    std::map<std::string, Value> named;
    std::vector<Value> items;
    std::uint32_t announced = Unannounced;
    Result beginResult = TVX_OK;
    Result itemResult = -42;  // of a read behind the last item
    std::size_t next = 0;
    std::vector<std::string> calls;

protected:
    ~ScriptedReaderImpl() = default;

    Result Record(std::string call)
    {
        calls.push_back(std::move(call));
        return TVX_OK;
    }

private:
    template <class Out>
    Result Give(const char* call, const std::map<std::string, Value>& from, const char* name, Out* out)
    {
        Record(std::string(call) + " " + ToText(name));
        const auto found = from.find(ToText(name));
        if (found == from.end() || !std::holds_alternative<Out>(found->second))
            return TVX_E_FAIL;
        *out = std::get<Out>(found->second);
        return TVX_OK;
    }

    static Result GiveString(const Value& value, IString** out)
    {
        if (!std::holds_alternative<std::string>(value))
            return TVX_E_FAIL;
        *out = MakeRef<Text>(std::get<std::string>(value)).Detach();
        return TVX_OK;
    }

    static Result GiveObject(const Value& value, IObjectBase** out)
    {
        if (!std::holds_alternative<Ref<IObjectBase>>(value))
            return TVX_E_FAIL;
        HandOut(std::get<Ref<IObjectBase>>(value).Get(), out);
        return TVX_OK;
    }
};

}  // namespace tvx::check
