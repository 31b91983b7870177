// SPDX-License-Identifier: MIT
#include "Helpers/ConfigurableImpl.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/HostDoubles.h"

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

class Configured final : public ClassImpl<Configured, ConfigurableImpl<Configured>>
{
public:
    using Interfaces = InterfaceList<IConfigurable, IObject, IObjectBase>;

    using ConfigurableImpl::GetConfiguration;

    Result OnConfigure(IConfiguration* config)
    {
        seen.push_back(config);
        storedWhenCalled = GetConfiguration();
        if (action)
            action();
        return result;
    }

    Result result = TVX_OK;
    std::vector<IConfiguration*> seen;
    IConfiguration* storedWhenCalled = nullptr;
    std::function<void()> action;
};

// A configuration that notes every query and refuses it.
class UnqueriedConfiguration final : public ClassImpl<UnqueriedConfiguration, IConfiguration>
{
public:
    struct Interfaces
    {
        static void* FindFace(UnqueriedConfiguration& object, const char*)
        {
            ++object.queries;
            return nullptr;
        }
    };

    Result UnusedSlot11() override { return TVX_E_FAIL; }
    Result GetBool(const char*, bool*, std::uint32_t) override { return TVX_E_FAIL; }
    Result GetInt(const char*, std::int32_t*, std::uint32_t) override { return TVX_E_FAIL; }
    Result UnusedSlot14() override { return TVX_E_FAIL; }
    Result GetString(const char*, IString**, std::uint32_t) override { return TVX_E_FAIL; }

    int queries = 0;
};

}  // namespace

TEST(Configurable, HasNoConfigurationAtFirst)
{
    EXPECT_EQ(MakeRef<Configured>()->GetConfiguration(), nullptr);
}

TEST(Configurable, KeepsTheConfigurationWithOneReferenceAndHandsItToTheClass)
{
    const auto object = MakeRef<Configured>();
    const auto config = MakeRef<RecordingConfiguration>();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(object->SetConfiguration(config.Get()), TVX_OK); }), "");
    EXPECT_EQ(config->GetRefCount(), 2u);
    EXPECT_EQ(object->seen, std::vector<IConfiguration*>{config.Get()});
    EXPECT_EQ(object->storedWhenCalled, config.Get());
    EXPECT_TRUE(config->calls.empty());
}

TEST(Configurable, RefusesNullWithAReportAndKeepsTheCurrentConfiguration)
{
    const auto object = MakeRef<Configured>();
    const auto config = MakeRef<RecordingConfiguration>();
    object->SetConfiguration(config.Get());
    const auto output = CaptureOutput([&] { EXPECT_EQ(object->SetConfiguration(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Helpers/ConfigurableImpl.h"));
    EXPECT_EQ(object->seen.size(), 1u);
    EXPECT_EQ(object->GetConfiguration(), config.Get());
    EXPECT_EQ(config->GetRefCount(), 2u);
}

TEST(Configurable, DoesNotHandNullToTheClass)
{
    const auto object = MakeRef<Configured>();
    CaptureOutput([&] { object->SetConfiguration(nullptr); });
    EXPECT_TRUE(object->seen.empty());
}

TEST(Configurable, ReleasesTheFormerConfigurationBeforeTheClassSeesTheNewOne)
{
    const auto object = MakeRef<Configured>();
    const auto former = MakeRef<RecordingConfiguration>();
    const auto config = MakeRef<RecordingConfiguration>();
    object->SetConfiguration(former.Get());
    std::uint32_t countOfFormer = 0;
    object->action = [&] { countOfFormer = former->GetRefCount(); };
    object->SetConfiguration(config.Get());
    EXPECT_EQ(countOfFormer, 1u);
    EXPECT_EQ(config->GetRefCount(), 2u);
}

TEST(Configurable, KeepsOneReferenceWhenTheSameConfigurationIsSetAgain)
{
    const auto object = MakeRef<Configured>();
    const auto config = MakeRef<RecordingConfiguration>();
    object->SetConfiguration(config.Get());
    object->SetConfiguration(config.Get());
    EXPECT_EQ(config->GetRefCount(), 2u);
    EXPECT_EQ(object->seen.size(), 2u);
}

TEST(Configurable, GivesTheResultOfTheClassUnchangedAndKeepsTheConfigurationAllTheSame)
{
    for (const Result result : {-1, -7, -42, TVX_S_VALUE})
    {
        const auto object = MakeRef<Configured>();
        const auto config = MakeRef<RecordingConfiguration>();
        object->result = result;
        EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(object->SetConfiguration(config.Get()), result); }), "");
        EXPECT_EQ(object->GetConfiguration(), config.Get());
        EXPECT_EQ(config->GetRefCount(), 2u);
    }
}

TEST(Configurable, AsksTheConfigurationForNoInterface)
{
    const auto object = MakeRef<Configured>();
    const auto config = MakeRef<UnqueriedConfiguration>();
    EXPECT_EQ(object->SetConfiguration(config.Get()), TVX_OK);
    EXPECT_EQ(config->queries, 0);
    EXPECT_FALSE(Query<IObject>(config));
    EXPECT_EQ(config->queries, 1);  // the double does notice
}

TEST(Configurable, ReleasesTheConfigurationWhenItDies)
{
    auto object = MakeRef<Configured>();
    const auto config = MakeRef<RecordingConfiguration>();
    object->SetConfiguration(config.Get());
    object = nullptr;
    EXPECT_EQ(config->GetRefCount(), 1u);
}

}  // namespace tvx::test
