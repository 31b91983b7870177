// SPDX-License-Identifier: MIT
#include "Platform/Export.h"
#include "Tests/Host/Modules/TestModule.h"
#include "Tests/Support/Doubles.h"

namespace
{

using namespace tvx;

Result Fail(IObjectBase**)
{
    return TVX_E_PRECONDITION;
}

Result FailLate(IObjectBase** out)
{
    HandOut(MakeRef<test::BareObject>().Get(), out);
    return TVX_E_FAIL;
}

Result GiveNull(IObjectBase** out)
{
    *out = nullptr;
    return TVX_OK;
}

test::TestModule testModule("Misbehaving", {{"test.Failing/1.0", &Fail},
                                            {"test.FailingLate/1.0", &FailLate},
                                            {"test.Null/1.0", &GiveNull},
                                            {"test.Bare/1.0", test::Always(MakeRef<test::BareObject>())},
                                            {"test.Unconnectable/1.0", test::Always(MakeRef<test::BareObject>())}});

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return testModule.GetExport(id, out);
}
