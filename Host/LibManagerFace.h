// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Host/IFormatReaders.h"
#include "Interfaces/ILibManager.h"

#include <string>

namespace tvx::host
{

class LibraryManager;

// What modules see of the library manager. They may keep it longer than the manager lives; it refuses from then on.
class LibManagerFace final : public ClassImpl<LibManagerFace, ILibManager, IFormatReaders>
{
public:
    using Interfaces = InterfaceList<ILibManager, IObject, IObjectBase, IFormatReaders>;

    // Borrows the manager until ForgetManager.
    explicit LibManagerFace(LibraryManager& manager) : manager_(&manager) {}

    Result GetInstalledPluginsVersions(IString** out) override;
    Result FindReader(const char* formatId, IDeserializable** out) override;

    // Null when the export cannot be had.
    Ref<IObjectBase> FetchExport(const std::string& id) const;

    // The manager is going.
    void ForgetManager() { manager_ = nullptr; }

private:
    LibraryManager* manager_;
};

}  // namespace tvx::host
