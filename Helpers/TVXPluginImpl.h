// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Helpers/Results.h"
#include "Interfaces/ITVXPlugin.h"

namespace tvx
{

// A face that answers what a plug-in says of itself out of the metadata map that the host gave.
class TVXPluginImpl : public ITVXPlugin
{
public:
    // The map stays alive during the call, in which its own code may replace it here.
    Result GetMetadata(const char* key, IString** out) override
    {
        const auto metadata = metadata_;
        TVX_CHECK_PRECOND(metadata);
        return metadata->GetString(key, out);
    }

    Result GetId(IString** out) override { return GetMetadata("id", out); }

    Result GetName(IString** out) override { return GetMetadata("name", out); }

    Result GetSubname(IString** out) override { return GetMetadata("subname", out); }

    Result GetCopyright(IString** out) override { return GetMetadata("copyright", out); }

    Result GetVersion(IString** out) override { return GetMetadata("version", out); }

    Result GetComment(IString** out) override { return GetMetadata("comment", out); }

    Result SetMetadataMap(ISimpleMap* map) override
    {
        metadata_ = Ref<ISimpleMap>(map);
        return TVX_OK;
    }

protected:
    TVXPluginImpl() = default;
    ~TVXPluginImpl() = default;

private:
    Ref<ISimpleMap> metadata_;
};

}  // namespace tvx
