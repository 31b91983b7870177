// SPDX-License-Identifier: MIT
#include "Host/ModuleFile.h"

#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

namespace tvx::host
{
namespace
{

// Why the path cannot be opened as a file; empty when nothing speaks against it.
std::string FindObstacle(const std::filesystem::path& path)
{
    std::error_code error;
    switch (std::filesystem::status(path, error).type())
    {
    case std::filesystem::file_type::regular: return {};
    case std::filesystem::file_type::not_found: return "does not exist";
    case std::filesystem::file_type::directory: return "is a folder, not a file";
    case std::filesystem::file_type::none: return "cannot be read: " + error.message();
    default: return "is not a regular file";
    }
}

Error CannotRead(const std::string& name, const std::string& text)
{
    return MakeError(ErrorKind::CannotRead, name + " " + text);
}

}  // namespace

std::string DisplayName(const std::filesystem::path& path)
{
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

Outcome<ModuleFile> ModuleFile::Open(const std::filesystem::path& path)
{
    auto name = DisplayName(path);
    if (const auto obstacle = FindObstacle(path); !obstacle.empty())
    {
        return CannotRead(name, obstacle);
    }
    auto stream = std::make_unique<std::ifstream>(path, std::ios::binary);
    if (!*stream)
    {
        return CannotRead(name, "cannot be opened for reading");
    }
    const std::streamoff size = stream->seekg(0, std::ios::end).tellg();
    if (size < 0)
    {
        return CannotRead(name, "cannot be read: its size is unknown");
    }
    return ModuleFile(std::move(name), std::move(stream), static_cast<std::uint64_t>(size));
}

ModuleFile ModuleFile::OfBytes(std::string name, std::string bytes)
{
    const std::uint64_t size = bytes.size();
    return {std::move(name), std::make_unique<std::istringstream>(std::move(bytes)), size};
}

ModuleFile::ModuleFile(std::string name, std::unique_ptr<std::istream> stream, std::uint64_t size)
    : name_(std::move(name)),
      stream_(std::move(stream)),
      size_(size)
{
}

std::uint64_t ModuleFile::GetSize() const
{
    return size_;
}

Outcome<std::string> ModuleFile::Read(std::string_view part, std::uint64_t offset, std::uint64_t size)
{
    const std::string damage = "is a damaged module: its " + std::string(part);
    if (offset > size_ || size > size_ - offset)
    {
        return Fail(ErrorKind::DamagedModule, damage + " reaches beyond the end of the file");
    }
    if (size > MaxRead)
    {
        return Fail(ErrorKind::DamagedModule, damage + " is larger than 16 MiB");
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    stream_->clear();
    stream_->seekg(static_cast<std::streamoff>(offset));
    if (!stream_->read(bytes.data(), static_cast<std::streamsize>(size)))
    {
        return Fail(ErrorKind::CannotRead, "cannot be read: reading its " + std::string(part) + " failed");
    }
    return bytes;
}

Error ModuleFile::Fail(ErrorKind kind, std::string_view text) const
{
    return MakeError(kind, name_ + " " + std::string(text));
}

}  // namespace tvx::host
