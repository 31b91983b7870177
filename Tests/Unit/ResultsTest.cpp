// SPDX-License-Identifier: MIT
#include "Helpers/Results.h"
#include "Helpers/Ref.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <iostream>
#include <limits>
#include <sstream>

namespace tvx::test
{

namespace
{

constexpr Result Passed = 12345;
constexpr const char File[] = "Tests/Unit/ResultsTest.cpp";

Result FailIf(bool condition)
{
    TVX_RETURN_FAIL_IF(condition);
    return Passed;
}

Result FailIfNull(const void* pointer)
{
    TVX_RETURN_FAIL_IF_NULL(pointer);
    return Passed;
}

Result FailIfFailed(Result result)
{
    TVX_RETURN_FAIL_IF_FAILED(result);
    return Passed;
}

Result PointerIfNull(const void* pointer)
{
    TVX_RETURN_EPOINTER_IF_NULL(pointer);
    return Passed;
}

Result CheckPrecondition(bool condition)
{
    TVX_CHECK_PRECOND(condition);
    return Passed;
}

Result ForwardFailure(Result result)
{
    TVX_FORWARD_FAILURE(result);
    return Passed;
}

// Calls and tells whether the check let the operation go on without a word.
template <class Call>
testing::AssertionResult GoesOn(Call&& call)
{
    Result result = 0;
    const auto output = CaptureOutput([&] { result = call(); });
    if (result == Passed && output.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "result " << result << ", output \"" << output << '"';
}

// Calls and tells whether the check ended the operation with the result and the one line.
template <class Call>
testing::AssertionResult EndsWith(Result expected, const char* macro, Call&& call)
{
    Result result = 0;
    const auto output = CaptureOutput([&] { result = call(); });
    if (result != expected)
        return testing::AssertionFailure() << "result " << result;
    return IsReport(output, macro, File);
}

// Puts another buffer behind the standard stream for as long as it lives.
class ReplacedOutput
{
public:
    explicit ReplacedOutput(std::streambuf* buffer) : flags_(std::cout.flags()), before_(std::cout.rdbuf(buffer)) {}
    ~ReplacedOutput()
    {
        std::cout.exceptions(std::ios::goodbit);
        std::cout.rdbuf(before_);
        std::cout.clear();
        std::cout.flags(flags_);
    }
    ReplacedOutput(const ReplacedOutput&) = delete;
    ReplacedOutput& operator=(const ReplacedOutput&) = delete;

private:
    std::ios::fmtflags flags_;
    std::streambuf* before_;
};

class CountingBuffer final : public std::stringbuf
{
public:
    int flushes = 0;

private:
    int sync() override
    {
        ++flushes;
        return 0;
    }
};

class BrokenBuffer final : public std::streambuf
{
private:
    int_type overflow(int_type) override { return traits_type::eof(); }
    int sync() override { return -1; }
};

}  // namespace

TEST(Results, HaveTheValuesThatEveryHostAndModuleWasCompiledWith)
{
    EXPECT_EQ(TVX_OK, 0);
    EXPECT_EQ(TVX_E_FAIL, -1);
    EXPECT_EQ(TVX_E_NOINTERFACE, -3);
    EXPECT_EQ(TVX_E_POINTER, -4);
    EXPECT_EQ(TVX_E_EXCEPTION, -5);
    EXPECT_EQ(TVX_E_PRECONDITION, -7);
    EXPECT_EQ(TVX_E_UNSUPPORTED_FORMAT, -11);
    EXPECT_EQ(TVX_S_NOKEY, 101);
    EXPECT_EQ(TVX_S_VALUE, 102);
}

TEST(Results, ReadAsUnsignedHaveTheirHexadecimalForm)
{
    static_assert(sizeof(Result) == 4);
    EXPECT_EQ(static_cast<std::uint32_t>(TVX_E_FAIL), 0xFFFFFFFFu);
    EXPECT_EQ(static_cast<std::uint32_t>(TVX_E_NOINTERFACE), 0xFFFFFFFDu);
    EXPECT_EQ(static_cast<std::uint32_t>(TVX_E_POINTER), 0xFFFFFFFCu);
    EXPECT_EQ(static_cast<std::uint32_t>(TVX_E_EXCEPTION), 0xFFFFFFFBu);
    EXPECT_EQ(static_cast<std::uint32_t>(TVX_E_PRECONDITION), 0xFFFFFFF9u);
    EXPECT_EQ(static_cast<std::uint32_t>(TVX_E_UNSUPPORTED_FORMAT), 0xFFFFFFF5u);
    EXPECT_EQ(static_cast<std::uint32_t>(TVX_S_NOKEY), 0x65u);
    EXPECT_EQ(static_cast<std::uint32_t>(TVX_S_VALUE), 0x66u);
}

TEST(Results, AreFailuresExactlyWhenNegative)
{
    for (const Result success : {0, 1, TVX_S_NOKEY, TVX_S_VALUE, std::numeric_limits<Result>::max()})
        EXPECT_FALSE(TVX_FAILED(success)) << success;
    for (const Result failure : {-1, -2, -3, -4, -5, -6, -7, -8, -11, -1000, std::numeric_limits<Result>::min()})
        EXPECT_TRUE(TVX_FAILED(failure)) << failure;
}

TEST(Checks, FailIfEndsWithTheGenericFailureWhenTheConditionHolds)
{
    EXPECT_TRUE(EndsWith(-1, "TVX_RETURN_FAIL_IF", [] { return FailIf(true); }));
    EXPECT_TRUE(GoesOn([] { return FailIf(false); }));
}

TEST(Checks, FailIfNullEndsWithTheGenericFailure)
{
    EXPECT_TRUE(EndsWith(-1, "TVX_RETURN_FAIL_IF_NULL", [] { return FailIfNull(nullptr); }));
    EXPECT_TRUE(GoesOn([] { return FailIfNull(File); }));
}

TEST(Checks, FailIfFailedFlattensEveryFailure)
{
    for (const Result failure : {-1, -3, -4, -7, -11, -1000})
        EXPECT_TRUE(EndsWith(-1, "TVX_RETURN_FAIL_IF_FAILED", [&] { return FailIfFailed(failure); })) << failure;
    for (const Result success : {0, 1, TVX_S_NOKEY, TVX_S_VALUE})
        EXPECT_TRUE(GoesOn([&] { return FailIfFailed(success); })) << success;
}

TEST(Checks, PointerIfNullEndsWithThePointerFailure)
{
    EXPECT_TRUE(EndsWith(-4, "TVX_RETURN_EPOINTER_IF_NULL", [] { return PointerIfNull(nullptr); }));
    EXPECT_TRUE(GoesOn([] { return PointerIfNull(File); }));
}

TEST(Checks, PreconditionEndsWhenTheConditionDoesNotHold)
{
    EXPECT_TRUE(EndsWith(-7, "TVX_CHECK_PRECOND", [] { return CheckPrecondition(false); }));
    EXPECT_TRUE(GoesOn([] { return CheckPrecondition(true); }));
}

TEST(Checks, ForwardFailurePassesTheVeryCodeOn)
{
    for (const Result failure : {-1, -3, -4, -7, -11, -1000, std::numeric_limits<Result>::min()})
        EXPECT_TRUE(EndsWith(failure, "TVX_FORWARD_FAILURE", [&] { return ForwardFailure(failure); })) << failure;
    for (const Result success : {0, 1, TVX_S_NOKEY, TVX_S_VALUE})
        EXPECT_TRUE(GoesOn([&] { return ForwardFailure(success); })) << success;
}

TEST(Checks, EvaluateTheirExpressionOnce)
{
    int evaluated = 0;
    const auto fail = [&]() -> Result { return ++evaluated, -9; };
    const auto forward = [&]() -> Result
    {
        TVX_FORWARD_FAILURE(fail());
        return Passed;
    };
    const auto flatten = [&]() -> Result
    {
        TVX_RETURN_FAIL_IF_FAILED(fail());
        return Passed;
    };
    CaptureOutput(
        [&]
        {
            EXPECT_EQ(forward(), -9);
            EXPECT_EQ(flatten(), -1);
        });
    EXPECT_EQ(evaluated, 2);
}

TEST(Checks, StandAsOneStatement)
{
    const auto operation = [](bool checked, const void* pointer) -> Result
    {
        if (checked)
            TVX_RETURN_EPOINTER_IF_NULL(pointer);
        else
            return 1;
        return 2;
    };
    EXPECT_EQ(operation(false, nullptr), 1);
    EXPECT_EQ(operation(true, File), 2);
    CaptureOutput([&] { EXPECT_EQ(operation(true, nullptr), TVX_E_POINTER); });
}

TEST(Checks, LeaveTheReleasingToTheHoldersOfTheOperation)
{
    bool died = false;
    const auto operation = [&]() -> Result
    {
        const auto held = MakeRef<ProbeObject>(&died);
        TVX_CHECK_PRECOND(!held);
        return Passed;
    };
    CaptureOutput([&] { EXPECT_EQ(operation(), TVX_E_PRECONDITION); });
    EXPECT_TRUE(died);
}

TEST(Report, IsTheMacroTheFileAndTheLine)
{
    int line = 0;
    const auto operation = [&]() -> Result
    {
        line = __LINE__ + 1;
        TVX_RETURN_EPOINTER_IF_NULL(nullptr);
        return Passed;
    };
    const auto output = CaptureOutput([&] { operation(); });
    EXPECT_EQ(output, "TVX_RETURN_EPOINTER_IF_NULL: [Tests/Unit/ResultsTest.cpp:" + std::to_string(line) + "]\n");
}

TEST(Report, IsWrittenOnceForEachFailure)
{
    const auto output = CaptureOutput(
        []
        {
            WriteReport("FIRST", "a/b.cpp", 1);
            WriteReport("SECOND", "/c.h", 23456);
        });
    EXPECT_EQ(output, "FIRST: [a/b.cpp:1]\nSECOND: [/c.h:23456]\n");
}

TEST(Report, IsFlushed)
{
    CountingBuffer buffer;
    const ReplacedOutput replaced(&buffer);
    WriteReport("MACRO", "file", 1);
    EXPECT_EQ(buffer.str(), "MACRO: [file:1]\n");
    EXPECT_EQ(buffer.flushes, 1);
}

TEST(Report, HasItsLineInDecimalEvenIntoAHexadecimalStream)
{
    std::stringbuf buffer;
    const ReplacedOutput replaced(&buffer);
    std::cout << std::hex;
    WriteReport("MACRO", "file", 30);
    EXPECT_EQ(buffer.str(), "MACRO: [file:30]\n");
}

TEST(Report, ThatCannotBeWrittenChangesNoResult)
{
    BrokenBuffer buffer;
    const ReplacedOutput replaced(&buffer);
    EXPECT_EQ(PointerIfNull(nullptr), TVX_E_POINTER);
    std::cout.clear();
    std::cout.exceptions(std::ios::badbit | std::ios::failbit);
    EXPECT_EQ(ForwardFailure(-7), -7);
}

}  // namespace tvx::test
