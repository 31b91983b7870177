// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ISimpleMap.h"

namespace tvx
{

// What a plug-in says of itself: the texts of its metadata map, which the host fills.
class IConstTVXPlugin : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IConstTVXPlugin/1.0";

    // Slot 11. Gives the metadata text stored under key: 102 with a new string, 101 when the key is absent.
    //   key  borrowed
    //   out  receives one reference, owned by the caller; left untouched when the key is absent
    // Threads: one at a time. Fails: -7 with a report while no metadata map is set, else as the map's GetString.
    virtual Result GetMetadata(const char* key, IString** out) = 0;

    // Slot 12. Gives the metadata text under "id".
    //   out  as in GetMetadata
    // Threads: one at a time. Fails: as GetMetadata.
    virtual Result GetId(IString** out) = 0;

    // Slot 13. Gives the metadata text under "name".
    //   out  as in GetMetadata
    // Threads: one at a time. Fails: as GetMetadata.
    virtual Result GetName(IString** out) = 0;

    // Slot 14. Gives the metadata text under "subname".
    //   out  as in GetMetadata
    // Threads: one at a time. Fails: as GetMetadata.
    virtual Result GetSubname(IString** out) = 0;

    // Slot 15. Gives the metadata text under "copyright".
    //   out  as in GetMetadata
    // Threads: one at a time. Fails: as GetMetadata.
    virtual Result GetCopyright(IString** out) = 0;

    // Slot 16. Gives the metadata text under "version".
    //   out  as in GetMetadata
    // Threads: one at a time. Fails: as GetMetadata.
    virtual Result GetVersion(IString** out) = 0;

    // Slot 17. Gives the metadata text under "comment".
    //   out  as in GetMetadata
    // Threads: one at a time. Fails: as GetMetadata.
    virtual Result GetComment(IString** out) = 0;

protected:
    ~IConstTVXPlugin() = default;
};

// A plug-in that the host tells its metadata.
class ITVXPlugin : public IConstTVXPlugin
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ITVXPlugin/1.0";

    // Slot 18. Gives the plug-in the settings map that holds its metadata, in place of the one before, and gives 0.
    //   map  kept with one reference until replaced; null empties the place
    // Threads: one at a time. Fails: never.
    virtual Result SetMetadataMap(ISimpleMap* map) = 0;

protected:
    ~ITVXPlugin() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IConstTVXPlugin::Id[];
[[gnu::weak]] constexpr const char tvx::ITVXPlugin::Id[];
#endif
