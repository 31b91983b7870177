// SPDX-License-Identifier: MIT
#include "Host/HandlerGuard.h"

#include "Tests/Host/LifeTracerFixture.h"
#include "Tests/Support/Doubles.h"

#include <gmock/gmock.h>

namespace tvx::host
{
namespace
{

using test::RecordingHandler;
using test::TracedLives;
using testing::ElementsAre;
using testing::IsEmpty;

std::uint64_t ToParameter(const void* object)
{
    return reinterpret_cast<std::uintptr_t>(object);
}

TEST_F(TracedLives, DeliversEventsWithTheFacesThatTheProgramKnows)
{
    const auto collection = MakeCollection();
    const auto item = MakeMap();
    const auto handler = MakeRef<RecordingHandler>();
    collection->SubscribeItemAdded(handler.Get(), 42, true);
    collection->Add(item.Get());
    ASSERT_EQ(handler->events.size(), 1U);
    EXPECT_EQ(handler->events[0].sender, collection.Get());
    EXPECT_EQ(handler->events[0].param, ToParameter(item.Get()));
    EXPECT_EQ(handler->events[0].eventName, "ItemAdded");
    EXPECT_EQ(handler->events[0].interfaceId, ICollection2::Id);
    EXPECT_EQ(handler->events[0].userData, 42U);
    EXPECT_TRUE(handler->IsUnique());
}

TEST_F(TracedLives, LetsHandlersUseWhatAnEventCarries)
{
    const auto collection = MakeCollection();
    auto item = MakeMap();
    item->SetInt("Width", 5);
    const auto handler = MakeRef<RecordingHandler>();
    std::int32_t width = 0;
    handler->action = [&](const test::SeenEvent& event)
    {
        const auto map = Query<ISimpleMap>(reinterpret_cast<IObjectBase*>(static_cast<std::uintptr_t>(event.param)));
        map->GetInt("Width", &width);
    };
    collection->Add(item.Get());
    item = nullptr;
    collection->SubscribeItemRemoved(handler.Get(), 0, true);
    collection->RemoveLast();
    EXPECT_EQ(width, 5);
    EXPECT_EQ(tracer.GetHeld().size(), 1U);
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
}

TEST_F(TracedLives, CatchesAnEventForAHandlerThatIsGone)
{
    const auto map = MakeMap();
    map->SetBatchUpdatingMode(false);
    auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    EXPECT_EQ(map->SetInt("Width", 1), TVX_OK);
    EXPECT_EQ(handler->events.size(), 1U);
    handler = nullptr;
    EXPECT_EQ(map->SetInt("Width", 2), TVX_OK);
    EXPECT_THAT(tracer.GetFindings(),
                ElementsAre("event Changed of com.talvere.general.tvx.ISimpleMap/1.5 for a handler that is gone "
                            "(tvx::check::RecordingHandler)"));
}

TEST_F(TracedLives, IsQuietAboutAHandlerThatWasUnsubscribed)
{
    const auto map = MakeMap();
    map->SetBatchUpdatingMode(false);
    auto handler = MakeRef<RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeChanged(handler.Get(), 0, false);
    map->SetInt("Width", 1);
    EXPECT_THAT(handler->events, IsEmpty());
    handler = nullptr;
    map->SetInt("Width", 2);
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
}

TEST_F(TracedLives, UnsubscribesAHandlerThatIsGone)
{
    const auto map = MakeMap();
    map->SetBatchUpdatingMode(false);
    auto handler = MakeRef<RecordingHandler>();
    auto* const address = handler.Get();
    map->SubscribeChanged(address, 0, true);
    handler = nullptr;
    map->SubscribeChanged(address, 0, false);
    map->SetInt("Width", 2);
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
}

// The allocator likes to give the memory of the one to the next.
TEST_F(TracedLives, TakesANewHandlerAtTheAddressOfAnOldOneForANewOne)
{
    const auto map = MakeMap();
    map->SetBatchUpdatingMode(false);
    for (int round = 0; round < 5; ++round)
    {
        const auto handler = MakeRef<RecordingHandler>();
        map->SubscribeChanged(handler.Get(), 0, true);
        map->SetInt("Width", round);
        EXPECT_EQ(handler->events.size(), 1U);
        map->SubscribeChanged(handler.Get(), 0, false);
    }
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
}

TEST_F(TracedLives, TellsHandlersOfTheEndOfAnObject)
{
    auto map = MakeMap();
    const auto handler = MakeRef<RecordingHandler>();
    map->SubscribeDestroyed(handler.Get(), 3);
    map = nullptr;
    EXPECT_THAT(handler->GetNames(), ElementsAre("Destroyed"));
    EXPECT_EQ(handler->events[0].userData, 3U);
    map = MakeMap();
    map->SubscribeDestroyed(handler.Get(), 4);
    map->UnsubscribeDestroyed(handler.Get());
    map = nullptr;
    EXPECT_EQ(handler->events.size(), 1U);
}

TEST_F(TracedLives, StillHearsOfTheEndWhenEverybodyIsUnsubscribed)
{
    const auto collection = MakeCollection();
    auto map = MakeMap();
    auto* const face = map.Get();
    collection->Add(face);
    map->UnsubscribeDestroyed(nullptr);
    map = nullptr;
    collection->Clear();
    face->SetInt("Width", 1);
    EXPECT_EQ(tracer.GetFindings().size(), 1U);
}

TEST_F(TracedLives, IgnoresMissingHandlers)
{
    const auto map = MakeMap();
    map->SubscribeDestroyed(nullptr, 0);
    map->SubscribeChanged(nullptr, 0, true);
    map->SubscribeChanged(nullptr, 0, false);
    EXPECT_EQ(map->SetInt("Width", 1), TVX_OK);
}

TEST(HandlerGuard, LetsGoOfHandlersAndObjectsThatOutliveTheTracer)
{
    const auto handler = MakeRef<RecordingHandler>();
    LibraryManager untraced(test::MakeRealCatalog());
    EXPECT_TRUE(untraced.GetExport(test::MapExport));  // keeps the module and its factories
    {
        LifeTracer tracer([](std::string_view) {});
        LibraryManager manager(test::MakeRealCatalog());
        manager.TraceLives(tracer);
        const auto factory = *manager.GetExportAs<IFactory>(test::MapExport);
        factory->SubscribeDestroyed(handler.Get(), 0);
        factory->UnsubscribeDestroyed(handler.Get());
    }
    EXPECT_TRUE(handler->IsUnique());
    EXPECT_THAT(handler->events, IsEmpty());
}

}  // namespace
}  // namespace tvx::host
