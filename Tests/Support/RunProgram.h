// SPDX-License-Identifier: MIT
#pragma once

#include "Tests/Support/ScratchFolder.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tvx::test
{

// How a program ended and what it wrote.
struct ProgramRun
{
    int exitCode;  // 128 and the signal's number for a program that was killed
    std::string output;
    std::string errors;
};

// A program to run, with what stands around it.
struct Program
{
    std::string file;
    std::map<std::string, std::string> environment;  // besides the tests' own
    std::string input = "/dev/null";
    std::string output;         // where standard output goes instead of being captured
    bool outputClosed = false;  // has none at all
};

namespace detail
{

class FileActions
{
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void Open(int descriptor, const std::string& file, int flags)
    {
        posix_spawn_file_actions_addopen(&actions_, descriptor, file.c_str(), flags, 0600);
    }
    void Close(int descriptor) { posix_spawn_file_actions_addclose(&actions_, descriptor); }

    const posix_spawn_file_actions_t* Get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

// The tests' own variables, without those of the program and its search path, and the program's.
inline std::vector<std::string> MakeEnvironment(Program program, const std::filesystem::path& folder)
{
    program.environment.try_emplace("TMPDIR", folder.string());
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable)
    {
        const std::string name(*variable, std::strcspn(*variable, "="));
        if (name != "TVX_PATH" && program.environment.count(name) == 0)
            variables.emplace_back(*variable);
    }
    for (const auto& [name, value] : program.environment)
        variables.push_back(name + "=" + value);
    return variables;
}

inline std::vector<char*> GetPointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (auto& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

inline std::string ReadAll(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

inline int WaitFor(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR)
    {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace detail

// Runs the program to its end. Its temporary files go with it.
inline ProgramRun RunProgram(const Program& program, std::vector<std::string> arguments)
{
    const ScratchFolder folder;
    const auto output = folder.GetPath() / "output";
    const auto errors = folder.GetPath() / "errors";
    detail::FileActions files;
    files.Open(STDIN_FILENO, program.input, O_RDONLY);
    if (program.outputClosed)
        files.Close(STDOUT_FILENO);
    else
        files.Open(STDOUT_FILENO, program.output.empty() ? output.string() : program.output, O_WRONLY | O_CREAT);
    files.Open(STDERR_FILENO, errors.string(), O_WRONLY | O_CREAT);

    arguments.insert(arguments.begin(), program.file);
    auto environment = detail::MakeEnvironment(program, folder.GetPath());
    pid_t process = 0;
    const int failed = posix_spawn(&process, program.file.c_str(), files.Get(), nullptr,
                                   detail::GetPointers(arguments).data(), detail::GetPointers(environment).data());
    if (failed != 0)
        throw std::runtime_error(program.file + " cannot be run: " + std::strerror(failed));
    const int exitCode = detail::WaitFor(process);
    return {exitCode, detail::ReadAll(output), detail::ReadAll(errors)};
}

}  // namespace tvx::test
