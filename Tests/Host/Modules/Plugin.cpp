// SPDX-License-Identifier: MIT
#include "Platform/Export.h"
#include "Tests/Host/Modules/TalkingPlugin.h"
#include "Tests/Host/Modules/TestModule.h"

namespace
{

using namespace tvx;

test::TestModule testModule("Plugin",
                            {{"test.Plugin/1.0", test::Always(Ref<IImportsContainer>(MakeRef<test::TalkingPlugin>()))},
                             {"test.PluginUser/1.0", test::Always(test::MakeTalkingExport("PluginUser", true))}});

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return testModule.GetExport(id, out);
}
