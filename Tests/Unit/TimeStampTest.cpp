// SPDX-License-Identifier: MIT
#include "Src/TimeStamp.h"
#include "Tests/Support/LoggerTesting.h"

#include <gtest/gtest.h>

#include <limits>

namespace tvx::test
{

namespace
{

// The time of a place whose clocks were put forward at 01:00 UTC on 2013-03-31 and back at 01:00 UTC on 2013-10-27.
class TimeStampOfBerlin : public testing::Test
{
protected:
    TimeStampOfBerlin() { tzset(); }
    ~TimeStampOfBerlin() override
    {
        zone_.reset();
        tzset();
    }

    void MoveToUtc()
    {
        zone_.emplace("TZ", "UTC0");
        tzset();
    }

    std::string Get(std::time_t moment) { return std::string(stamp.Get(moment)); }

    static constexpr std::time_t SpringForward = 1364691600;
    static constexpr std::time_t FallBack = 1382835600;

    TimeStamp stamp;

private:
    // The rule itself, so that no database of zones is needed.
    std::optional<ReplacedVariable> zone_{std::in_place, "TZ", "CET-1CEST,M3.5.0,M10.5.0/3"};
};

}  // namespace

TEST_F(TimeStampOfBerlin, ShowsDateAndTimeWithLeadingZeros)
{
    EXPECT_EQ(Get(1357016767), "2013-01-01 06:06:07");
}

TEST_F(TimeStampOfBerlin, GoesOnAcrossASecond)
{
    EXPECT_EQ(Get(1357016767), "2013-01-01 06:06:07");
    EXPECT_EQ(Get(1357016767), "2013-01-01 06:06:07");
    EXPECT_EQ(Get(1357016768), "2013-01-01 06:06:08");
}

TEST_F(TimeStampOfBerlin, IsConvertedOnceASecond)
{
    EXPECT_EQ(Get(1357016767), "2013-01-01 06:06:07");
    MoveToUtc();
    EXPECT_EQ(Get(1357016767), "2013-01-01 06:06:07");
    EXPECT_EQ(Get(1357016768), "2013-01-01 05:06:08");
}

TEST_F(TimeStampOfBerlin, SkipsAnHourInSpring)
{
    EXPECT_EQ(Get(SpringForward - 1), "2013-03-31 01:59:59");
    EXPECT_EQ(Get(SpringForward), "2013-03-31 03:00:00");
}

TEST_F(TimeStampOfBerlin, RepeatsAnHourInAutumn)
{
    EXPECT_EQ(Get(FallBack - 1), "2013-10-27 02:59:59");
    EXPECT_EQ(Get(FallBack), "2013-10-27 02:00:00");
}

TEST_F(TimeStampOfBerlin, FollowsAClockThatIsPutBackOrForward)
{
    EXPECT_EQ(Get(1357016767), "2013-01-01 06:06:07");
    EXPECT_EQ(Get(1357016760), "2013-01-01 06:06:00");
    EXPECT_EQ(Get(1388552767), "2014-01-01 06:06:07");
    EXPECT_EQ(Get(1357016767), "2013-01-01 06:06:07");
}

TEST_F(TimeStampOfBerlin, KnowsTheFirstMomentOfTheCalendar)
{
    EXPECT_EQ(Get(0), "1970-01-01 01:00:00");
    EXPECT_EQ(Get(-1), "1970-01-01 00:59:59");
}

TEST_F(TimeStampOfBerlin, IsEmptyOutsideTheCalendarAndGoesOnInside)
{
    EXPECT_EQ(Get(std::numeric_limits<std::time_t>::max()), "");
    EXPECT_EQ(Get(0), "1970-01-01 01:00:00");
}

}  // namespace tvx::test
