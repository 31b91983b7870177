// SPDX-License-Identifier: MIT
#include "Host/SettingsMap.h"

#include "Helpers/Ref.h"
#include "Host/LibraryManager.h"

namespace tvx::host
{

Outcome<Ref<ISimpleMap>> MakeSettingsMap(LibraryManager& manager)
{
    const auto factory = manager.GetExportAs<IFactory>(SettingsMapExport);
    if (!factory)
        return factory.GetError();
    return MakeSettingsMap(**factory);
}

Outcome<Ref<ISimpleMap>> MakeSettingsMap(IFactory& factory)
{
    Ref<IObjectBase> object;
    const auto result = factory.Create(object.Receive());
    auto map = Query<ISimpleMap>(object);
    if (TVX_FAILED(result) || !map)
        return MakeError(ErrorKind::Misbehaved, std::string("the export \"") + SettingsMapExport +
                                                    "\" makes no settings map (result " + std::to_string(result) + ")");
    return map;
}

Outcome<SettingsEntries> ReadEntries(ISimpleMap& map)
{
    Ref<ISimpleMapIterator> iterator;
    if (TVX_FAILED(map.GetIterator(iterator.Receive())) || !iterator)
        return MakeError(ErrorKind::Misbehaved, "the map gives no iterator");
    SettingsEntries entries;
    for (const char* key = iterator->GetKey(); key != nullptr; iterator->Next(), key = iterator->GetKey())
    {
        const char* const value = iterator->GetValue();
        if (value == nullptr)
            return MakeError(ErrorKind::Misbehaved, "the map gives no value for its key \"" + std::string(key) + "\"");
        entries.emplace_back(key, value);
    }
    return entries;
}

}  // namespace tvx::host
