// SPDX-License-Identifier: MIT
#pragma once

#include "Host/LogSink.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace tvx::host
{

// A file opened to add lines at its end; it is made when it is missing. Each line is one write of the system. One thread at a
// time.
class AppendingFile final : public ILineOutput
{
public:
    // Throws std::system_error with the system's reason, as does WriteLine.
    explicit AppendingFile(const std::filesystem::path& file);

    void WriteLine(const std::string& line) override;

private:
    std::ofstream stream_;
};

}  // namespace tvx::host
