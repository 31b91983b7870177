// SPDX-License-Identifier: MIT
#include "Helpers/ConfigurableImpl.h"
#include "Helpers/HandOut.h"
#include "Helpers/ImportsContainerImpl.h"
#include "Interfaces/IFactory.h"
#include "Src/String.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <thread>

#include <unistd.h>

namespace tvx::test
{

namespace
{

// A class with three faces that all derive from IObject.
class ThreeFaces final
    : public ClassImpl<ThreeFaces, IFactory, ConfigurableImpl<ThreeFaces>, ImportsContainerImpl<ThreeFaces>>
{
public:
    using Interfaces = InterfaceList<IFactory, IObject, IObjectBase, IConfigurable, IImportsContainer>;

    Result Create(IObjectBase** out) override { return HandOutNew<ProbeObject>(out); }

    Result OnConfigure(IConfiguration*) { return TVX_OK; }
};

// Shows what QueryInterface makes of its arguments.
class QueryRecorder final : public IObjectBase
{
public:
    std::uint32_t AddRef() override { return 1; }
    std::uint32_t Release() override { return 1; }
    bool IsUnique() override { return true; }
    std::uint32_t GetRefCount() override { return 1; }

    Result DoQueryInterface(const char* id, void** out) override
    {
        seenId = id;
        seenOut = out;
        return -42;
    }

    const char* seenId = nullptr;
    void** seenOut = nullptr;
};

// Asks for id with a marked out: tells whether the query is refused silently, with -3, and touches nothing.
testing::AssertionResult Refuses(IObjectBase& object, const char* id)
{
    int mark = 0;
    void* out = &mark;
    Result result = TVX_OK;
    const auto before = object.GetRefCount();
    const auto output = CaptureOutput([&] { result = object.QueryInterface(id, &out); });
    if (result == TVX_E_NOINTERFACE && out == &mark && object.GetRefCount() == before && output.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "result " << result << ", count " << object.GetRefCount() << ", output \""
                                       << output << '"' << (out == &mark ? "" : ", out touched");
}

}  // namespace

TEST(ObjectModel, StartsWithTheCountZero)
{
    auto* const object = new ProbeObject;
    EXPECT_EQ(object->GetRefCount(), 0u);
    EXPECT_FALSE(object->IsUnique());
    object->AddRef();
    object->Release();
}

TEST(ObjectModel, GivesTheNewCountWhenAReferenceIsAddedOrRemoved)
{
    auto* const object = new ProbeObject;
    EXPECT_EQ(object->AddRef(), 1u);
    EXPECT_EQ(object->AddRef(), 2u);
    EXPECT_EQ(object->AddRef(), 3u);
    EXPECT_EQ(object->GetRefCount(), 3u);
    EXPECT_EQ(object->Release(), 2u);
    EXPECT_EQ(object->Release(), 1u);
    EXPECT_EQ(object->Release(), 0u);
}

TEST(ObjectModel, DestroysItselfWithItsLastReferenceAndNotBefore)
{
    bool died = false;
    auto* const object = new ProbeObject(&died);
    object->AddRef();
    object->AddRef();
    object->Release();
    EXPECT_FALSE(died);
    object->Release();
    EXPECT_TRUE(died);
}

TEST(ObjectModel, IsUniqueOnlyWithExactlyOneReference)
{
    const auto object = MakeRef<ProbeObject>();
    EXPECT_TRUE(object->IsUnique());
    {
        const auto second = object;
        EXPECT_FALSE(object->IsUnique());
    }
    EXPECT_TRUE(object->IsUnique());
}

TEST(ObjectModel, IsUniqueRightAfterAFactoryMadeTheObject)
{
    const auto factory = MakeRef<ThreeFaces>();
    Ref<IObjectBase> made;
    ASSERT_EQ(factory->Create(made.Receive()), TVX_OK);
    EXPECT_TRUE(made->IsUnique());
    made->AddRef();
    EXPECT_FALSE(made->IsUnique());
    made->Release();
}

TEST(ObjectModel, ForwardsAQueryWithItsArgumentsAndItsResult)
{
    QueryRecorder recorder;
    const char* const id = "some id";
    void* place = nullptr;
    EXPECT_EQ(recorder.QueryInterface(id, &place), -42);
    EXPECT_EQ(recorder.seenId, id);
    EXPECT_EQ(recorder.seenOut, &place);
    EXPECT_EQ(recorder.QueryInterface(nullptr, nullptr), -42);
    EXPECT_EQ(recorder.seenId, nullptr);
    EXPECT_EQ(recorder.seenOut, nullptr);
}

TEST(ObjectModel, AnswersTheTwoQueriesAlike)
{
    const auto object = MakeRef<ProbeObject>();
    void* first = nullptr;
    void* second = nullptr;
    EXPECT_EQ(object->QueryInterface(IObject::Id, &first), TVX_OK);
    EXPECT_EQ(object->DoQueryInterface(IObject::Id, &second), TVX_OK);
    EXPECT_EQ(first, second);
    object->Release();
    object->Release();
}

TEST(ObjectModel, AddsOneReferenceForASuccessfulQuery)
{
    const auto object = MakeRef<ProbeObject>();
    void* out = nullptr;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(object->QueryInterface(IObject::Id, &out), TVX_OK); }), "");
    EXPECT_EQ(out, static_cast<IObject*>(object.Get()));
    EXPECT_EQ(object->GetRefCount(), 2u);
    object->Release();
}

TEST(ObjectModel, RefusesEveryTextThatIsNotExactlyAnIdentifierOfIts)
{
    const auto object = MakeRef<ProbeObject>();
    for (const char* const id :
         {"", "com.talvere.general.tvx.IObject", "com.talvere.general.tvx.IObject/",
          "com.talvere.general.tvx.IObject/1", "com.talvere.general.tvx.IObject/1.",
          "com.talvere.general.tvx.IObject/1.00", "com.talvere.general.tvx.IObject/1.0 ",
          " com.talvere.general.tvx.IObject/1.0", "com.talvere.general.tvx.IObject/1.1",
          "com.talvere.general.tvx.IObject/2.0", "com.talvere.general.tvx.iobject/1.0",
          "COM.talvere.general.tvx.IObject/1.0", "IObject/1.0", "com.talvere.general.tvx.IString/1.0"})
        EXPECT_TRUE(Refuses(*object, id)) << '"' << id << '"';
}

TEST(ObjectModel, RefusesANullIdentifier)
{
    const auto object = MakeRef<ProbeObject>();
    EXPECT_TRUE(Refuses(*object, nullptr));
}

TEST(ObjectModel, RefusesAMatchingIdentifierWithANullOut)
{
    const auto object = MakeRef<ProbeObject>();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(object->QueryInterface(IObject::Id, nullptr), TVX_E_NOINTERFACE); }), "");
    EXPECT_EQ(object->QueryInterface(nullptr, nullptr), TVX_E_NOINTERFACE);
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST(ObjectModel, AnswersSharedIdentifiersWithThePrimaryFaceFromWhicheverFaceItIsAsked)
{
    const auto object = MakeRef<ThreeFaces>();
    IFactory* const primary = object.Get();
    IConfigurable* const second = object.Get();
    IImportsContainer* const third = object.Get();
    for (IObjectBase* const asked :
         {static_cast<IObjectBase*>(primary), static_cast<IObjectBase*>(second), static_cast<IObjectBase*>(third)})
    {
        EXPECT_EQ(Query<IObject>(asked).Get(), static_cast<IObject*>(primary));
        EXPECT_EQ(Query<IObjectBase>(asked).Get(), static_cast<IObjectBase*>(primary));
        EXPECT_EQ(Query<IFactory>(asked).Get(), primary);
        EXPECT_EQ(Query<IConfigurable>(asked).Get(), second);
        EXPECT_EQ(Query<IImportsContainer>(asked).Get(), third);
    }
}

TEST(ObjectModel, CountsReferencesOnAllFacesTogether)
{
    const auto object = MakeRef<ThreeFaces>();
    IConfigurable* const second = object.Get();
    IImportsContainer* const third = object.Get();
    EXPECT_EQ(second->AddRef(), 2u);
    EXPECT_EQ(third->AddRef(), 3u);
    EXPECT_EQ(object->GetRefCount(), 3u);
    EXPECT_EQ(second->Release(), 2u);
    EXPECT_EQ(third->Release(), 1u);
}

TEST(ObjectModel, RecordsTheConstructingThread)
{
    const auto here = MakeRef<ProbeObject>();
    EXPECT_EQ(here->GetOwnerThreadId(), static_cast<std::uint32_t>(gettid()));

    Ref<ProbeObject> there;
    std::uint32_t thread = 0;
    std::thread(
        [&]
        {
            thread = static_cast<std::uint32_t>(gettid());
            there = MakeRef<ProbeObject>();
        })
        .join();
    EXPECT_EQ(there->GetOwnerThreadId(), thread);
    EXPECT_NE(there->GetOwnerThreadId(), here->GetOwnerThreadId());
}

TEST(ObjectModel, LetsTheOwnerThreadBeReplacedByAnyNumber)
{
    const auto object = MakeRef<ProbeObject>();
    EXPECT_EQ(object->SetOwnerThreadId(0xFFFFFFFF), TVX_OK);
    EXPECT_EQ(object->GetOwnerThreadId(), 0xFFFFFFFF);
    EXPECT_EQ(object->SetOwnerThreadId(0), TVX_OK);
    EXPECT_EQ(object->GetOwnerThreadId(), 0u);
}

TEST(ObjectModel, SharesTheOwnerThreadBetweenFaces)
{
    const auto object = MakeRef<ThreeFaces>();
    static_cast<IImportsContainer*>(object.Get())->SetOwnerThreadId(77);
    EXPECT_EQ(static_cast<IConfigurable*>(object.Get())->GetOwnerThreadId(), 77u);
}

TEST(ObjectModel, RefusesIObjectOnAString)
{
    const auto string = MakeRef<String>("abc");
    EXPECT_TRUE(Refuses(*string, IObject::Id));
    EXPECT_EQ(Query<IObjectBase>(string).Get(), string.Get());
}

}  // namespace tvx::test
