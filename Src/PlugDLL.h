// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObjectBase.h"

#include <atomic>
#include <map>
#include <string>
#include <string_view>

namespace tvx
{

// The export registry, one for each load of the module. It says on standard output when it is made and when it goes.
//
// It owns no reference on what it lists: the objects are kept by their singletons. Registering happens while the module is
// loaded, on the loading thread; afterwards the registry is only read.
class PlugDLL
{
public:
    PlugDLL(const PlugDLL&) = delete;
    PlugDLL& operator=(const PlugDLL&) = delete;

    // Makes the registry at the first call. Null once the module is unloading.
    static PlugDLL* GetInstance();

    // Forgets every export, if the registry was ever made. The module is unloading: its objects go one by one from here on,
    // and their last handlers may still ask for others.
    static void Clear() noexcept;

    // Lists object, which may be null, under id, in place of an earlier one.
    void RegisterExport(const char* id, IObjectBase* object);

    // What GetExport does once there is a registry; out is not null.
    Result GetExport(const char* id, IObjectBase** out);

private:
    struct Unloading;

    PlugDLL();
    ~PlugDLL();

    std::map<std::string, IObjectBase*, std::less<>> exports_;
    std::atomic<bool> requested_{false};  // whether anybody ever asked; kept for a look from the debugger
};

}  // namespace tvx
