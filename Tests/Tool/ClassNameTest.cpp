// SPDX-License-Identifier: MIT
#include "Platform/ClassName.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

namespace tvx::test
{
namespace
{

struct Named
{
};

TEST(ClassName, IsWhatSourcesCallTheClass)
{
    EXPECT_EQ(Platform::GetClassName(typeid(BareObject)), "tvx::test::BareObject");
    EXPECT_EQ(Platform::GetClassName(typeid(Named)), "tvx::test::(anonymous namespace)::Named");
    EXPECT_EQ(Platform::GetClassName(typeid(int)), "int");
}

TEST(ClassName, IsThatOfTheWholeObjectBehindAnInterface)
{
    const auto object = MakeRef<BareObject>();
    const IObjectBase& face = *object;
    EXPECT_EQ(Platform::GetClassNameOf(face), "tvx::test::BareObject");
}

TEST(ClassName, IsEmptyForAnObjectCompiledWithoutTypeInformation)
{
    const void* const table[] = {nullptr, nullptr, nullptr};  // the offset, the type, and the first slot
    const void* const* const object = table + 2;
    EXPECT_EQ(Platform::GetClassNameOf(reinterpret_cast<const IObjectBase&>(object)), "");
}

}  // namespace
}  // namespace tvx::test
