// SPDX-License-Identifier: MIT
#include "Helpers/ClassImpl.h"
#include "Interfaces/IFactory.h"
#include "Platform/Export.h"
#include "Tests/Host/Modules/TestModule.h"
#include "Tests/Support/Doubles.h"

namespace
{

using namespace tvx;

// The export of settings maps makes objects of another sort.
class FalseFactory final : public ClassImpl<FalseFactory, IFactory>
{
public:
    using Interfaces = InterfaceList<IFactory, IObject, IObjectBase>;

    Result Create(IObjectBase** out) override
    {
        Platform::WriteLine({"FalseSettings: makes something else"});
        HandOut(MakeRef<test::BareObject>().Get(), out);
        return TVX_OK;
    }
};

test::TestModule testModule("FalseSettings", {{"com.talvere.general.tvx.GenericSimpleMapImplementation/1.1",
                                               test::Always(MakeRef<FalseFactory>())}});

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return testModule.GetExport(id, out);
}
