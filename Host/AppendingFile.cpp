// SPDX-License-Identifier: MIT
#include "Host/AppendingFile.h"

#include <cerrno>
#include <system_error>

namespace tvx::host
{

namespace
{

// What the system said last; the streams of the library do not keep it.
void Check(const std::ofstream& stream)
{
    if (!stream)
        throw std::system_error(errno, std::generic_category());
}

}  // namespace

AppendingFile::AppendingFile(const std::filesystem::path& file)
{
    stream_.rdbuf()->pubsetbuf(nullptr, 0);  // nothing is kept back: what fails, fails at once
    errno = EIO;                             // should the system say nothing
    stream_.open(file, std::ios::binary | std::ios::app);
    Check(stream_);
}

void AppendingFile::WriteLine(const std::string& line)
{
    const auto text = line + '\n';
    errno = EIO;
    stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
    Check(stream_);
}

}  // namespace tvx::host
