// SPDX-License-Identifier: MIT
#include "Host/Outcome.h"

#include <gtest/gtest.h>

#include <memory>

namespace tvx::host
{
namespace
{

TEST(Outcome, HoldsAValue)
{
    Outcome<std::string> outcome(std::string("abc"));
    ASSERT_TRUE(outcome);
    EXPECT_EQ(*outcome, "abc");
    outcome->push_back('d');
    EXPECT_EQ(*outcome, "abcd");
    EXPECT_EQ(std::as_const(outcome)->size(), 4U);
}

TEST(Outcome, HoldsAnError)
{
    const Outcome<std::string> outcome(MakeError(ErrorKind::NoDocument, "nothing there"));
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.GetError().kind, ErrorKind::NoDocument);
    EXPECT_EQ(outcome.GetError().message, "nothing there");
}

TEST(Outcome, ThrowsWhenAskedForWhatItDoesNotHold)
{
    const Outcome<int> value(1);
    const Outcome<int> error(MakeError(ErrorKind::CannotRead, "no"));
    EXPECT_THROW((void)value.GetError(), std::bad_variant_access);
    EXPECT_THROW((void)*error, std::bad_variant_access);
}

TEST(Outcome, GivesAwayAValueThatCannotBeCopied)
{
    Outcome<std::unique_ptr<int>> outcome(std::make_unique<int>(7));
    const std::unique_ptr<int> taken = *std::move(outcome);
    EXPECT_EQ(*taken, 7);
}

TEST(Error, IsOneLineThatCannotCommandATerminal)
{
    EXPECT_EQ(MakeError(ErrorKind::CannotRead, "a\r\nb\x1B[2J\x7F\xC3\xA4").message, "a??b?[2J?\xC3\xA4");
}

}  // namespace
}  // namespace tvx::host
