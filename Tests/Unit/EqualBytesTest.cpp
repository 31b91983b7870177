// SPDX-License-Identifier: MIT
#include "Helpers/EqualBytes.h"

#include <gtest/gtest.h>

#include <string>

namespace tvx::test
{

TEST(EqualBytes, FindsWhatMemcmpFindsWhicheverByteDiffers)
{
    for (std::size_t size = 0; size <= 64; ++size)
    {
        const std::string left(size, 'a');
        EXPECT_TRUE(EqualBytes(left.data(), std::string(left).data(), size)) << size;
        for (std::size_t place = 0; place < size; ++place)
        {
            auto right = left;
            right[place] = '\xFF';
            EXPECT_FALSE(EqualBytes(left.data(), right.data(), size)) << size << ", byte " << place;
        }
    }
}

TEST(EqualBytes, LooksAtNothingBehindTheEnd)
{
    for (std::size_t size = 0; size <= 64; ++size)
    {
        const auto left = std::string(size, 'a') + "x";
        const auto right = std::string(size, 'a') + "y";
        EXPECT_TRUE(EqualBytes(left.data(), right.data(), size)) << size;
    }
}

TEST(EqualBytes, TakesBytesFromAnywhere)
{
    const std::string text = "..abcdefghijklmnopq";
    const std::string other = "abcdefghijklmnopq";
    EXPECT_TRUE(EqualBytes(text.data() + 2, other.data(), other.size()));
    EXPECT_FALSE(EqualBytes(text.data() + 1, other.data(), other.size()));
}

}  // namespace tvx::test
