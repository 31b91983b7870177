// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Interfaces/Module.h"
#include "Platform/DynamicLibrary.h"

#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace tvx::test
{

constexpr const char StringExport[] = "com.talvere.general.tvx.GenericStringImplementation/1.0";
constexpr const char VariantExport[] = "com.talvere.general.tvx.GenericVariantImplementation/1.1";
constexpr const char ImageExport[] = "com.talvere.general.tvx.GenericImageImplementation/1.0";
constexpr const char LoggerExport[] = "com.talvere.general.tvx.BasicLogger/1.0";
constexpr const char SimpleMapExport[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";

// The exports that the module serves, in the order of their registration.
constexpr const char* ServedExports[] = {
    StringExport,
    VariantExport,
    "com.talvere.general.tvx.GenericMapImplementation/1.1",
    SimpleMapExport,
    "com.talvere.general.tvx.GenericCollectionImplementation/1.1",
    ImageExport,
    LoggerExport,
    "com.talvere.general.tvx.GenericVariantArrayImplementation/1.0",
};

// The built module, loaded as a host does it. Objects of it must be released before it goes.
class LoadedModule
{
public:
    LoadedModule()
    {
        std::string reason;
        library_ = Platform::DynamicLibrary::Load(TVX_MODULE_FILE, reason);
        if (!library_)
            throw std::runtime_error(reason);
        getExport_ = reinterpret_cast<GetExportFunction>(library_.FindSymbol(GetExportName));
        if (getExport_ == nullptr)
            throw std::runtime_error("no GetExport");
    }

    Result GetExport(const char* id, IObjectBase** out) const { return getExport_(id, out); }

    // Gives an interface of an export; empty when either is refused.
    template <class Interface>
    Ref<Interface> Get(const char* id) const
    {
        Ref<IObjectBase> object;
        static_cast<void>(GetExport(id, object.Receive()));
        return Query<Interface>(object);
    }

    // Whether the module's file is in the memory of this process.
    static bool IsMapped()
    {
        std::ifstream maps("/proc/self/maps");
        for (std::string line; std::getline(maps, line);)
        {
            if (line.find("TVXGenericPlugins.tvxlib") != std::string::npos)
                return true;
        }
        return false;
    }

private:
    Platform::DynamicLibrary library_;
    GetExportFunction getExport_ = nullptr;
};

}  // namespace tvx::test
