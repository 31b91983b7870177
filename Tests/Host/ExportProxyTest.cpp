// SPDX-License-Identifier: MIT
#include "Host/ExportProxy.h"

#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <new>

namespace tvx::host
{
namespace
{

TEST(ExportProxy, FetchesWhenItIsAskedAndNotBefore)
{
    int fetched = 0;
    const Ref<IObjectBase> object = MakeRef<test::BareObject>();
    const auto proxy = MakeRef<ExportProxy>(
        [&]
        {
            ++fetched;
            return object;
        });
    EXPECT_EQ(fetched, 0);
    Ref<IObjectBase> got;
    EXPECT_EQ(proxy->GetExportObject(got.Receive()), TVX_OK);
    EXPECT_EQ(got.Get(), object.Get());
    EXPECT_EQ(object->GetRefCount(), 2U);
    EXPECT_EQ(fetched, 1);
}

TEST(ExportProxy, GivesNullForWhatCannotBeHad)
{
    const auto proxy = MakeRef<ExportProxy>([] { return Ref<IObjectBase>(); });
    const auto other = MakeRef<test::BareObject>();
    IObjectBase* got = other.Get();
    EXPECT_EQ(proxy->GetExportObject(&got), TVX_E_FAIL);
    EXPECT_EQ(got, nullptr);
}

TEST(ExportProxy, GivesNullWhenFetchingThrows)
{
    const auto proxy = MakeRef<ExportProxy>([]() -> Ref<IObjectBase> { throw std::bad_alloc(); });
    const auto other = MakeRef<test::BareObject>();
    IObjectBase* got = other.Get();
    EXPECT_EQ(proxy->GetExportObject(&got), TVX_E_FAIL);
    EXPECT_EQ(got, nullptr);
}

TEST(ExportProxy, FetchesNothingForANullOut)
{
    bool fetched = false;
    const auto proxy = MakeRef<ExportProxy>(
        [&]
        {
            fetched = true;
            return Ref<IObjectBase>();
        });
    EXPECT_EQ(proxy->GetExportObject(nullptr), TVX_E_POINTER);
    EXPECT_FALSE(fetched);
}

TEST(ExportProxy, AnswersItsThreeInterfacesAndNoOther)
{
    const auto proxy = MakeRef<ExportProxy>([] { return Ref<IObjectBase>(); });
    EXPECT_EQ(Query<IExportProxy>(proxy).Get(), proxy.Get());
    EXPECT_EQ(Query<IObject>(proxy).Get(), proxy.Get());
    EXPECT_EQ(Query<IObjectBase>(proxy).Get(), proxy.Get());
    EXPECT_FALSE(Query<IImportsContainer>(proxy));
    EXPECT_TRUE(proxy->IsUnique());
}

}  // namespace
}  // namespace tvx::host
