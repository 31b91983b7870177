// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"

#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>
#include <string>
#include <string_view>

namespace tvx::host
{

// A module's file, opened for reading only: its code is neither mapped nor run.
//
// Offsets and sizes come from the file's own content and are not trusted: a read outside the file or above MaxRead is
// an error and allocates nothing. One thread at a time.
class ModuleFile
{
public:
    // The most bytes that one read gives.
    static constexpr std::uint64_t MaxRead = 16 * 1024 * 1024;

    // Opens regular files and links to them. Everything else is refused before it is opened: a pipe would wait for its
    // writer, a device might never end.
    static Outcome<ModuleFile> Open(const std::filesystem::path& path);

    // A file that is in memory already; messages call it by the name.
    static ModuleFile OfBytes(std::string name, std::string bytes);

    // The number of bytes of the file.
    std::uint64_t GetSize() const;

    // The bytes from offset on, exactly as many as asked for.
    //   part  what they are, for the message of a failure: "section table"
    Outcome<std::string> Read(std::string_view part, std::uint64_t offset, std::uint64_t size);

    // An error about this file; the message is its name, a space and the text.
    Error Fail(ErrorKind kind, std::string_view text) const;

private:
    ModuleFile(std::string name, std::unique_ptr<std::istream> stream, std::uint64_t size);

    std::string name_;
    std::unique_ptr<std::istream> stream_;
    std::uint64_t size_;
};

// How messages name a file: its path as given, in UTF-8.
std::string DisplayName(const std::filesystem::path& path);

}  // namespace tvx::host
