// SPDX-License-Identifier: MIT
#include "Host/LifeTracer.h"

#include "Platform/AddressOrigin.h"
#include "Platform/OperationTable.h"
#include "Tests/Host/LifeTracerFixture.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace tvx::host
{
namespace
{

using test::GetRealModule;
using test::MakeCatalog;
using test::MapExport;
using test::TracedLives;
using testing::ElementsAre;
using testing::IsEmpty;

// A variable of the environment for a scope.
class Variable
{
public:
    Variable(const char* name, const char* value) : name_(name) { setenv(name, value, 1); }
    ~Variable() { unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
};

// Whether a manager that is made now gives objects of its module.
bool GivesTheModulesOwn()
{
    LibraryManager manager(test::MakeRealCatalog());
    const auto object = manager.GetExport(MapExport);
    const auto origin = Platform::GetAddressOrigin(Platform::GetTable(**object));
    return origin.ends_with("TVXGenericPlugins.tvxlib");
}

TEST_F(TracedLives, SaysThatNothingIsHeldWhenEverythingWasReleased)
{
    {
        const auto map = MakeMap();
        map->SetInt("Width", 5);
        Ref<ISimpleMap> copy;
        map->Clone(copy.Receive());
        EXPECT_EQ(tracer.GetHeld().size(), 2U);
    }
    EXPECT_THAT(tracer.GetHeld(), IsEmpty());
    manager.reset();
    EXPECT_THAT(lines, ElementsAre("LifeTracer: nothing is still held"));
}

TEST_F(TracedLives, ReportsWhatIsHeldByClassesWithWhereItCameFrom)
{
    const test::Keeper keeper;
    auto map = MakeMap();
    auto sameMap = map;
    Ref<ISimpleMap> copy;
    map->Clone(copy.Receive());
    auto factory = *manager->GetExportAs<IFactory>(MapExport);
    manager.reset();
    EXPECT_THAT(lines,
                ElementsAre("LifeTracer: 1 object of tvx::CSimpleMapFactory (TVXGenericPlugins.tvxlib) still held",
                            "LifeTracer:   1 reference, given by the library manager, export " + std::string(MapExport),
                            "LifeTracer: 2 objects of tvx::SimpleMap (TVXGenericPlugins.tvxlib) still held",
                            "LifeTracer:   2 references, given by IFactory::Create, export " + std::string(MapExport),
                            "LifeTracer:   1 reference, given by ISimpleMap::Clone, export " + std::string(MapExport)));
}

TEST_F(TracedLives, TellsProgramsWhatIsHeld)
{
    const auto map = MakeMap();
    const auto held = tracer.GetHeld();
    ASSERT_EQ(held.size(), 1U);
    EXPECT_EQ(held[0].className, "tvx::SimpleMap");
    EXPECT_EQ(held[0].module, "TVXGenericPlugins.tvxlib");
    EXPECT_EQ(held[0].exportId, MapExport);
    EXPECT_EQ(held[0].givenBy, "IFactory::Create");
    EXPECT_EQ(held[0].references, 1U);
    tracer.Report();
    EXPECT_EQ(lines.size(), 2U);
}

TEST_F(TracedLives, LeavesObjectsOfOtherManagersOutOfTheReport)
{
    const test::Keeper keeper;
    const auto map = MakeMap();
    LibraryManager other(MakeCatalog({GetRealModule("TVXJsonSerializer")}));
    other.TraceLives(tracer);
    const auto serializer = other.GetExport("com.talvere.serializers.JSONSerializer/1.0");
    ASSERT_TRUE(serializer);
    EXPECT_EQ(tracer.GetHeld().size(), 2U);
    manager.reset();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "LifeTracer: 1 object of tvx::SimpleMap (TVXGenericPlugins.tvxlib) still held");
}

TEST(LifeTracer, LeavesTheModulesOwnObjectsWhenItIsOff)
{
    EXPECT_TRUE(GivesTheModulesOwn());
    const Variable off("TVX_TRACE_LIVES", "0");
    EXPECT_TRUE(GivesTheModulesOwn());
    const Variable empty("TVX_TRACE_LIVES", "");
    EXPECT_TRUE(GivesTheModulesOwn());
    EXPECT_EQ(LifeTracer::FindOfProcess(), nullptr);
}

TEST(LifeTracer, IsSwitchedOnByTheEnvironmentAndWritesToStandardError)
{
    const Variable on("TVX_TRACE_LIVES", "1");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(GivesTheModulesOwn());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "LifeTracer: nothing is still held\n");
    EXPECT_NE(LifeTracer::FindOfProcess(), nullptr);
    EXPECT_EQ(LifeTracer::FindOfProcess(), LifeTracer::FindOfProcess());
}

TEST(LifeTracer, WritesToAStreamOfTheProgram)
{
    std::ostringstream stream;
    LifeTracer tracer(stream);
    {
        LibraryManager manager(test::MakeRealCatalog());
        manager.TraceLives(tracer);
    }
    EXPECT_EQ(stream.str(), "LifeTracer: nothing is still held\n");
}

// The name by which a module was found need not mean it any more.
TEST_F(TracedLives, KnowsAModuleAfterTheProgramChangedItsFolder)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(GetRealModule("TVXGenericPlugins").parent_path());
    LibraryManager relative(MakeCatalog({"./TVXGenericPlugins.tvxlib", "./TVXJsonSerializer.tvxlib"}));
    relative.TraceLives(tracer);
    auto map = test::Make<ISimpleMap>(relative, MapExport);
    std::filesystem::current_path("/");
    {
        LibraryManager other(MakeCatalog({GetRealModule("TVXJsonSerializer")}));
        other.TraceLives(tracer);
        EXPECT_TRUE(other.GetExport("com.talvere.serializers.JSONSerializer/1.0"));
    }
    EXPECT_EQ(map->SetInt("Width", 1), TVX_OK);
    EXPECT_NE(tracer.GetOwn(Ref<IObjectBase>(map)).Get(), map.Get());
    map = test::Make<ISimpleMap>(relative, MapExport);
    EXPECT_NE(tracer.GetOwn(Ref<IObjectBase>(map)).Get(), map.Get());
    map = nullptr;
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
    std::filesystem::current_path(before);
}

// The modules among themselves have nothing to do with the tracer.
TEST_F(TracedLives, OffersTheModulesOwnObjectToOthers)
{
    const auto object = *manager->GetExport(MapExport);
    manager->Offer("test.Contract/1.0", object);
    ASSERT_EQ(tracer.GetHeld().size(), 1U);
    EXPECT_EQ(tracer.GetHeld()[0].references, 1U);  // the test's own, not one of the offer
    EXPECT_NE(tracer.GetOwn(object).Get(), object.Get());
}

TEST(LifeTracer, LetsAManagerEndWhoseWriterThrows)
{
    LifeTracer tracer([](std::string_view) { throw std::runtime_error("the disk is full"); });
    {
        LibraryManager manager(test::MakeRealCatalog());
        manager.TraceLives(tracer);
        EXPECT_TRUE(manager.GetExport(MapExport));
    }
    EXPECT_TRUE(tracer.GetHeld().empty());
}

}  // namespace
}  // namespace tvx::host
