// SPDX-License-Identifier: MIT
#include "Src/CollectionFactory.h"

#include "Src/SimpleMap.h"
#include "Tests/Support/CollectionTesting.h"
#include "Tests/Support/SerializerDoubles.h"

namespace tvx::test
{

namespace
{

constexpr const char Source[] = "Src/CollectionFactory.cpp";

class CollectionReading : public testing::Test
{
protected:
    Result Read() { return factory->Deserialize(reader.Get(), &out); }

    void ExpectFailure(const char* macro)
    {
        const auto report = CaptureOutput([&] { EXPECT_EQ(Read(), TVX_E_FAIL); });
        EXPECT_TRUE(IsReport(report, macro, Source));
        EXPECT_EQ(out, mark.Get());
        EXPECT_NE(reader->calls.back(), "EndArray");
        reader->items.clear();
        EXPECT_TRUE(item->IsUnique());
    }

    Ref<ProbeObject> item = MakeRef<ProbeObject>();
    Ref<BareObject> mark = MakeRef<BareObject>();
    IObjectBase* out = mark.Get();
    Ref<ScriptedReader> reader = MakeRef<ScriptedReader>();
    Ref<CollectionFactory> factory = MakeRef<CollectionFactory>();
};

}  // namespace

TEST(CollectionFactory, MakesIndependentEmptyCollections)
{
    const auto factory = MakeRef<CollectionFactory>();
    Ref<ICollection> first;
    Ref<ICollection> second;
    EXPECT_EQ(factory->CreateCollection(first.Receive()), TVX_OK);
    EXPECT_EQ(factory->CreateCollection(second.Receive()), TVX_OK);
    EXPECT_TRUE(first->IsUnique());
    first->Add(nullptr);
    EXPECT_EQ(second->GetCount(), 0U);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->CreateCollection(nullptr), TVX_E_POINTER); }), "");
}

TEST(CollectionFactory, TellsTheFormatOfItsCollections)
{
    constexpr const char format[] = "com.talvere.general.tvx.GenericCollectionImplementationFormat/1.0";
    const auto factory = MakeRef<CollectionFactory>();
    Ref<IString> text;
    EXPECT_EQ(factory->GetFormatId(text.Receive()), TVX_OK);
    EXPECT_STREQ(text->GetText(), format);
    EXPECT_EQ(MakeRef<Collection>()->GetFormatId(text.Receive()), TVX_OK);
    EXPECT_STREQ(text->GetText(), format);
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(factory->GetFormatId(nullptr), TVX_E_POINTER); }), "");
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(MakeRef<Collection>()->GetFormatId(nullptr), TVX_E_POINTER); }), "");
}

TEST(CollectionFactory, IsThePluginObjectOfItsModule)
{
    const auto factory = MakeRef<CollectionFactory>();
    const auto plugin = Query<ITVXPlugin>(static_cast<ICollectionFactory*>(factory.Get()));
    ASSERT_TRUE(plugin);
    Ref<IString> text;
    const auto report = CaptureOutput([&] { EXPECT_EQ(plugin->GetName(text.Receive()), TVX_E_PRECONDITION); });
    EXPECT_TRUE(IsReport(report, "TVX_CHECK_PRECOND", "Helpers/TVXPluginImpl.h"));
    const auto metadata = MakeRef<SimpleMap>();
    metadata->SetString("name", "The name");
    EXPECT_EQ(plugin->SetMetadataMap(metadata.Get()), TVX_OK);
    EXPECT_EQ(plugin->GetName(text.Receive()), TVX_S_VALUE);
    EXPECT_STREQ(text->GetText(), "The name");
    EXPECT_EQ(plugin->GetComment(text.Receive()), TVX_S_NOKEY);
    EXPECT_EQ(plugin->SetMetadataMap(nullptr), TVX_OK);
    EXPECT_TRUE(metadata->IsUnique());
}

TEST(CollectionFactory, ReleasesItsMetadataBeforeItTellsThatItIsDestroyed)
{
    bool released = false;
    bool releasedBefore = false;
    auto factory = MakeRef<CollectionFactory>();
    auto metadata = MakeRef<SimpleMap>();
    metadata->SetUserData("probe", MakeRef<ProbeObject>(&released).Get());
    factory->SetMetadataMap(metadata.Get());
    metadata = nullptr;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent&) { releasedBefore = released; };
    factory->SubscribeDestroyed(handler.Get(), 0);
    EXPECT_FALSE(released);
    factory = nullptr;
    EXPECT_EQ(handler->GetNames(), std::vector<std::string>{"Destroyed"});
    EXPECT_TRUE(releasedBefore);
}

TEST_F(CollectionReading, RebuildsTheItemsInOrder)
{
    const auto other = MakeRef<ProbeObject>();
    reader->items = {Ref<IObjectBase>(item), Ref<IObjectBase>(other), Ref<IObjectBase>(item)};
    EXPECT_EQ(Read(), TVX_OK);
    const auto collection = Query<ICollection>(Ref<IObjectBase>::Adopt(out).Get());
    ASSERT_EQ(collection->GetCount(), 3U);
    Ref<IObject> found;
    collection->GetItem(1, found.Receive());
    EXPECT_EQ(found.Get(), other.Get());
    EXPECT_EQ(reader->calls.back(), "EndArray");
}

TEST_F(CollectionReading, RebuildsAnEmptyCollection)
{
    EXPECT_EQ(Read(), TVX_OK);
    EXPECT_EQ(Query<ICollection>(Ref<IObjectBase>::Adopt(out).Get())->GetCount(), 0U);
}

TEST_F(CollectionReading, FailsWhenTheSequenceCannotBeBegun)
{
    reader->beginResult = -3;
    ExpectFailure("TVX_RETURN_FAIL_IF_FAILED");
}

TEST_F(CollectionReading, FailsWhenAnItemCannotBeRead)
{
    reader->items = {Ref<IObjectBase>(item), std::string("a text")};
    ExpectFailure("TVX_RETURN_FAIL_IF_FAILED");
}

TEST_F(CollectionReading, FailsForAnItemThatIsNull)
{
    reader->items = {Ref<IObjectBase>(item), Ref<IObjectBase>()};
    ExpectFailure("TVX_RETURN_FAIL_IF_NULL");
}

TEST_F(CollectionReading, FailsForAnItemThatIsNoObject)
{
    reader->items = {Ref<IObjectBase>(item), Ref<IObjectBase>(MakeRef<BareObject>())};
    ExpectFailure("TVX_RETURN_FAIL_IF_NULL");
}

TEST_F(CollectionReading, EndsAtTheFirstItemThatAHostileCountOnlyAnnounces)
{
    reader->items = {Ref<IObjectBase>(item)};
    reader->announced = 4000000000U;
    ExpectFailure("TVX_RETURN_FAIL_IF_FAILED");
}

TEST_F(CollectionReading, ReportsNullPointers)
{
    const auto noReader = CaptureOutput([&] { EXPECT_EQ(factory->Deserialize(nullptr, &out), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(noReader, "TVX_RETURN_EPOINTER_IF_NULL", Source));
    const auto noOut = CaptureOutput([&] { EXPECT_EQ(factory->Deserialize(reader.Get(), nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(noOut, "TVX_RETURN_EPOINTER_IF_NULL", Source));
    EXPECT_EQ(out, mark.Get());
    EXPECT_TRUE(reader->calls.empty());
}

TEST_F(CollectionReading, GivesACollectionAsANewOneWithOneReferenceForEachPlace)
{
    const auto other = MakeRef<ProbeObject>();
    reader->items = {Ref<IObjectBase>(item), Ref<IObjectBase>(other), Ref<IObjectBase>(item)};
    EXPECT_EQ(Read(), TVX_OK);
    reader->items.clear();
    const auto object = Ref<IObjectBase>::Adopt(out);
    EXPECT_TRUE(object->IsUnique());
    EXPECT_EQ(item->GetRefCount(), 3U);
    EXPECT_EQ(other->GetRefCount(), 2U);
    bool enabled = false;
    EXPECT_EQ(Query<ICollection>(object)->GetEventsEnabled(&enabled), TVX_OK);
    EXPECT_TRUE(enabled);
}

}  // namespace tvx::test
