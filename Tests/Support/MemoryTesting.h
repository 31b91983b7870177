// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/FailingMemory.h"
#include "Tests/Support/MapTesting.h"
#include "Tests/Support/SerializerDoubles.h"

#include <string>

namespace tvx::test
{

// Too long for a string's own buffer, so that every copy of it needs memory.
constexpr const char LongText[] = "a text that is too long for the buffer of a string";
constexpr const char OtherText[] = "another text that is too long for the buffer of a string";

// Writes down what it hears in memory of its own.
class QuietHandler final : public ClassImpl<QuietHandler, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char* eventName, std::uint64_t param, std::uint64_t) override
    {
        const OwnMemory memory;
        heard.push_back(DescribeMapEvent(eventName, param));
        return TVX_OK;
    }

    Texts heard;
};

// A scripted reader in memory of its own.
class QuietReader final : public ScriptedReaderImpl<CountedImpl<QuietReader, IDeserializer>>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;

    Result ReadNamedInt(const char* name, std::int32_t* out) override
    {
        const OwnMemory memory;
        return ScriptedReaderImpl::ReadNamedInt(name, out);
    }
    Result ReadNamedString(const char* name, IString** out) override
    {
        const OwnMemory memory;
        return ScriptedReaderImpl::ReadNamedString(name, out);
    }
    Result ReadNamedObject(const char* name, IObjectBase** out) override
    {
        const OwnMemory memory;
        return ScriptedReaderImpl::ReadNamedObject(name, out);
    }
    Result BeginArray(const char* name, std::uint32_t* count) override
    {
        const OwnMemory memory;
        return ScriptedReaderImpl::BeginArray(name, count);
    }
    Result ReadString(IString** out) override
    {
        const OwnMemory memory;
        return ScriptedReaderImpl::ReadString(out);
    }
    Result ReadObject(IObjectBase** out) override
    {
        const OwnMemory memory;
        return ScriptedReaderImpl::ReadObject(out);
    }
    Result EndArray() override
    {
        const OwnMemory memory;
        return ScriptedReaderImpl::EndArray();
    }
};

// A place for an out parameter that shows whether it was written to. It owns what was.
template <class Interface>
class MarkedOut
{
public:
    MarkedOut() = default;
    ~MarkedOut()
    {
        if (IsWritten())
            Ref<Interface>::Adopt(value_);
    }
    MarkedOut(const MarkedOut&) = delete;
    MarkedOut& operator=(const MarkedOut&) = delete;

    Interface** Get() { return &value_; }
    bool IsWritten() const { return value_ != mark_; }
    Interface* GetWritten() const { return IsWritten() ? value_ : nullptr; }

private:
    Interface* const mark_ = reinterpret_cast<Interface*>(this);
    Interface* value_ = mark_;
};

// How an operation went under want of memory.
struct Outcome
{
    Result result = TVX_OK;
    bool failed = false;  // whether memory failed anywhere in it
    std::string output;
};

template <class Call>
Outcome RunWith(MemoryFailure failure, Call&& call)
{
    Outcome outcome;
    outcome.output = CaptureOutput(
        [&]
        {
            const FailingMemory memory(failure);
            outcome.result = call();
            outcome.failed = FailingMemory::HasFailed();
        });
    return outcome;
}

}  // namespace tvx::test
