// SPDX-License-Identifier: MIT
#include "Helpers/ClassImpl.h"
#include "Helpers/TVXPluginImpl.h"
#include "Src/SimpleMap.h"
#include "Src/String.h"
#include "Tests/Support/CaptureOutput.h"

#include <gtest/gtest.h>

namespace tvx::test
{

namespace
{

class Plugin final : public ClassImpl<Plugin, TVXPluginImpl>
{
public:
    using Interfaces = InterfaceList<ITVXPlugin, IConstTVXPlugin, IObject, IObjectBase>;
};

// A metadata map that takes itself away from its plug-in, and then answers with its own text.
class LeavingMap final : public SimpleMap
{
public:
    LeavingMap(Plugin& plugin, bool* died) : plugin_(plugin), died_(died) {}
    ~LeavingMap() override { *died_ = true; }

    Result GetString(const char* key, IString** out) override
    {
        plugin_.SetMetadataMap(nullptr);
        return SimpleMap::GetString(key, out);
    }

private:
    Plugin& plugin_;
    bool* died_;
};

struct Getter
{
    const char* key;
    Result (IConstTVXPlugin::*get)(IString** out);
};

constexpr Getter Getters[] = {
    {"id", &IConstTVXPlugin::GetId},           {"name", &IConstTVXPlugin::GetName},
    {"subname", &IConstTVXPlugin::GetSubname}, {"copyright", &IConstTVXPlugin::GetCopyright},
    {"version", &IConstTVXPlugin::GetVersion}, {"comment", &IConstTVXPlugin::GetComment},
};

// Calls with a marked out: tells whether the operation fails for want of a metadata map and touches nothing.
template <class Call>
testing::AssertionResult LacksMetadata(Call&& call)
{
    const auto mark = MakeRef<String>("mark");
    IString* out = mark.Get();
    Result result = TVX_OK;
    const auto output = CaptureOutput([&] { result = call(&out); });
    if (result != TVX_E_PRECONDITION || out != mark.Get())
        return testing::AssertionFailure() << "result " << result;
    return IsReport(output, "TVX_CHECK_PRECOND", "Helpers/TVXPluginImpl.h");
}

testing::AssertionResult LacksAllMetadata(Plugin& plugin)
{
    for (const auto& getter : Getters)
    {
        const auto lacks = LacksMetadata([&](IString** out) { return (plugin.*getter.get)(out); });
        if (!lacks)
            return lacks;
    }
    return LacksMetadata([&](IString** out) { return plugin.GetMetadata("anything", out); });
}

}  // namespace

TEST(TVXPlugin, KnowsNothingOfItselfUntilItHasAMetadataMap)
{
    const auto plugin = MakeRef<Plugin>();
    EXPECT_TRUE(LacksAllMetadata(*plugin));
}

TEST(TVXPlugin, GivesTheTextOfTheMapForEveryKey)
{
    const auto plugin = MakeRef<Plugin>();
    const auto map = MakeRef<SimpleMap>();
    map->SetString("Some Key", "some text");
    EXPECT_EQ(plugin->SetMetadataMap(map.Get()), TVX_OK);
    Ref<IString> text;
    EXPECT_EQ(plugin->GetMetadata("Some Key", text.Receive()), TVX_S_VALUE);
    EXPECT_STREQ(text->GetText(), "some text");
    EXPECT_TRUE(text->IsUnique());
}

TEST(TVXPlugin, GivesEachFixedKeyByItsOwnOperation)
{
    const auto plugin = MakeRef<Plugin>();
    for (const auto& present : Getters)
    {
        const auto map = MakeRef<SimpleMap>();
        map->SetString(present.key, "its text");
        plugin->SetMetadataMap(map.Get());
        for (const auto& asked : Getters)
        {
            Ref<IString> text;
            const bool same = &asked == &present;
            EXPECT_EQ(((*plugin).*asked.get)(text.Receive()), same ? TVX_S_VALUE : TVX_S_NOKEY) << asked.key;
            EXPECT_EQ(std::string(text ? text->GetText() : ""), same ? "its text" : "") << asked.key;
        }
    }
}

TEST(TVXPlugin, LeavesOutUntouchedForAnAbsentKey)
{
    const auto plugin = MakeRef<Plugin>();
    plugin->SetMetadataMap(MakeRef<SimpleMap>().Get());
    const auto mark = MakeRef<String>("mark");
    IString* out = mark.Get();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(plugin->GetMetadata("absent", &out), TVX_S_NOKEY); }), "");
    EXPECT_EQ(out, mark.Get());
}

TEST(TVXPlugin, PassesAFailureOfTheMapOn)
{
    const auto plugin = MakeRef<Plugin>();
    plugin->SetMetadataMap(MakeRef<SimpleMap>().Get());
    const auto output = CaptureOutput([&] { EXPECT_EQ(plugin->GetId(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Src/SimpleMap.cpp"));
}

TEST(TVXPlugin, KeepsItsMapWithOneReferenceUntilItIsReplaced)
{
    auto plugin = MakeRef<Plugin>();
    const auto first = MakeRef<SimpleMap>();
    const auto second = MakeRef<SimpleMap>();
    EXPECT_EQ(plugin->SetMetadataMap(first.Get()), TVX_OK);
    EXPECT_EQ(plugin->SetMetadataMap(first.Get()), TVX_OK);
    EXPECT_EQ(first->GetRefCount(), 2u);
    EXPECT_EQ(plugin->SetMetadataMap(second.Get()), TVX_OK);
    EXPECT_EQ(first->GetRefCount(), 1u);
    EXPECT_EQ(second->GetRefCount(), 2u);
    plugin = nullptr;
    EXPECT_EQ(second->GetRefCount(), 1u);
}

TEST(TVXPlugin, KnowsNothingAgainWhenItsMapIsTakenAway)
{
    const auto plugin = MakeRef<Plugin>();
    const auto map = MakeRef<SimpleMap>();
    plugin->SetMetadataMap(map.Get());
    EXPECT_EQ(plugin->SetMetadataMap(nullptr), TVX_OK);
    EXPECT_EQ(map->GetRefCount(), 1u);
    EXPECT_TRUE(LacksAllMetadata(*plugin));
}

TEST(TVXPlugin, KeepsAMapAliveThatIsTakenAwayWhileItAnswers)
{
    const auto plugin = MakeRef<Plugin>();
    bool died = false;
    auto map = MakeRef<LeavingMap>(*plugin, &died);
    map->SetString("id", "its text");
    plugin->SetMetadataMap(map.Get());
    map = nullptr;
    Ref<IString> text;
    EXPECT_EQ(plugin->GetId(text.Receive()), TVX_S_VALUE);
    EXPECT_STREQ(text->GetText(), "its text");
    EXPECT_TRUE(died);
    EXPECT_TRUE(LacksAllMetadata(*plugin));
}

TEST(TVXPlugin, AnswersBothOfItsIdentifiers)
{
    const auto plugin = MakeRef<Plugin>();
    EXPECT_EQ(Query<ITVXPlugin>(plugin).Get(), plugin.Get());
    EXPECT_EQ(Query<IConstTVXPlugin>(plugin).Get(), plugin.Get());
}

}  // namespace tvx::test
