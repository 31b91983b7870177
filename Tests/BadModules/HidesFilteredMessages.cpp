// SPDX-License-Identifier: MIT
#include "Src/ConsoleLoggerPlug.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

// Tells of a message only when its level is not below the minimum.
class Wrong final : public CBasicLogger, public Singleton<Wrong, ILogger>
{
public:
    using Singleton<Wrong, ILogger>::GetExportInstance;

    Result Log(const char* loggerName, std::int32_t level, const char* source, const char* scope, const char* file,
               std::uint32_t line, const char* message) override
    {
        std::int32_t least = 0;
        GetLevel(loggerName, &least);
        return level < least ? TVX_OK : CBasicLogger::Log(loggerName, level, source, scope, file, line, message);
    }
};

}  // namespace

constexpr Export Exports[] = {{"com.talvere.general.tvx.BasicLogger/1.0", &Wrong::GetExportInstance}};

}  // namespace tvx::bad
