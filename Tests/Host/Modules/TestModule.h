// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Interfaces/Module.h"
#include "Platform/StandardStreams.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace tvx::test
{

// The one static object of a test module: says when the module is loaded and unloaded, and keeps the exports until then.
class TestModule
{
public:
    using Give = std::function<Result(IObjectBase** out)>;

    TestModule(std::string name, std::map<std::string, Give, std::less<>> exports)
        : name_(std::move(name)),
          exports_(std::move(exports))
    {
        Platform::WriteLine({name_, ": loaded"});
    }
    ~TestModule() { Platform::WriteLine({name_, ": unloaded"}); }
    TestModule(const TestModule&) = delete;
    TestModule& operator=(const TestModule&) = delete;

    Result GetExport(const char* id, IObjectBase** out) const
    {
        const auto found = exports_.find(id);
        return found == exports_.end() ? TVX_E_FAIL : found->second(out);
    }

private:
    std::string name_;
    std::map<std::string, Give, std::less<>> exports_;
};

// An export that gives the same object each time.
inline TestModule::Give Always(Ref<IObjectBase> object)
{
    return [object = std::move(object)](IObjectBase** out)
    {
        HandOut(object.Get(), out);
        return TVX_OK;
    };
}

}  // namespace tvx::test
