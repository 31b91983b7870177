// SPDX-License-Identifier: MIT
#include "Tool/Checks/PublishedExports.h"

#include "Tool/Checks/Objects.h"

#include <algorithm>

namespace tvx::check
{

std::vector<std::string> GetIds(Trial& trial)
{
    std::vector<std::string> ids;
    for (const auto& entry : trial.GetDocument().exports)
        ids.push_back(entry.id);
    return ids;
}

const std::vector<host::Export>& GetPublishedExports()
{
    static const std::string prefix = "com.talvere.general.tvx.";
    static const std::string deserializable = prefix + "DeserializableContract/1.0";
    static const std::vector<host::Export> published = {
        {StringExport, {prefix + "StringContract/1.0"}, {"TVX Generic String Implementation", "", "", ""}, {}},
        {MapExport,
         {prefix + "MapContract/1.0", deserializable},
         {"TVX Generic Map Implementation", "", "", prefix + "GenericMapImplementationFormat/1.1"},
         {}},
        {SimpleMapExport,
         {prefix + "SimpleMapContract/1.0", prefix + "SimpleMapContract/1.1", prefix + "SimpleMapContract/1.2",
          deserializable},
         {"TVX Generic Simple Map Implementation", "", "", prefix + "GenericSimpleMapImplementationFormat/1.1"},
         {{"Serializer", "com.talvere.serializers.JSONSerializerContract/1.0", false}}},
        {CollectionExport,
         {prefix + "CollectionContract/1.1", deserializable},
         {"TVX Generic Collection Implementation", "", "", prefix + "GenericCollectionImplementationFormat/1.0"},
         {}},
        {ImageExport, {prefix + "ImageContract/1.0"}, {"TVX Generic Image Implementation", "", "", ""}, {}},
        {VariantExport,
         {prefix + "VariantContract/1.0", deserializable},
         {"TVX Generic Variant Implementation", "", "", prefix + "GenericVariantImplementationFormat/1.1"},
         {}},
        {VariantArrayExport,
         {deserializable, prefix + "VariantArray/1.0"},
         {"Variant array", "", "", prefix + "GenericVariantArrayImplementationFormat/1.0"},
         {}},
        {LoggerExport,
         {prefix + "singletonlogger/1.0"},
         {"Basic Logger", "Basic Console and File Logger", "Copyright (C) 2026 Talvere", ""},
         {{"LibManager", prefix + "LibManagerContract/1.0", true},
          {"CrashDumpServer", prefix + "contract.CrashDumpServer/1.0", true}}},
    };
    return published;
}

bool OffersPublishedExports(Trial& trial)
{
    const auto ids = GetIds(trial);
    const auto& published = GetPublishedExports();
    return std::all_of(published.begin(), published.end(),
                       [&](const host::Export& entry)
                       { return std::find(ids.begin(), ids.end(), entry.id) != ids.end(); });
}

void NeedPublishedExports(Trial& trial)
{
    if (!OffersPublishedExports(trial))
        trial.Skip("the module does not offer all eight generic exports");
}

}  // namespace tvx::check
