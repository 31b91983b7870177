// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/OwnQuery.h"

namespace tvx::bad
{

namespace
{

// Gives another object for IObject, with references of its own, and forgets who it is itself.
class Wrong final : public OwnQuery<Wrong>
{
public:
    Result DoQueryInterface(const char* id, void** out) override
    {
        if (!IsOwnId(id) || out == nullptr)
            return TVX_E_NOINTERFACE;
        if (std::string_view(id) == IObjectBase::Id)
            return Give(this, out);
        *out = Ref<IObject>(other_).Detach();
        return TVX_OK;
    }

private:
    Ref<IObject> other_ = MakeRef<Plain>();
};

}  // namespace

constexpr Export Exports[] = {{PlainId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
