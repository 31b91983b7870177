// SPDX-License-Identifier: MIT
#include "Host/LibManagerFace.h"

#include "Helpers/HandOut.h"
#include "Host/HostString.h"
#include "Host/LibraryManager.h"

namespace tvx::host
{

Result LibManagerFace::GetInstalledPluginsVersions(IString** out)
try
{
    return manager_ == nullptr ? TVX_E_FAIL : HandOutNew<HostString>(out, manager_->DescribeInstalled());
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

Result LibManagerFace::FindReader(const char* formatId, IDeserializable** out)
try
{
    if (formatId == nullptr || out == nullptr)
        return TVX_E_POINTER;
    if (manager_ == nullptr)
        return TVX_E_FAIL;
    const auto object = manager_->FetchReader(formatId);
    auto reader = object ? Query<IDeserializable>(*object) : nullptr;
    if (!reader)
        return TVX_E_FAIL;
    *out = reader.Detach();
    return TVX_OK;
}
catch (...)  // want of memory
{
    return TVX_E_POINTER;
}

Ref<IObjectBase> LibManagerFace::FetchExport(const std::string& id) const
{
    return manager_ == nullptr ? nullptr : manager_->FetchImport(id);
}

}  // namespace tvx::host
