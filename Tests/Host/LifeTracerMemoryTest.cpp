// SPDX-License-Identifier: MIT
#include "Host/HandlerGuard.h"
#include "Host/TracedObjects.h"
#include "Tests/Host/LifeTracerFixture.h"
#include "Tests/Support/MemoryTesting.h"

#include <gmock/gmock.h>

#include <memory>

namespace tvx::host
{
namespace
{

using test::FailingMemory;
using test::MapExport;
using test::MemoryFailure;
using test::OwnMemory;

class LifeTracerWithoutMemory : public test::TracedLives
{
};

// A finding is told, or lost with the memory for its text: never made up, never thrown.
void ExpectFindings(const LifeTracer& tracer, std::size_t before)
{
    const OwnMemory memory;
    const auto added = tracer.GetFindings().size() - before;
    EXPECT_LE(added, 1U);
    EXPECT_TRUE(added == 1U || FailingMemory::HasFailed());
}

TEST_F(LifeTracerWithoutMemory, RefusesACallOnAnObjectThatIsGone)
{
    test::SweepFailures(
        [this](MemoryFailure failure)
        {
            auto map = MakeMap();
            auto* const face = map.Get();
            map = nullptr;
            std::int32_t value = 7;
            const auto before = tracer.GetFindings().size();
            const FailingMemory memory(failure);
            EXPECT_EQ(face->GetInt("Width", &value), TVX_E_FAIL);
            EXPECT_EQ(value, 7);
            ExpectFindings(tracer, before);
            return FailingMemory::HasFailed();
        });
}

TEST_F(LifeTracerWithoutMemory, RefusesAReleaseTooMany)
{
    const auto collection = MakeCollection();
    test::SweepFailures(
        [&](MemoryFailure failure)
        {
            auto map = MakeMap();
            auto* const face = map.Get();
            collection->Add(face);
            map = nullptr;
            const auto before = tracer.GetFindings().size();
            const FailingMemory memory(failure);
            EXPECT_EQ(face->Release(), 0U);
            ExpectFindings(tracer, before);
            const OwnMemory own;
            EXPECT_EQ(face->GetRefCount(), 1U);
            return FailingMemory::HasFailed();
        });
}

// A module may let through what its handlers throw, so the guard is asked itself.
TEST(LifeTracerWithLittleMemory, KeepsAnEventFromAHandlerThatIsGone)
{
    TraceLog log([](std::string_view) {});
    TracedObjects objects(log);
    const auto handler = MakeRef<test::QuietHandler>();
    const auto guard = MakeRef<HandlerGuard>(*handler, objects);
    guard->NoteGone();
    test::SweepFailures(
        [&](MemoryFailure failure)
        {
            const FailingMemory memory(failure);
            EXPECT_EQ(guard->OnEvent(nullptr, IObject::Id, "Destroyed", 0, 0), TVX_E_FAIL);
            return FailingMemory::HasFailed();
        });
    EXPECT_TRUE(handler->heard.empty());
    EXPECT_FALSE(log.GetFindings().empty());
}

TEST_F(LifeTracerWithoutMemory, UnsubscribesAHandlerWhetherItGotAGuardOrNot)
{
    const auto map = MakeMap();
    map->SetBatchUpdatingMode(false);
    test::SweepFailures(
        [&](MemoryFailure failure)
        {
            auto handler = MakeRef<test::QuietHandler>();
            bool failed = false;
            {
                const FailingMemory memory(failure);
                map->SubscribeChanged(handler.Get(), 0, true);
                map->SubscribeChanged(handler.Get(), 0, false);
                failed = FailingMemory::HasFailed();
            }
            EXPECT_EQ(map->SetInt("Width", 1), TVX_OK);
            EXPECT_THAT(handler->heard, testing::IsEmpty());
            handler = nullptr;
            EXPECT_EQ(map->SetInt("Width", 2), TVX_OK);
            return failed;
        });
    EXPECT_THAT(tracer.GetFindings(), testing::IsEmpty());
}

// The map that is put into a collection has a face already, and stays when the program lets go of it.
TEST_F(LifeTracerWithoutMemory, GivesAgainWhatTheProgramLetGoOf)
{
    const auto collection = MakeCollection();
    auto map = MakeMap();
    const auto* const face = map.Get();
    collection->Add(map.Get());
    map = nullptr;
    test::SweepFailures(
        [&](MemoryFailure failure)
        {
            Ref<IObject> item;
            const FailingMemory memory(failure);
            EXPECT_EQ(collection->GetItem(0, item.Receive()), TVX_OK);
            EXPECT_EQ(item.Get(), face);
            const OwnMemory own;
            EXPECT_EQ(tracer.GetHeld().size(), 2U);  // the collection and the item
            return FailingMemory::HasFailed();
        });
}

// The object is given, traced or not, or refused by the module; another interface likewise.
void CreateAndRelease(IFactory& factory)
{
    Ref<IObjectBase> object;
    const auto created = factory.Create(object.Receive());
    EXPECT_EQ(created == TVX_OK, object.Get() != nullptr);
    EXPECT_EQ(static_cast<bool>(Query<ISimpleMap>(object)), static_cast<bool>(object));
}

TEST(LifeTracerWithLittleMemory, CreatesReleasesAndDiesWhileTheModuleStays)
{
    const test::Keeper keeper;
    test::SweepFailures(
        [](MemoryFailure failure)
        {
            auto tracer = std::make_unique<LifeTracer>([](std::string_view) {});
            std::optional<LibraryManager> manager(test::MakeRealCatalog());
            manager->TraceLives(*tracer);
            auto factory = *manager->GetExportAs<IFactory>(MapExport);
            const FailingMemory memory(failure);
            CreateAndRelease(*factory);
            {
                const OwnMemory own;
                EXPECT_THAT(tracer->GetFindings(), testing::IsEmpty());
                factory = nullptr;
                EXPECT_THAT(tracer->GetHeld(), testing::IsEmpty());
                manager.reset();
            }
            tracer.reset();
            return FailingMemory::HasFailed();
        });
}

}  // namespace
}  // namespace tvx::host
