// SPDX-License-Identifier: MIT
#include "Src/SimpleMapFactory.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"

#include <gtest/gtest.h>

namespace
{

using namespace tvx;
using namespace tvx::test;

Ref<ISimpleMap5> Create(IFactory& factory)
{
    Ref<IObjectBase> made;
    EXPECT_EQ(factory.Create(made.Receive()), TVX_OK);
    EXPECT_TRUE(made->IsUnique());
    auto map = Query<ISimpleMap5>(made);
    EXPECT_EQ(static_cast<IObjectBase*>(map.Get()), made.Get());
    return map;
}

TEST(SimpleMapFactory, MakesIndependentMapsInBatchMode)
{
    const auto factory = CSimpleMapFactory::GetOrMake();
    const auto first = Create(*factory);
    const auto second = Create(*factory);
    EXPECT_NE(first.Get(), second.Get());
    EXPECT_TRUE(IsBatchUpdating(*first));
    first->SetString("a", "1");
    first->SetBatchUpdatingMode(false);
    EXPECT_EQ(Entries(*second), Texts());
    EXPECT_TRUE(IsBatchUpdating(*second));
}

TEST(SimpleMapFactory, RefusesANullOutInSilence)
{
    const auto factory = CSimpleMapFactory::GetOrMake();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->Create(nullptr), TVX_E_POINTER); }), "");
}

TEST(SimpleMapFactory, IsOneSharedInstance)
{
    Ref<IFactory> first;
    Ref<IFactory> second;
    EXPECT_EQ(CSimpleMapFactory::GetInstance(first.Receive()), TVX_OK);
    const auto count = first->GetRefCount();
    EXPECT_EQ(CSimpleMapFactory::GetInstance(second.Receive()), TVX_OK);
    EXPECT_EQ(first.Get(), second.Get());
    EXPECT_EQ(first->GetRefCount(), count + 1);
}

TEST(SimpleMapFactory, AnswersObjectIdentifiersWithItsPrimaryFace)
{
    const auto factory = MakeRef<CSimpleMapFactory>();
    IFactory* const primary = factory.Get();
    const auto imports = Query<IImportsContainer>(primary);
    const auto deserializable = Query<IDeserializable>(primary);
    EXPECT_EQ(imports.Get(), static_cast<IImportsContainer*>(factory.Get()));
    EXPECT_EQ(deserializable.Get(), static_cast<IDeserializable*>(factory.Get()));
    for (IObjectBase* const face : {static_cast<IObjectBase*>(primary), static_cast<IObjectBase*>(imports.Get()),
                                    static_cast<IObjectBase*>(deserializable.Get())})
    {
        EXPECT_EQ(Query<IObjectBase>(face).Get(), primary);
        EXPECT_EQ(Query<IObject>(face).Get(), primary);
        EXPECT_EQ(Query<IFactory>(face).Get(), primary);
        EXPECT_EQ(Query<IImportsContainer>(face).Get(), imports.Get());
        EXPECT_FALSE(Query<ISerializable>(face));
        EXPECT_FALSE(Query<ISimpleMap>(face));
    }
    EXPECT_EQ(factory->GetRefCount(), 3U);
}

TEST(SimpleMapFactory, KeepsAnImportUntilItIsReplacedOrCleared)
{
    const auto factory = MakeRef<CSimpleMapFactory>();
    const auto first = MakeRef<BareObject>();
    const auto second = MakeRef<BareObject>();
    EXPECT_EQ(factory->SetImport("Serializer", first.Get()), TVX_OK);
    EXPECT_EQ(first->GetRefCount(), 2U);
    EXPECT_EQ(factory->SetImport("Serializer", second.Get()), TVX_OK);
    EXPECT_TRUE(first->IsUnique());
    EXPECT_EQ(factory->OnImportsSet(), TVX_OK);
    EXPECT_EQ(factory->OnImportsHook(), TVX_OK);
    EXPECT_EQ(second->GetRefCount(), 2U);
    EXPECT_EQ(factory->ClearImports(), TVX_OK);
    EXPECT_TRUE(second->IsUnique());
}

TEST(SimpleMapFactory, ReleasesItsImportsBeforeItTellsThatItIsDestroyed)
{
    bool released = false;
    bool releasedBefore = false;
    auto factory = MakeRef<CSimpleMapFactory>();
    factory->SetImport("Serializer", MakeRef<ProbeObject>(&released).Get());
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { releasedBefore = released; };
    factory->SubscribeDestroyed(handler.Get(), 0);
    EXPECT_FALSE(released);
    factory = nullptr;
    EXPECT_EQ(handler->GetNames(), Texts{"Destroyed"});
    EXPECT_TRUE(releasedBefore);
}

}  // namespace
