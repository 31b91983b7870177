// SPDX-License-Identifier: MIT
#include "Host/TextFile.h"

#include "Host/ModuleFile.h"

#include <fstream>
#include <iterator>
#include <system_error>

namespace tvx::host
{

namespace
{

constexpr std::size_t MaxSize = 64 * 1024 * 1024;

Error Fail(const std::filesystem::path& file, const std::string& what)
{
    return MakeError(ErrorKind::CannotRead, DisplayName(file) + " " + what);
}

bool WriteAll(const std::filesystem::path& file, std::string_view text)
{
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
    return !stream.fail();
}

}  // namespace

Outcome<std::string> ReadTextFile(const std::filesystem::path& file)
{
    std::error_code failed;
    if (std::filesystem::is_directory(file, failed))
        return Fail(file, "is a folder");
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return Fail(file, std::filesystem::exists(file, failed) ? "cannot be read" : "does not exist");
    std::string text(MaxSize + 1, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (stream.bad())
        return Fail(file, "cannot be read");
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (text.size() > MaxSize)
        return Fail(file, "is larger than 64 MiB");
    return text;
}

Outcome<std::size_t> WriteTextFile(const std::filesystem::path& file, std::string_view text)
{
    std::error_code failed;
    const auto target = std::filesystem::weakly_canonical(file, failed);
    if (failed)
        return Fail(file, "cannot be written: " + failed.message());
    auto temporary = target;
    temporary += ".new";
    if (!WriteAll(temporary, text))
    {
        std::filesystem::remove(temporary, failed);
        return Fail(file, "cannot be written");
    }
    const auto before = std::filesystem::status(target, failed);
    if (std::filesystem::exists(before))
        std::filesystem::permissions(temporary, before.permissions(), failed);
    std::filesystem::rename(temporary, target, failed);
    if (!failed)
        return text.size();
    const auto reason = failed.message();
    std::filesystem::remove(temporary, failed);
    return Fail(file, "cannot be written: " + reason);
}

}  // namespace tvx::host
