// SPDX-License-Identifier: MIT
#include "Host/RotatingFileSink.h"

#include "Host/AppendingFile.h"
#include "Host/ModuleFile.h"

#include <spdlog/details/log_msg.h>
#include <spdlog/sinks/rotating_file_sink.h>

#include <cstdio>

namespace tvx::host
{

namespace
{

// Nothing is kept back: what fails, fails at once, and no rest of it is tried again when the file is closed.
spdlog::file_event_handlers MakeUnbuffered()
{
    spdlog::file_event_handlers handlers;
    handlers.after_open = [](const spdlog::filename_t&, std::FILE* file) { std::setvbuf(file, nullptr, _IONBF, 0); };
    return handlers;
}

class RotatingFile final : public ILineOutput
{
public:
    RotatingFile(const std::filesystem::path& file, const RotationLimits& limits)
        : sink_(file.string(), limits.maxSize, limits.oldFiles, false, MakeUnbuffered())
    {
        sink_.set_pattern("%v");
    }

    void WriteLine(const std::string& line) override
    {
        sink_.log(spdlog::details::log_msg(spdlog::string_view_t(), spdlog::level::info, line));
    }

private:
    spdlog::sinks::rotating_file_sink_st sink_;
};

// The library would make the folder, and when it cannot open the file it tries again for a while; so that is tried first.
std::unique_ptr<ILineOutput> Open(const std::filesystem::path& file, const RotationLimits& limits)
{
    static_cast<void>(AppendingFile(file));
    return std::make_unique<RotatingFile>(file, limits);
}

}  // namespace

Outcome<Ref<LogSink>> OpenRotatingFileSink(const std::filesystem::path& file, const RotationLimits& limits)
{
    if (limits.maxSize == 0 || limits.oldFiles > RotationLimits::MostFiles)
        return MakeError(ErrorKind::CannotRead, DisplayName(file) + " cannot be written within a size of " +
                                                    std::to_string(limits.maxSize) + " bytes and " +
                                                    std::to_string(limits.oldFiles) + " old files");
    const auto open = [limits](const std::filesystem::path& path) { return Open(path, limits); };
    return OpenLogSink(file, FormatTextLine, open);
}

}  // namespace tvx::host
