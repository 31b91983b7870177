// SPDX-License-Identifier: MIT
#include "Src/PlugDLL.h"

#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

// The registry is one for the process and forgets nothing, so every test registers under identifiers of its own, and takes
// its objects out again.
class PlugDLLTest : public testing::Test
{
protected:
    ~PlugDLLTest() override
    {
        for (const char* const id : {"test.A/1.0", "test.B/1.0"})
            registry.RegisterExport(id, nullptr);
    }

    // Asks with a marked out: tells whether the answer is a silent -1 and a null out.
    testing::AssertionResult Refuses(const char* id)
    {
        IObjectBase* out = object.Get();
        Result result = TVX_OK;
        const auto output = CaptureOutput([&] { result = registry.GetExport(id, &out); });
        if (result == TVX_E_FAIL && out == nullptr && output.empty())
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "result " << result << ", out " << out << ", output \"" << output << '"';
    }

    PlugDLL& registry = *PlugDLL::GetInstance();
    Ref<ProbeObject> object = MakeRef<ProbeObject>();
};

}  // namespace

TEST_F(PlugDLLTest, ExistsOnce)
{
    EXPECT_EQ(PlugDLL::GetInstance(), &registry);
}

TEST_F(PlugDLLTest, OwnsNoReferenceOnWhatIsRegistered)
{
    registry.RegisterExport("test.A/1.0", object.Get());
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST_F(PlugDLLTest, GivesTheSameObjectEachTimeWithOneMoreReference)
{
    registry.RegisterExport("test.A/1.0", object.Get());
    Ref<IObjectBase> first;
    Ref<IObjectBase> second;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(registry.GetExport("test.A/1.0", first.Receive()), TVX_OK); }), "");
    EXPECT_EQ(object->GetRefCount(), 2u);
    EXPECT_EQ(registry.GetExport("test.A/1.0", second.Receive()), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 3u);
    EXPECT_EQ(first.Get(), object.Get());
    EXPECT_EQ(second.Get(), object.Get());
}

TEST_F(PlugDLLTest, KeepsExportsApart)
{
    const auto other = MakeRef<ProbeObject>();
    registry.RegisterExport("test.A/1.0", object.Get());
    registry.RegisterExport("test.B/1.0", other.Get());
    Ref<IObjectBase> out;
    registry.GetExport("test.B/1.0", out.Receive());
    EXPECT_EQ(out.Get(), other.Get());
    registry.GetExport("test.A/1.0", out.Receive());
    EXPECT_EQ(out.Get(), object.Get());
}

TEST_F(PlugDLLTest, ReplacesAnExportThatIsRegisteredAgain)
{
    const auto other = MakeRef<ProbeObject>();
    registry.RegisterExport("test.A/1.0", other.Get());
    registry.RegisterExport("test.A/1.0", object.Get());
    Ref<IObjectBase> out;
    EXPECT_EQ(registry.GetExport("test.A/1.0", out.Receive()), TVX_OK);
    EXPECT_EQ(out.Get(), object.Get());
    EXPECT_EQ(other->GetRefCount(), 1u);
}

TEST_F(PlugDLLTest, RefusesEveryTextThatIsNotExactlyARegisteredIdentifier)
{
    registry.RegisterExport("test.A/1.0", object.Get());
    for (const char* const id : {"", "test.A/1.", "test.A/1.00", "test.A/1.0 ", "TEST.A/1.0", "test.a/1.0"})
        EXPECT_TRUE(Refuses(id)) << '"' << id << '"';
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST_F(PlugDLLTest, RefusesANullIdentifier)
{
    EXPECT_TRUE(Refuses(nullptr));
}

TEST_F(PlugDLLTest, RefusesAnExportThatCouldNotBeMade)
{
    registry.RegisterExport("test.A/1.0", nullptr);
    EXPECT_TRUE(Refuses("test.A/1.0"));
}

TEST_F(PlugDLLTest, ForgetsEveryExportAndKeepsTheirObjectsAlone)
{
    registry.RegisterExport("test.A/1.0", object.Get());
    registry.RegisterExport("test.B/1.0", object.Get());
    PlugDLL::Clear();
    EXPECT_TRUE(Refuses("test.A/1.0"));
    EXPECT_TRUE(Refuses("test.B/1.0"));
    EXPECT_EQ(object->GetRefCount(), 1u);
    EXPECT_EQ(PlugDLL::GetInstance(), &registry);
}

}  // namespace tvx::test
