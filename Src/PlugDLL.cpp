// SPDX-License-Identifier: MIT
#include "Src/PlugDLL.h"

#include "Helpers/Ref.h"
#include "Platform/StandardStreams.h"

#include <utility>

namespace tvx
{

namespace
{

// A plain pointer: a host that still asks for exports while the process ends finds it empty, not destroyed.
PlugDLL* instance = nullptr;

}  // namespace

// Its destruction is the module's unloading.
struct PlugDLL::Unloading
{
    Unloading() { instance = new PlugDLL; }
    ~Unloading() { delete std::exchange(instance, nullptr); }
};

PlugDLL* PlugDLL::GetInstance()
{
    static const Unloading deleteAtUnload;
    return instance;
}

void PlugDLL::Clear() noexcept
{
    if (instance != nullptr)
        instance->exports_.clear();
}

PlugDLL::PlugDLL()
{
    Platform::WriteLine({"PlugDLL created"});
}

PlugDLL::~PlugDLL()
{
    Platform::WriteLine({"PlugDLL deleted"});
}

void PlugDLL::RegisterExport(const char* id, IObjectBase* object)
{
    exports_.insert_or_assign(id, object);
}

Result PlugDLL::GetExport(const char* id, IObjectBase** out)
{
    requested_.store(true, std::memory_order_relaxed);
    *out = nullptr;
    const auto found = id == nullptr ? exports_.end() : exports_.find(std::string_view(id));
    if (found == exports_.end() || found->second == nullptr)
        return TVX_E_FAIL;
    HandOut(found->second, out);
    return TVX_OK;
}

}  // namespace tvx
