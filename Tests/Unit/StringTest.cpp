// SPDX-License-Identifier: MIT
#include "Src/String.h"

#include "Platform/ThreadId.h"
#include "Src/StringFactory.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/MapTesting.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <thread>

namespace
{

using namespace tvx;
using namespace tvx::test;

Ref<IStringFactory> GetFactory()
{
    Ref<IStringFactory> factory;
    EXPECT_EQ(StringFactory::GetInstance(factory.Receive()), TVX_OK);
    return factory;
}

Ref<IString> Create(const char* text)
{
    Ref<IString> string;
    EXPECT_EQ(GetFactory()->CreateString(text, string.Receive()), TVX_OK);
    return string;
}

TEST(String, KeepsACopyOfTheText)
{
    std::array<char, 4> text{"abc"};
    const auto string = Create(text.data());
    text.fill('x');
    EXPECT_STREQ(string->GetText(), "abc");
    EXPECT_EQ(string->GetLength(), 3U);
}

TEST(String, OfTheEmptyTextPointsToANul)
{
    const auto string = Create("");
    ASSERT_NE(string->GetText(), nullptr);
    EXPECT_EQ(*string->GetText(), '\0');
    EXPECT_EQ(string->GetLength(), 0U);
}

TEST(String, TakesANullTextAsTheEmptyOne)
{
    const auto string = Create(nullptr);
    EXPECT_STREQ(string->GetText(), "");
    EXPECT_EQ(string->GetLength(), 0U);
}

TEST(String, EndsAtTheFirstNul)
{
    const auto string = Create("ab\0cd");
    EXPECT_EQ(string->GetLength(), 2U);
    EXPECT_STREQ(string->GetText(), "ab");
}

TEST(String, KeepsEveryByteAndCountsBytes)
{
    std::string text;
    for (int byte = 1; byte < 256; ++byte)
        text.push_back(static_cast<char>(byte));
    const auto string = Create(text.c_str());
    EXPECT_EQ(string->GetLength(), 255U);
    EXPECT_EQ(std::memcmp(string->GetText(), text.c_str(), 256), 0);
    EXPECT_EQ(Create("\xC3\xA4")->GetLength(), 2U);  // one character of two bytes
}

TEST(String, OfEveryLengthIsTerminated)
{
    for (std::size_t length = 0; length < 130; ++length)
    {
        const std::string text(length, 'x');
        const auto string = Create(text.c_str());
        EXPECT_EQ(string->GetLength(), length);
        EXPECT_EQ(string->GetText(), text);
    }
}

TEST(String, GivesTheSameTextEachTime)
{
    const auto string = Create("abc");
    EXPECT_EQ(string->GetText(), string->GetText());
}

TEST(String, RefusesIObjectButAnswersIObjectBase)
{
    const auto string = MakeString("abc");
    EXPECT_EQ(Query<IString>(string).Get(), string.Get());
    EXPECT_EQ(Query<IObjectBase>(string).Get(), string.Get());
    int mark = 0;
    void* untouched = &mark;
    EXPECT_EQ(string->QueryInterface(IObject::Id, &untouched), TVX_E_NOINTERFACE);
    EXPECT_EQ(untouched, &mark);
    EXPECT_TRUE(string->IsUnique());  // no query left a reference behind
}

TEST(String, BelongsToTheThreadThatMadeIt)
{
    Ref<IString> string;
    std::uint32_t thread = 0;
    std::thread maker(
        [&]
        {
            string = MakeString("abc");
            thread = Platform::GetCurrentThreadId();
        });
    maker.join();
    EXPECT_EQ(string->GetOwnerThreadId(), thread);
    EXPECT_NE(string->GetOwnerThreadId(), Platform::GetCurrentThreadId());
}

TEST(String, TellsWhenItIsDestroyed)
{
    const auto handler = MakeRef<RecordingHandler>();
    auto string = MakeString("abc");
    string->SubscribeDestroyed(handler.Get(), 7);
    string = nullptr;
    ASSERT_EQ(handler->GetNames(), Texts{"Destroyed"});
    EXPECT_EQ(handler->events[0].userData, 7U);
}

TEST(StringFactory, GivesTheOneReferenceToTheCaller)
{
    const auto string = Create("abc");
    EXPECT_EQ(string->GetRefCount(), 1U);
}

TEST(StringFactory, MakesANewStringEachTime)
{
    const auto first = Create("abc");
    const auto second = Create("abc");
    EXPECT_NE(first.Get(), second.Get());
    EXPECT_NE(first->GetText(), second->GetText());
}

TEST(StringFactory, RefusesANullOutInSilence)
{
    const auto factory = GetFactory();
    Result result = TVX_OK;
    const auto output = CaptureOutput([&] { result = factory->CreateString("abc", nullptr); });
    EXPECT_EQ(result, TVX_E_POINTER);
    EXPECT_EQ(output, "");
}

TEST(StringFactory, RefusesIObjectButAnswersIObjectBase)
{
    const auto factory = GetFactory();
    EXPECT_EQ(Query<IStringFactory>(factory).Get(), factory.Get());
    EXPECT_EQ(Query<IObjectBase>(factory).Get(), factory.Get());
    EXPECT_FALSE(Query<IObject>(factory));
}

TEST(StringFactory, IsOneSharedInstance)
{
    const auto first = GetFactory();
    const auto count = first->GetRefCount();
    const auto second = GetFactory();
    EXPECT_EQ(first.Get(), second.Get());
    EXPECT_EQ(first->GetRefCount(), count + 1);
}

}  // namespace
