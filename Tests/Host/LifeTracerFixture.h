// SPDX-License-Identifier: MIT
#pragma once

#include "Host/LibraryManager.h"
#include "Host/LifeTracer.h"
#include "Interfaces/ICollection.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/IImage.h"
#include "Interfaces/ISimpleMap.h"
#include "Tests/Host/Modules/TestModuleFiles.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tvx::test
{

constexpr const char MapExport[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";
constexpr const char CollectionExport[] = "com.talvere.general.tvx.GenericCollectionImplementation/1.1";
constexpr const char ImageExport[] = "com.talvere.general.tvx.GenericImageImplementation/1.0";
constexpr const char VariantExport[] = "com.talvere.general.tvx.GenericVariantImplementation/1.1";

inline host::ModuleCatalog MakeRealCatalog()
{
    return MakeCatalog({GetRealModule("TVXGenericPlugins"), GetRealModule("TVXJsonSerializer")});
}

// The interface Wanted of a new object of an export that makes such objects.
template <class Wanted>
Ref<Wanted> Make(host::LibraryManager& manager, const char* exportId)
{
    const auto factory = manager.GetExportAs<IFactory>(exportId);
    Ref<IObjectBase> object;
    if (factory)
        (*factory)->Create(object.Receive());
    return Query<Wanted>(object);
}

// Keeps the module mapped for a scope, so that what a test holds beyond its manager can still be released.
class Keeper
{
public:
    Keeper() { EXPECT_TRUE(manager_.GetExport(MapExport)); }

private:
    host::LibraryManager manager_{MakeRealCatalog()};
};

// The real modules behind a tracer whose lines are kept.
class TracedLives : public testing::Test
{
protected:
    TracedLives() { manager->TraceLives(tracer); }

    Ref<ISimpleMap> MakeMap() { return Make<ISimpleMap>(*manager, MapExport); }

    Ref<ICollection> MakeCollection()
    {
        Ref<ICollection> collection;
        const auto factory = manager->GetExportAs<ICollectionFactory>(CollectionExport);
        if (factory)
            (*factory)->CreateCollection(collection.Receive());
        return collection;
    }

    std::vector<std::string> lines;
    host::LifeTracer tracer{[this](std::string_view line) { lines.emplace_back(line); }};
    std::optional<host::LibraryManager> manager{MakeRealCatalog()};
};

}  // namespace tvx::test
