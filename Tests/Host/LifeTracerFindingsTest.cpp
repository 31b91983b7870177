// SPDX-License-Identifier: MIT
#include "Interfaces/IVariant.h"
#include "Tests/Host/LifeTracerFixture.h"
#include "Tests/Threads/RunTogether.h"

#include <gmock/gmock.h>

#include <memory>

namespace tvx::host
{
namespace
{

using test::GetRealModule;
using test::MapExport;
using test::TracedLives;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

constexpr const char MapFinding[] = "tvx::SimpleMap of TVXGenericPlugins.tvxlib (export "
                                    "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1) ";

TEST_F(TracedLives, CatchesAReleaseTooMany)
{
    auto map = MakeMap();
    auto* const face = map.Get();
    EXPECT_EQ(face->AddRef(), 2U);
    EXPECT_EQ(face->Release(), 1U);
    map = nullptr;
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
    EXPECT_EQ(face->Release(), 0U);
    EXPECT_THAT(tracer.GetFindings(),
                ElementsAre(MapFinding + std::string("was released more often than it was held")));
    EXPECT_THAT(lines, ElementsAre("LifeTracer: " + tracer.GetFindings()[0]));
}

// The collection has a reference of its own, which the program must not take away from it.
TEST_F(TracedLives, LeavesTheReferencesOfModulesAlone)
{
    const auto collection = MakeCollection();
    auto map = MakeMap();
    auto* const face = map.Get();
    collection->Add(face);
    map = nullptr;
    EXPECT_EQ(face->Release(), 0U);
    EXPECT_EQ(tracer.GetFindings().size(), 1U);
    EXPECT_EQ(face->GetRefCount(), 1U);
}

TEST_F(TracedLives, CatchesUseAfterTheLastRelease)
{
    auto map = MakeMap();
    auto* const face = map.Get();
    map = nullptr;
    std::int32_t value = 7;
    void* out = nullptr;
    EXPECT_EQ(face->GetInt("Width", &value), TVX_E_FAIL);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(face->QueryInterface(IObject::Id, &out), TVX_E_FAIL);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(face->AddRef(), 0U);
    EXPECT_EQ(face->GetOwnerThreadId(), 0U);
    EXPECT_FALSE(face->IsUnique());
    const auto late = std::string(MapFinding) + "was used after its last release: ";
    EXPECT_THAT(tracer.GetFindings(), ElementsAre(late + "ISimpleMap::GetInt", late + "IObjectBase::QueryInterface",
                                                  late + "IObjectBase::AddRef", late + "IObject::GetOwnerThreadId",
                                                  late + "IObjectBase::IsUnique"));
}

TEST_F(TracedLives, CatchesUseOfAnIteratorAfterItsLastRelease)
{
    const auto map = MakeMap();
    Ref<ISimpleMapIterator> iterator;
    map->GetIterator(iterator.Receive());
    auto* const face = iterator.Get();
    iterator = nullptr;
    EXPECT_EQ(face->GetKey(), nullptr);
    EXPECT_THAT(tracer.GetFindings(),
                ElementsAre("tvx::CSimpleMapIterator of TVXGenericPlugins.tvxlib (export " + std::string(MapExport) +
                            ") was used after its last release: ISimpleMapIterator::GetKey"));
}

TEST_F(TracedLives, CatchesUseAfterAModuleReleasedTheLastReference)
{
    const auto collection = MakeCollection();
    auto map = MakeMap();
    auto* const face = map.Get();
    collection->Add(face);
    map = nullptr;
    EXPECT_EQ(face->SetInt("Width", 1), TVX_OK);  // borrowed: the collection still has it
    EXPECT_EQ(collection->Clear(), TVX_OK);
    EXPECT_EQ(face->SetInt("Width", 1), TVX_E_FAIL);
    EXPECT_THAT(tracer.GetFindings(),
                ElementsAre(MapFinding + std::string("was used after its last release: ISimpleMap::SetInt")));
}

// A string does not answer IObject, and is one all the same.
TEST_F(TracedLives, HearsOfTheEndOfAString)
{
    const auto factory = *manager->GetExportAs<IVariantFactory>(test::VariantExport);
    Ref<IVariant> variant;
    factory->CreateString("abc", variant.Receive());
    Ref<IString> string;
    variant->GetString(string.Receive());
    auto* const face = string.Get();
    string = nullptr;
    EXPECT_STREQ(face->GetText(), "abc");  // borrowed
    variant = nullptr;
    EXPECT_EQ(face->GetText(), nullptr);
    EXPECT_EQ(tracer.GetFindings().size(), 1U);
}

TEST_F(TracedLives, LeavesWhatIsHeldInUseWhileSomebodyElseKeepsTheModule)
{
    const test::Keeper keeper;
    const auto map = MakeMap();
    manager.reset();
    EXPECT_EQ(map->SetInt("Width", 1), TVX_OK);
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
}

// What is never released leaks. The tracer of this test is never destroyed, so that leak checkers find the objects
// there.
TEST(LifeTracer, CatchesUseAfterTheModuleWasUnloaded)
{
    static auto& tracer = *std::make_unique<LifeTracer>([](std::string_view) {}).release();
    {
        std::optional<LibraryManager> manager(test::MakeRealCatalog());
        manager->TraceLives(tracer);
        const auto map = test::Make<ISimpleMap>(*manager, MapExport);
        Ref<ISimpleMapIterator> iterator;
        map->GetIterator(iterator.Receive());
        manager.reset();
        EXPECT_FALSE(test::IsMapped(GetRealModule("TVXGenericPlugins")));
        EXPECT_EQ(map->SetInt("Width", 1), TVX_E_FAIL);
        EXPECT_EQ(iterator->GetKey(), nullptr);
        EXPECT_EQ(tracer.GetHeld().size(), 2U);
    }
    EXPECT_EQ(tracer.GetHeld().size(), 0U);
    const auto late = std::string(" was used after its module was unloaded: ");
    EXPECT_THAT(tracer.GetFindings(),
                ElementsAre(EndsWith(late + "ISimpleMap::SetInt"), EndsWith(late + "ISimpleMapIterator::GetKey"),
                            EndsWith(late + "IObjectBase::Release"), EndsWith(late + "IObjectBase::Release")));
}

TEST_F(TracedLives, CountsTheReferencesOfAllThreads)
{
    const auto map = MakeMap();
    const auto use = [&map](int)
    {
        for (int round = 0; round < 500; ++round)
        {
            const auto again = map;
            Ref<ISimpleMap> copy;
            again->Clone(copy.Receive());
            const auto asObject = Query<IObject>(copy);
            EXPECT_EQ(copy->GetRefCount(), 2U);
        }
    };
    test::RunTogether(use);
    EXPECT_TRUE(map->IsUnique());
    ASSERT_EQ(tracer.GetHeld().size(), 1U);
    EXPECT_EQ(tracer.GetHeld()[0].references, 1U);
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
}

}  // namespace
}  // namespace tvx::host
