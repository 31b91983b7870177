// SPDX-License-Identifier: MIT
#include "Host/TextFile.h"

#include "Host/ModuleFile.h"

#include <algorithm>
#include <fstream>
#include <random>
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

// At most one byte more than the largest file has.
bool ReadAll(std::istream& stream, std::string& text)
{
    char part[16 * 1024];
    while (text.size() <= MaxSize && stream)
    {
        stream.read(part, static_cast<std::streamsize>(std::min(sizeof part, MaxSize + 1 - text.size())));
        text.append(part, static_cast<std::size_t>(stream.gcount()));
    }
    return !stream.bad();
}

// A new file beside target, of a name that nobody else uses, with the permissions of the file that it is to replace.
bool WriteNew(const std::filesystem::path& file, const std::filesystem::file_status& replaced, std::string_view text)
{
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    std::error_code failed;
    if (std::filesystem::exists(replaced))
        std::filesystem::permissions(file, replaced.permissions(), failed);
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
    std::string text;
    if (!ReadAll(stream, text))
        return Fail(file, "cannot be read");
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
    const auto before = std::filesystem::status(target, failed);
    if (std::filesystem::exists(before) && !std::filesystem::is_regular_file(before))
        return Fail(file, "cannot be written: it is not a regular file");
    auto temporary = target;
    temporary += "." + std::to_string(std::random_device()()) + ".new";
    if (!WriteNew(temporary, before, text))
    {
        std::filesystem::remove(temporary, failed);
        return Fail(file, "cannot be written");
    }
    std::filesystem::rename(temporary, target, failed);
    if (!failed)
        return text.size();
    const auto reason = failed.message();
    std::filesystem::remove(temporary, failed);
    return Fail(file, "cannot be written: " + reason);
}

}  // namespace tvx::host
