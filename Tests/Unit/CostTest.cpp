// SPDX-License-Identifier: MIT
#include "Src/CVariantArray.h"
#include "Src/Map.h"
#include "Src/VariantFactory.h"

#include "Tests/Support/Doubles.h"
#include "Tests/Support/FailingMemory.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace tvx;
using namespace tvx::test;

TEST(Cost, OfALookupInADictionaryIsNoAllocation)
{
    const std::string key(100, 'k');
    const std::string absent(100, 'a');
    const auto map = MakeRef<Map>();
    map->SetValue(key.c_str(), MakeRef<ProbeObject>().Get());
    for (const auto lookUp : {&IMap::GetValue, &IMap::LookupValue})
    {
        IMap& face = *map;
        Ref<IObject> out;
        EXPECT_EQ(CountAllocations([&] { EXPECT_EQ((face.*lookUp)(key.c_str(), out.Receive()), TVX_S_VALUE); }), 0U);
        EXPECT_TRUE(out);
        EXPECT_EQ(CountAllocations([&] { EXPECT_EQ((face.*lookUp)(absent.c_str(), out.Receive()), TVX_S_NOKEY); }), 0U);
    }
}

TEST(Cost, OfAnAppendToAnArrayWithRoomIsTheVariantAlone)
{
    const auto factory = VariantFactory::GetOrMake();  // made before, as when the module is loaded
    const auto array = MakeRef<CVariantArray>();
    for (std::int32_t value = 0; value < 5; ++value)
        array->AppendInt(value);
    EXPECT_EQ(CountAllocations([&] { EXPECT_EQ(array->AppendInt(5), TVX_OK); }), 1U);
}

TEST(Cost, OfAnIntVariantIsOneObject)
{
    const auto factory = VariantFactory::GetOrMake();
    Ref<IVariant> variant;
    EXPECT_EQ(CountAllocations([&] { EXPECT_EQ(factory->CreateInt(1, variant.Receive()), TVX_OK); }), 1U);
}

}  // namespace
