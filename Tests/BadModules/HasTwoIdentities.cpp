// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OwnQuery.h"

namespace
{

using namespace tvx;

// Gives another object for IObject, with references of its own, and forgets who it is itself.
class Wrong final : public bad::OwnQuery<Wrong>
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
    Ref<IObject> other_ = MakeRef<bad::Plain>();
};

constexpr Export Exports[] = {{bad::PlainId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
