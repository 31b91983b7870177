// SPDX-License-Identifier: MIT
#include "Platform/ChildProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tvx::Platform
{

namespace
{

using Clock = std::chrono::steady_clock;

// A descriptor that is closed again.
class Descriptor
{
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return number_; }

    void Set(int number)
    {
        Close();
        number_ = number;
    }

    void Close()
    {
        if (number_ >= 0)
            close(number_);
        number_ = -1;
    }

private:
    int number_;
};

// What the child writes to one of its streams. Other children that are started meanwhile do not inherit it.
class Stream
{
public:
    bool Open()
    {
        int ends[2] = {};
        if (pipe2(ends, O_CLOEXEC) != 0)
            return false;
        reading_.Set(ends[0]);
        writing_.Set(ends[1]);
        return true;
    }

    int GetWritingEnd() const { return writing_.Get(); }
    void CloseWritingEnd() { writing_.Close(); }

    pollfd GetWaiting() const { return {reading_.Get(), POLLIN, 0}; }
    bool IsOpen() const { return reading_.Get() >= 0; }

    // Takes what is there; closes itself at the end.
    void Take()
    {
        std::array<char, 4096> part;
        const auto size = read(reading_.Get(), part.data(), part.size());
        if (size > 0)
            text_.append(part.data(), static_cast<std::size_t>(size));
        else if (size == 0 || errno != EINTR)
            reading_.Close();
    }

    std::string& GetText() { return text_; }

private:
    Descriptor reading_;
    Descriptor writing_;
    std::string text_;
};

class FileActions
{
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void CloseInput() { posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0); }
    void Replace(int stream, int descriptor) { posix_spawn_file_actions_adddup2(&actions_, descriptor, stream); }
    const posix_spawn_file_actions_t* Get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

// The time until then as poll wants it: rounded up, so that nobody spins through the last millisecond.
int GetMillisecondsUntil(Clock::time_point then)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(then - Clock::now()).count();
    return left > 0 ? static_cast<int>(std::min<std::int64_t>(left, 60'000)) : 0;
}

// Until both streams are at their ends or the time is over.
void Collect(Stream& output, Stream& errors, Clock::time_point deadline)
{
    while ((output.IsOpen() || errors.IsOpen()) && Clock::now() < deadline)
    {
        std::array<pollfd, 2> waiting = {output.GetWaiting(), errors.GetWaiting()};
        if (poll(waiting.data(), waiting.size(), GetMillisecondsUntil(deadline)) <= 0)
            continue;
        if (waiting[0].revents != 0)
            output.Take();
        if (waiting[1].revents != 0)
            errors.Take();
    }
}

// Whether the child ended before the deadline. It may have closed its streams long before.
bool WaitUntil(pid_t child, Clock::time_point deadline, int& status)
{
    constexpr std::chrono::milliseconds pause(2);
    while (waitpid(child, &status, WNOHANG) == 0)
    {
        if (Clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(pause);
    }
    return true;
}

void Kill(pid_t child)
{
    kill(child, SIGKILL);
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR)
    {
    }
}

std::string DescribeSignal(int signal)
{
    const char* const name = sigabbrev_np(signal);
    const char* const description = sigdescr_np(signal);
    return "signal " + std::to_string(signal) + " (SIG" + (name == nullptr ? "?" : name) + ", " +
           (description == nullptr ? "unknown" : description) + ")";
}

void Judge(ChildRun& run, int status)
{
    if (WIFEXITED(status))
    {
        run.end = ChildRun::End::Exited;
        run.exitCode = WEXITSTATUS(status);
        return;
    }
    run.end = ChildRun::End::Killed;
    run.reason = DescribeSignal(WTERMSIG(status));
}

int Start(const std::string& program, std::vector<std::string> arguments, const FileActions& files, pid_t& child)
{
    arguments.insert(arguments.begin(), program);
    std::vector<char*> pointers;
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    return posix_spawn(&child, program.c_str(), files.Get(), nullptr, pointers.data(), environ);
}

ChildRun MakeNotStarted(int error)
{
    ChildRun run;
    run.reason = std::strerror(error);
    return run;
}

}  // namespace

ChildRun RunChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  std::chrono::milliseconds limit)
{
    const auto deadline = Clock::now() + limit;
    Stream output;
    Stream errors;
    if (!output.Open() || !errors.Open())
        return MakeNotStarted(errno);
    FileActions files;
    files.CloseInput();
    files.Replace(STDOUT_FILENO, output.GetWritingEnd());
    files.Replace(STDERR_FILENO, errors.GetWritingEnd());
    pid_t child = 0;
    if (const int error = Start(program.string(), arguments, files, child); error != 0)
        return MakeNotStarted(error);
    output.CloseWritingEnd();
    errors.CloseWritingEnd();

    ChildRun run;
    int status = 0;
    Collect(output, errors, deadline);
    if (WaitUntil(child, deadline, status))
    {
        Judge(run, status);
    }
    else
    {
        Kill(child);
        run.end = ChildRun::End::TimedOut;
    }
    run.output = std::move(output.GetText());
    run.errors = std::move(errors.GetText());
    return run;
}

}  // namespace tvx::Platform
