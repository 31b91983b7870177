// SPDX-License-Identifier: MIT
#include "Platform/Export.h"
#include "Tests/Host/Modules/TalkingExport.h"
#include "Tests/Host/Modules/TestModule.h"

namespace
{

using namespace tvx;

test::TestModule MakeModule()
{
    const auto recorder = MakeRef<test::TalkingExport>("Recorder");
    // Has another module loaded while the host waits for the export.
    const auto borrow = [recorder](IObjectBase**)
    { return recorder->Fetch("Neighbour") ? TVX_E_UNSUPPORTED_FORMAT : TVX_OK; };
    return {"Recorder",
            {{"test.Recorder/1.0", test::Always(Ref<IObjectBase>(static_cast<IImportsContainer*>(recorder.Get())))},
             {"test.Needy/2.0", test::Always(test::MakeTalkingExport("Needy"))},
             {"test.Selfish/1.0", test::Always(test::MakeTalkingExport("Selfish", true))},
             {"test.Borrower/1.0", borrow}}};
}

test::TestModule testModule = MakeModule();

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return testModule.GetExport(id, out);
}
