// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/HandOut.h"
#include "Src/SimpleMap.h"
#include "Src/SimpleMapFactory.h"

namespace tvx::bad
{

constexpr const char SettingsMapId[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";

// The settings map export, with maps of the class Made. Copies and what is read back are real ones, and the imports are the
// real factory's, where every map looks for them.
template <class Made>
class SettingsMapsOf final : public ClassImpl<SettingsMapsOf<Made>, IFactory, IDeserializable, IImportsContainer>,
                             public Singleton<SettingsMapsOf<Made>, IFactory>
{
public:
    using Interfaces = InterfaceList<IImportsContainer, AnsweredBy<IObjectBase, IFactory>,
                                     AnsweredBy<IObject, IFactory>, IFactory, IDeserializable>;

    Result Create(IObjectBase** out) override { return HandOutNew<Made>(out); }

    Result GetFormatId(IString** out) override { return Real()->GetFormatId(out); }
    Result Deserialize(IDeserializer* reader, IObjectBase** out) override { return Real()->Deserialize(reader, out); }

    Result SetImport(const char* name, IObjectBase* object) override { return Real()->SetImport(name, object); }
    Result OnImportsSet() override { return Real()->OnImportsSet(); }
    Result OnImportsHook() override { return Real()->OnImportsHook(); }
    Result ClearImports() override { return Real()->ClearImports(); }

private:
    static Ref<CSimpleMapFactory> Real() { return CSimpleMapFactory::GetOrMake(); }
};

}  // namespace tvx::bad
