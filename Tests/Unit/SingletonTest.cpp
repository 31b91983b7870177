// SPDX-License-Identifier: MIT
#include "Helpers/Singleton.h"
#include "Interfaces/IFactory.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <new>

namespace tvx::test
{

namespace
{

// Every test has a shared instance of its own.
template <class Test>
class Shared final : public ClassImpl<Shared<Test>, IObject>, public Singleton<Shared<Test>, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;

    Shared() { ++made; }

    static inline int made = 0;
};

// Cannot be made as long as there is no memory.
template <class Test>
class Starved final : public ClassImpl<Starved<Test>, IObject>, public Singleton<Starved<Test>, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;

    Starved()
    {
        if (!memory)
            throw std::bad_alloc();
    }

    static inline bool memory = false;
};

// Its second face shares IObjectBase with the first.
class TwoFaces final : public ClassImpl<TwoFaces, IFactory, IExportProxy>, public Singleton<TwoFaces, IExportProxy>
{
public:
    using Interfaces = InterfaceList<IFactory, IObject, IObjectBase, IExportProxy>;

    Result Create(IObjectBase**) override { return TVX_E_FAIL; }
    Result GetExportObject(IObjectBase**) override { return TVX_E_FAIL; }
};

}  // namespace

TEST(Singleton, GivesTheSameObjectEachTimeWithOneMoreReference)
{
    struct Here;
    using Subject = Shared<Here>;
    Ref<IObject> first;
    Ref<IObject> second;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(Subject::GetInstance(first.Receive()), TVX_OK); }), "");
    EXPECT_EQ(first->GetRefCount(), 2u);  // the holder's and ours
    EXPECT_EQ(Subject::GetInstance(second.Receive()), TVX_OK);
    EXPECT_EQ(first.Get(), second.Get());
    EXPECT_EQ(first->GetRefCount(), 3u);
    EXPECT_EQ(Subject::made, 1);
}

TEST(Singleton, LivesOnWhenNobodyOutsideHoldsIt)
{
    struct Here;
    using Subject = Shared<Here>;
    Ref<IObject> instance;
    Subject::GetInstance(instance.Receive());
    IObject* const address = instance.Get();
    instance = nullptr;
    Subject::GetInstance(instance.Receive());
    EXPECT_EQ(instance.Get(), address);
    EXPECT_EQ(instance->GetRefCount(), 2u);
    EXPECT_EQ(Subject::made, 1);
}

TEST(Singleton, RefusesANullOutWithAReportAndMakesNothing)
{
    struct Here;
    using Subject = Shared<Here>;
    const auto output = CaptureOutput([] { EXPECT_EQ(Subject::GetInstance(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Helpers/Singleton.h"));
    EXPECT_EQ(Subject::made, 0);
}

TEST(Singleton, GivesTheExportTableTheSameObjectWithOneMoreReference)
{
    struct Here;
    using Subject = Shared<Here>;
    Ref<IObject> instance;
    Ref<IObjectBase> exported;
    Subject::GetInstance(instance.Receive());
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(Subject::GetExportInstance(exported.Receive()), TVX_OK); }), "");
    EXPECT_EQ(exported.Get(), static_cast<IObjectBase*>(instance.Get()));
    EXPECT_EQ(exported->GetRefCount(), 3u);
}

TEST(Singleton, GivesTheExportTableTheFaceItIsHandedOutUnder)
{
    Ref<IExportProxy> instance;
    Ref<IObjectBase> exported;
    EXPECT_EQ(TwoFaces::GetInstance(instance.Receive()), TVX_OK);
    EXPECT_EQ(TwoFaces::GetExportInstance(exported.Receive()), TVX_OK);
    EXPECT_EQ(exported.Get(), static_cast<IObjectBase*>(instance.Get()));
    EXPECT_NE(exported.Get(), Query<IObjectBase>(exported).Get());
}

TEST(Singleton, RefusesANullOutOfTheExportTableWithAReport)
{
    struct Here;
    using Subject = Shared<Here>;
    const auto output = CaptureOutput([] { EXPECT_EQ(Subject::GetExportInstance(nullptr), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Helpers/Singleton.h"));
    EXPECT_EQ(Subject::made, 0);
}

TEST(Singleton, ThatCannotBeMadeFailsAndIsMadeByALaterRequest)
{
    struct Here;
    using Subject = Starved<Here>;
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(Subject::GetInstance(&out), TVX_E_POINTER); }), "");
    EXPECT_EQ(out, mark.Get());

    Subject::memory = true;
    Ref<IObject> instance;
    EXPECT_EQ(Subject::GetInstance(instance.Receive()), TVX_OK);
    EXPECT_EQ(instance->GetRefCount(), 2u);
}

TEST(Singleton, ThatCannotBeMadeIsTheGenericFailureForTheExportTable)
{
    struct Here;
    using Subject = Starved<Here>;
    const auto mark = MakeRef<ProbeObject>();
    IObjectBase* out = mark.Get();
    const auto output = CaptureOutput([&] { EXPECT_EQ(Subject::GetExportInstance(&out), TVX_E_FAIL); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_FAIL_IF_FAILED", "Helpers/Singleton.h"));
    EXPECT_EQ(out, mark.Get());
}

namespace
{

// Says on standard error what is left when the program's static objects have been destroyed.
class Lasting final : public ClassImpl<Lasting, IObject>, public Singleton<Lasting, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;

    ~Lasting() { std::fputs("instance destroyed\n", stderr); }
};

IObject* kept = nullptr;

void TellCountOfKept()
{
    std::fprintf(stderr, "count %u\n", kept->GetRefCount());
    IObject* out = nullptr;
    std::fprintf(stderr, "later request %d\n", Lasting::GetInstance(&out));
    kept->Release();
}

void MakeAndExit()
{
    Ref<IObject> instance;
    Lasting::GetInstance(instance.Receive());
    instance = nullptr;
    std::exit(0);
}

// What is registered first runs last: the count is told after the singleton let go.
void KeepAndExit()
{
    std::atexit(&TellCountOfKept);
    Lasting::GetInstance(&kept);
    std::exit(0);
}

}  // namespace

TEST(SingletonDeathTest, IsReleasedWhenItsModuleIsUnloaded)
{
    EXPECT_EXIT(MakeAndExit(), testing::ExitedWithCode(0), "^instance destroyed\n$");
}

TEST(SingletonDeathTest, LeavesItsObjectToWhoStillHoldsIt)
{
    EXPECT_EXIT(KeepAndExit(), testing::ExitedWithCode(0), "^count 1\nlater request -4\ninstance destroyed\n$");
}

}  // namespace tvx::test
