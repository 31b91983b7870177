// SPDX-License-Identifier: MIT
#include "Platform/Export.h"
#include "Tests/Host/Modules/TalkingExport.h"
#include "Tests/Host/Modules/TestModule.h"

namespace
{

tvx::test::TestModule testModule("Left",
                                 {{"test.Left/1.0", tvx::test::Always(tvx::test::MakeTalkingExport("Left", true))}});

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return testModule.GetExport(id, out);
}
