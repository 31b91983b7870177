// SPDX-License-Identifier: MIT
#include "Host/HostString.h"

#include "Helpers/Ref.h"

#include <gtest/gtest.h>

namespace tvx::host
{
namespace
{

TEST(HostString, KeepsEveryByteOfItsText)
{
    const auto string = MakeRef<HostString>("a\xFF\x01z");
    EXPECT_STREQ(string->GetText(), "a\xFF\x01z");
    EXPECT_EQ(string->GetLength(), 4u);
}

TEST(HostString, GivesTheEmptyTextWithItsNul)
{
    const auto string = MakeRef<HostString>("");
    EXPECT_STREQ(string->GetText(), "");
    EXPECT_EQ(string->GetLength(), 0u);
}

TEST(HostString, RefusesIObjectButAnswersIObjectBase)
{
    const auto string = MakeRef<HostString>("a");
    EXPECT_EQ(Query<IObjectBase>(string).Get(), string.Get());
    EXPECT_EQ(Query<IString>(string).Get(), string.Get());
    EXPECT_FALSE(Query<IObject>(string));
    EXPECT_TRUE(string->IsUnique());
}

}  // namespace
}  // namespace tvx::host
