// SPDX-License-Identifier: MIT
#include "Host/LifeTracer.h"

#include "Helpers/ClassImpl.h"
#include "Interfaces/IFactory.h"
#include "InterfacesHelpers/UserDataContainer.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <filesystem>
#include <vector>

namespace tvx::host
{
namespace
{

using testing::IsEmpty;

// An object with an interface of its own, of which nobody else knows.
class IGauge : public IObject
{
public:
    static constexpr const char Id[] = "com.example.IGauge/1.0";

    virtual std::int32_t Measure() = 0;

protected:
    ~IGauge() = default;
};

class Gauge final : public ClassImpl<Gauge, IGauge, IFactory>
{
public:
    using Interfaces = InterfaceList<IGauge, IObject, IObjectBase, IFactory>;

    std::int32_t Measure() override { return 5; }
    Result Create(IObjectBase**) override { return TVX_E_FAIL; }
};

// All objects of such classes stand at one place, one after the other.
class AtOnePlace
{
public:
    static void* operator new(std::size_t) { return place; }
    static void operator delete(void*) {}

private:
    alignas(std::max_align_t) static inline std::byte place[64] = {};
};

class First final : public CountedImpl<First, IObjectBase>, public AtOnePlace
{
public:
    using Interfaces = InterfaceList<IObjectBase>;
};

class Second final : public CountedImpl<Second, IObjectBase>, public AtOnePlace
{
public:
    using Interfaces = InterfaceList<IObjectBase>;
};

// Gives one iterator, first as an object of which nothing is known, then as an iterator.
class IteratorGiver final : public ClassImpl<IteratorGiver, UserDataContainerImpl>
{
public:
    using Interfaces = InterfaceList<IUserDataContainer, IObject, IObjectBase>;

    using UserDataContainerImpl::GetUserData;
    Result GetUserData(const char*, IObjectBase** out) override
    {
        HandOut<IObjectBase>(iterator_.Get(), out);
        return TVX_S_VALUE;
    }

    Result CreateUserDataIterator(IUserDataIterator** out) override
    {
        HandOut<IUserDataIterator>(iterator_.Get(), out);
        return TVX_OK;
    }

private:
    const UserDataTable table_ = {};
    const Ref<CUserDataIterator> iterator_ = MakeRef<CUserDataIterator>(table_);
};

// A tracer that takes this program for a module, for objects that no sound module has.
class TracedProgram : public testing::Test
{
protected:
    TracedProgram() { tracer.AddModule(std::filesystem::read_symlink("/proc/self/exe")); }

    Ref<IObjectBase> Trace(IObjectBase* object)
    {
        return tracer.Trace(Ref<IObjectBase>(object), "com.example.Gauge/1.0");
    }

    LifeTracer tracer{[](std::string_view) {}};
};

TEST_F(TracedProgram, GivesInterfacesThatTheTracerDoesNotKnowUntraced)
{
    const auto gauge = MakeRef<Gauge>();
    const auto traced = Trace(static_cast<IGauge*>(gauge.Get()));
    ASSERT_NE(traced.Get(), static_cast<IGauge*>(gauge.Get()));
    EXPECT_EQ(Query<IGauge>(traced).Get(), gauge.Get());
    EXPECT_EQ(Query<IObject>(traced).Get(), traced.Get());
    EXPECT_EQ(gauge->GetRefCount(), 2U);
    EXPECT_EQ(tracer.GetHeld()[0].references, 1U);
}

TEST_F(TracedProgram, CatchesAModuleThatReleasesWhatTheProgramHolds)
{
    Ref<IObjectBase> own(static_cast<IGauge*>(MakeRef<Gauge>().Get()));
    auto traced = Trace(own.Get());
    EXPECT_TRUE(Query<IFactory>(traced));  // another interface, but one object that ends
    std::vector<Ref<IObjectBase>> taken;
    taken.push_back(Ref<IObjectBase>::Adopt(own.Get()));  // the reference of the program
    own = nullptr;
    taken.clear();
    ASSERT_EQ(tracer.GetFindings().size(), 1U);
    EXPECT_TRUE(tracer.GetFindings()[0].ends_with(
        "(export com.example.Gauge/1.0) was destroyed while the host program held 1 of its references"));
    traced = nullptr;
    EXPECT_EQ(tracer.GetFindings().size(), 2U);
}

TEST_F(TracedProgram, TellsOneObjectByAllItsInterfaces)
{
    const auto gauge = MakeRef<Gauge>();
    const auto asFactory = Trace(static_cast<IFactory*>(gauge.Get()));
    const auto asGauge = Trace(static_cast<IGauge*>(gauge.Get()));
    EXPECT_NE(asFactory.Get(), asGauge.Get());
    EXPECT_EQ(Query<IFactory>(asGauge).Get(), asFactory.Get());
    ASSERT_EQ(tracer.GetHeld().size(), 1U);
    EXPECT_EQ(tracer.GetHeld()[0].references, 2U);
}

TEST_F(TracedProgram, LearnsWhatAnObjectIsByTheOperationThatGivesIt)
{
    const auto giver = Query<IUserDataContainer>(Trace(MakeRef<IteratorGiver>().Get()));
    Ref<IObjectBase> object;
    giver->GetUserData("", object.Receive());
    Ref<IUserDataIterator> iterator;
    giver->CreateUserDataIterator(iterator.Receive());
    EXPECT_EQ(iterator.Get(), object.Get());
    EXPECT_TRUE(iterator->IsEnd());
}

// Nobody says that the first one has gone when the second one stands at its place.
TEST_F(TracedProgram, TellsObjectsThatDoNotTellTheirEndByTheirClass)
{
    auto first = MakeRef<First>();
    auto traced = Trace(first.Get());
    EXPECT_NE(traced.Get(), first.Get());
    auto* const face = traced.Get();
    traced = nullptr;
    first = nullptr;
    EXPECT_THAT(tracer.GetHeld(), IsEmpty());
    traced = Trace(MakeRef<Second>().Get());
    EXPECT_NE(traced.Get(), face);
    ASSERT_EQ(tracer.GetHeld().size(), 1U);
    EXPECT_TRUE(tracer.GetHeld()[0].className.ends_with("Second"));
    EXPECT_TRUE(traced->IsUnique());
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
    EXPECT_EQ(face->GetRefCount(), 0U);
    EXPECT_EQ(tracer.GetFindings().size(), 1U);
}

}  // namespace
}  // namespace tvx::host
