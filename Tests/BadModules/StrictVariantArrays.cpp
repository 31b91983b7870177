// SPDX-License-Identifier: MIT
#include "Helpers/ExportTable.h"
#include "Helpers/HandOut.h"
#include "Platform/Export.h"
#include "Src/CVariantArray.h"

#include <string>

namespace
{

using namespace tvx;

// Gives up at an element that cannot be read, where null is due.
class Wrong final : public ClassImpl<Wrong, IDeserializable, IFactory>, public Singleton<Wrong, IDeserializable>
{
public:
    using Interfaces = InterfaceList<IDeserializable, IObjectBase, IFactory, AnsweredBy<IObject, IFactory>>;

    Result Create(IObjectBase** out) override { return CVariantArrayFactory::GetOrMake()->Create(out); }
    Result GetFormatId(IString** out) override { return CVariantArrayFactory::GetOrMake()->GetFormatId(out); }
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override
    {
        TVX_RETURN_EPOINTER_IF_NULL(reader);
        std::int32_t size = 0;
        static_cast<void>(reader->ReadNamedInt("size", &size));
        const auto array = MakeRef<CVariantArray>();
        for (std::int32_t index = 0; index < size; ++index)
        {
            Ref<IObjectBase> element;
            if (TVX_FAILED(reader->ReadNamedObject(("param" + std::to_string(index)).c_str(), element.Receive())))
                return TVX_E_FAIL;
            array->AppendVariant(Query<IVariant>(element).Get());
        }
        if (out == nullptr)
            return TVX_E_POINTER;
        HandOut(static_cast<IVariantArray*>(array.Get()), out);
        return TVX_OK;
    }
};

constexpr Export Exports[] = {
    {"com.talvere.general.tvx.GenericVariantArrayImplementation/1.0", &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
