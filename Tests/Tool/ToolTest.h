// SPDX-License-Identifier: MIT
#pragma once

#include "Tests/Support/RunProgram.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace tvx::test
{

constexpr const char SettingsMapExport[] = "com.talvere.general.tvx.GenericSimpleMapImplementation/1.1";

inline std::filesystem::path GetRealModule(const std::string& name)
{
    return std::filesystem::path(TVX_MODULE_FOLDER) / (name + ".tvxlib");
}

inline std::filesystem::path GetTestModule(const std::string& name)
{
    return std::filesystem::path(TVX_TEST_MODULE_FOLDER) / (name + ".tvxlib");
}

inline ProgramRun RunTvx(std::vector<std::string> arguments, Program program = {})
{
    program.file = TVX_PROGRAM;
    return RunProgram(program, std::move(arguments));
}

// A copy of the program in a folder of its own, beside the real modules named and no others.
class ProgramCopy
{
public:
    explicit ProgramCopy(const std::vector<std::string>& modules)
    {
        std::filesystem::copy(TVX_PROGRAM, folder_.GetPath() / "tvx");
        for (const auto& module : modules)
            std::filesystem::copy(GetRealModule(module), folder_.GetPath());
    }

    ProgramRun Run(std::vector<std::string> arguments, Program program = {}) const
    {
        program.file = (folder_.GetPath() / "tvx").string();
        return RunProgram(program, std::move(arguments));
    }

    const ScratchFolder& GetFolder() const { return folder_; }

private:
    ScratchFolder folder_;
};

// Whether the program refused in the one way: nothing on standard output, one line of complaint, the exit code.
inline testing::AssertionResult Refused(const ProgramRun& run, int exitCode, const std::string& complaint)
{
    if (run.exitCode == exitCode && run.output.empty() && run.errors == "tvx: " + complaint + "\n")
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "exit code " << run.exitCode << ", output \"" << run.output << "\", errors \""
                                       << run.errors << '"';
}

// The same, whatever the complaint says after its beginning.
inline testing::AssertionResult RefusedInOneLine(const ProgramRun& run, int exitCode, const std::string& beginning)
{
    const auto lines = std::count(run.errors.begin(), run.errors.end(), '\n');
    if (run.exitCode == exitCode && run.output.empty() && lines == 1 && run.errors.ends_with('\n') &&
        run.errors.starts_with("tvx: " + beginning))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "exit code " << run.exitCode << ", output \"" << run.output << "\", errors \""
                                       << run.errors << '"';
}

// Whether the program did what was asked and had nothing to complain about.
inline testing::AssertionResult Answered(const ProgramRun& run, const std::string& output)
{
    if (run.exitCode == 0 && run.output == output && run.errors.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "exit code " << run.exitCode << ", output \"" << run.output << "\", errors \""
                                       << run.errors << '"';
}

// Whether the parts stand in the text, one behind the other.
inline testing::AssertionResult HasInOrder(const std::string& text, const std::vector<std::string>& parts)
{
    std::size_t place = 0;
    for (const auto& part : parts)
    {
        place = text.find(part, place);
        if (place == std::string::npos)
            return testing::AssertionFailure() << '"' << part << "\" does not stand in its place in:\n" << text;
        place += part.size();
    }
    return testing::AssertionSuccess();
}

}  // namespace tvx::test
