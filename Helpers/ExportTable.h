// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"

#include <cstddef>
#include <string_view>

namespace tvx
{

// One export of a module: its identifier, as the configuration document says it, and what gives its one object. For a class
// that is a Singleton that is GetExportInstance.
struct Export
{
    // What gives an export its object, as Singleton::GetExportInstance does.
    using GetInstance = Result (*)(IObjectBase** out);

    const char* id;           // as the document says it, byte for byte
    GetInstance getInstance;  // gives the object with one reference, owned by the caller
};

// Makes the exports of a table while the module is loaded, before several threads can ask for them at once: the one static
// object of a module. Those that cannot be made then are tried again when a host asks for them.
class ExportsAtLoad
{
public:
    // Makes them, in the order of the table.
    template <std::size_t Count>
    explicit ExportsAtLoad(const Export (&table)[Count]) noexcept
    {
        for (const auto& entry : table)
            Make(entry);
    }
    ExportsAtLoad(const ExportsAtLoad&) = delete;
    ExportsAtLoad& operator=(const ExportsAtLoad&) = delete;

private:
    static void Make(const Export& entry) noexcept
    try
    {
        Ref<IObjectBase> object;
        static_cast<void>(entry.getInstance(object.Receive()));
    }
    catch (...)  // the host that asks for it is told
    {
    }
};

namespace detail
{

// An author's own function may fail in any way; the host sees -1 and null.
inline Result GiveObject(const Export& entry, IObjectBase** out) noexcept
try
{
    Ref<IObjectBase> object;
    if (TVX_FAILED(entry.getInstance(object.Receive())) || !object)
        return TVX_E_FAIL;
    *out = object.Detach();
    return TVX_OK;
}
catch (...)
{
    return TVX_E_FAIL;
}

}  // namespace detail

// What GetExport does for a table of exports: gives the object registered under id.
//   id   borrowed; compared byte for byte
//   out  receives one reference, owned by the caller, or null
// Threads: any. Fails: -1 when id is unknown or null, out is null or the object cannot be made.
template <std::size_t Count>
Result GiveExport(const Export (&table)[Count], const char* id, IObjectBase** out) noexcept
{
    if (out == nullptr)
        return TVX_E_FAIL;
    *out = nullptr;
    for (const auto& entry : table)
    {
        if (id != nullptr && std::string_view(entry.id) == id)
            return detail::GiveObject(entry, out);
    }
    return TVX_E_FAIL;
}

}  // namespace tvx
