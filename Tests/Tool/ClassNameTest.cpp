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
    EXPECT_EQ(Platform::GetClassName(typeid(BareObject)), "tvx::check::BareObject");
    EXPECT_EQ(Platform::GetClassName(typeid(Named)), "tvx::test::(anonymous namespace)::Named");
    EXPECT_EQ(Platform::GetClassName(typeid(int)), "int");
}

TEST(ClassName, IsThatOfTheWholeObjectBehindAnInterface)
{
    const auto object = MakeRef<BareObject>();
    const IObjectBase& face = *object;
    EXPECT_EQ(Platform::GetClassNameOf(face), "tvx::check::BareObject");
}

TEST(ClassName, IsEmptyForAnObjectCompiledWithoutTypeInformation)
{
    const void* const table[] = {nullptr, nullptr, nullptr};  // the offset, the type, and the first slot
    const void* const* const object = table + 2;
    EXPECT_EQ(Platform::GetClassNameOf(reinterpret_cast<const IObjectBase&>(object)), "");
}

// What stands in front of a table in C is the program's own.
TEST(ClassName, IsEmptyForATableThatNoCompilerMade)
{
    static const char text[16] = "any text at all";
    const void* const table[] = {nullptr, text, nullptr};
    const void* const* const object = table + 2;
    EXPECT_EQ(Platform::GetClassNameOf(reinterpret_cast<const IObjectBase&>(object)), "");
    const void* const odd[] = {nullptr, text + 1, nullptr};
    const void* const* const other = odd + 2;
    EXPECT_EQ(Platform::GetClassNameOf(reinterpret_cast<const IObjectBase&>(other)), "");
}

}  // namespace
}  // namespace tvx::test
