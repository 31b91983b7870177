// SPDX-License-Identifier: MIT
#include "Helpers/HandOut.h"
#include "Interfaces/IFactory.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

namespace tvx::test
{

namespace
{

class Unmakeable final : public ClassImpl<Unmakeable, IObject>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase>;

    Unmakeable() { throw std::bad_alloc(); }
};

// Has two faces, and keeps what can only be moved.
class Keeper final : public ClassImpl<Keeper, IFactory, IExportProxy>
{
public:
    using Interfaces = InterfaceList<IFactory, IObject, IObjectBase, IExportProxy>;

    Keeper(std::unique_ptr<int> value, int* seen) { *seen = *value; }

    Result Create(IObjectBase**) override { return TVX_E_FAIL; }
    Result GetExportObject(IObjectBase**) override { return TVX_E_FAIL; }
};

}  // namespace

TEST(HandOutNew, GivesANewObjectWithTheOneReferenceOfTheCaller)
{
    bool died = false;
    IObject* out = nullptr;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(HandOutNew<ProbeObject>(&out, &died), TVX_OK); }), "");
    EXPECT_TRUE(out->IsUnique());
    out->Release();
    EXPECT_TRUE(died);
}

TEST(HandOutNew, RefusesANullOutSilentlyAndDestroysTheObjectAgain)
{
    bool died = false;
    IObject** const out = nullptr;
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(HandOutNew<ProbeObject>(out, &died), TVX_E_POINTER); }), "");
    EXPECT_TRUE(died);
}

TEST(HandOutNew, FailsSilentlyForWantOfMemoryAndLeavesOutUntouched)
{
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(HandOutNew<Unmakeable>(&out), TVX_E_POINTER); }), "");
    EXPECT_EQ(out, mark.Get());
}

TEST(HandOutNew, GivesThePrimaryFaceOfASharedBase)
{
    int seen = 0;
    Ref<IObjectBase> object;
    ASSERT_EQ(HandOutNew<Keeper>(object.Receive(), std::make_unique<int>(7), &seen), TVX_OK);
    EXPECT_EQ(object.Get(), static_cast<IObjectBase*>(Query<IFactory>(object).Get()));
    EXPECT_EQ(seen, 7);
}

TEST(HandOutNew, GivesAFurtherFaceWhereItIsAskedFor)
{
    int seen = 0;
    Ref<IExportProxy> proxy;
    ASSERT_EQ(HandOutNew<Keeper>(proxy.Receive(), std::make_unique<int>(1), &seen), TVX_OK);
    EXPECT_EQ(proxy.Get(), Query<IExportProxy>(proxy).Get());
}

}  // namespace tvx::test
