// SPDX-License-Identifier: MIT
#include "Helpers/ExportTable.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tvx::test
{
namespace
{

int asked = 0;

Result GiveNew(IObjectBase** out)
{
    ++asked;
    *out = MakeRef<BareObject>().Detach();
    return TVX_OK;
}

Result FailWithAnObject(IObjectBase** out)
{
    *out = MakeRef<BareObject>().Detach();
    return TVX_E_POINTER;
}

Result GiveNull(IObjectBase**)
{
    return TVX_OK;
}

Result Throw(IObjectBase**)
{
    throw std::runtime_error("an author's mistake");
}

constexpr Export Table[] = {
    {"test.New/1.0", &GiveNew},
    {"test.Failing/1.0", &FailWithAnObject},
    {"test.Null/1.0", &GiveNull},
    {"test.Throwing/1.0", &Throw},
};

// What the out parameter is after a request; it is not null before.
struct Answer
{
    explicit Answer(const char* id) : before(MakeRef<BareObject>()), out(before.Get())
    {
        code = GiveExport(Table, id, &out);
    }

    Ref<BareObject> before;
    IObjectBase* out;
    Result code = TVX_OK;
};

TEST(ExportTable, GivesTheObjectOfAnExportWithOneReference)
{
    const Answer answer("test.New/1.0");
    EXPECT_EQ(answer.code, TVX_OK);
    const auto object = Ref<IObjectBase>::Adopt(answer.out);
    EXPECT_TRUE(object->IsUnique());
}

TEST(ExportTable, GivesNullForWhatItDoesNotHave)
{
    for (const char* const id :
         {"test.New/1.1", "test.New/1.0 ", "test.new/1.0", "", static_cast<const char*>(nullptr)})
    {
        const Answer answer(id);
        EXPECT_EQ(answer.code, TVX_E_FAIL);
        EXPECT_EQ(answer.out, nullptr);
    }
}

TEST(ExportTable, GivesNullForWhatCannotBeMade)
{
    for (const char* const id : {"test.Failing/1.0", "test.Null/1.0", "test.Throwing/1.0"})
    {
        const Answer answer(id);
        EXPECT_EQ(answer.code, TVX_E_FAIL) << id;
        EXPECT_EQ(answer.out, nullptr) << id;
    }
}

TEST(ExportTable, RefusesANullOut)
{
    EXPECT_EQ(GiveExport(Table, "test.New/1.0", nullptr), TVX_E_FAIL);
}

TEST(ExportTable, MakesEveryExportAtLoadWhateverFails)
{
    asked = 0;
    constexpr Export backwards[] = {Table[3], Table[2], Table[1], Table[0]};
    const ExportsAtLoad atLoad(backwards);
    EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace tvx::test
