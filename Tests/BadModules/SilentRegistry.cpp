// SPDX-License-Identifier: MIT
#include "Helpers/ExportTable.h"
#include "Platform/Export.h"
#include "Src/CVariantArray.h"
#include "Src/CollectionFactory.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Src/ImageFactory.h"
#include "Src/Map.h"
#include "Src/SimpleMapFactory.h"
#include "Src/StringFactory.h"
#include "Src/VariantFactory.h"

namespace
{

using namespace tvx;

// All eight exports, without the lines that are due at loading and at unloading.
constexpr Export Exports[] = {
    {"com.talvere.general.tvx.GenericStringImplementation/1.0", &StringFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericVariantImplementation/1.1", &VariantFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericMapImplementation/1.1", &MapFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericSimpleMapImplementation/1.1", &CSimpleMapFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericCollectionImplementation/1.1", &CollectionFactory::GetExportInstance},
    {"com.talvere.general.tvx.GenericImageImplementation/1.0", &ImageFactory::GetExportInstance},
    {"com.talvere.general.tvx.BasicLogger/1.0", &CBasicLogger::GetExportInstance},
    {"com.talvere.general.tvx.GenericVariantArrayImplementation/1.0", &CVariantArrayFactory::GetExportInstance},
};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
