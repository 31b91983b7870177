// SPDX-License-Identifier: MIT
#include "Platform/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/resource.h>
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
    bool IsFlooded() const { return text_.size() > MostOutput; }

    // Takes what is there; closes itself at the end.
    void Take()
    {
        std::array<char, 65536> part;
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

    void EmptyInput() { posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0); }
    void Replace(int stream, int descriptor) { posix_spawn_file_actions_adddup2(&actions_, descriptor, stream); }
    const posix_spawn_file_actions_t* Get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

// A child in a process group of its own, which it starts; nothing of the group is left when this goes.
class Child
{
public:
    explicit Child(pid_t leader) : leader_(leader) {}
    ~Child()
    {
        if (!HasEnded())
            Reap(0);
        EndGroup();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // Does not wait.
    bool HasEnded()
    {
        if (!ended_)
            Reap(WNOHANG);
        return ended_;
    }

    void Kill()
    {
        EndGroup();
        if (!ended_)
            Reap(0);
    }

    // Ends what is left of the group, and tells whether there was anything.
    bool EndGroup() const { return kill(-leader_, SIGKILL) == 0; }

    int GetStatus() const { return status_; }

private:
    void Reap(int options)
    {
        if (options == 0)
            EndGroup();
        pid_t reaped = 0;
        do
            reaped = waitpid(leader_, &status_, options);
        while (reaped < 0 && errno == EINTR);
        ended_ = reaped != 0;
    }

    pid_t leader_;
    bool ended_ = false;
    int status_ = 0;
};

// Takes what the streams have, waiting for it for a moment at most.
void Take(Stream& output, Stream& errors, std::chrono::milliseconds moment)
{
    std::array<pollfd, 2> waiting = {output.GetWaiting(), errors.GetWaiting()};
    if (poll(waiting.data(), waiting.size(), static_cast<int>(moment.count())) <= 0)
        return;
    if (waiting[0].revents != 0)
        output.Take();
    if (waiting[1].revents != 0)
        errors.Take();
}

// What was written before the end may still be on its way; what others hold the streams for is not waited for.
void TakeRest(Stream& output, Stream& errors)
{
    const auto getSize = [&] { return output.GetText().size() + errors.GetText().size(); };
    auto before = getSize();
    do
    {
        before = getSize();
        Take(output, errors, std::chrono::milliseconds(0));
    } while (getSize() > before && !output.IsFlooded() && !errors.IsFlooded());
}

// Until the child has ended, has to be ended, or has had its time.
ChildRun::End Attend(Child& child, Stream& output, Stream& errors, Clock::time_point deadline)
{
    constexpr std::chrono::milliseconds moment(5);
    while (!child.HasEnded())
    {
        if (output.IsFlooded() || errors.IsFlooded())
            return ChildRun::End::Flooded;
        if (Clock::now() >= deadline)
            return ChildRun::End::TimedOut;
        Take(output, errors, output.IsOpen() || errors.IsOpen() ? moment : std::chrono::milliseconds(1));
    }
    TakeRest(output, errors);
    return ChildRun::End::Exited;
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

// A group of its own, and no signal that this program ignores or holds back.
class Attributes
{
public:
    Attributes()
    {
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setpgroup(&attributes_, 0);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~Attributes() { posix_spawnattr_destroy(&attributes_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    const posix_spawnattr_t* Get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_;
};

int Start(const std::string& program, std::vector<std::string> arguments, const FileActions& files, pid_t& child)
{
    arguments.insert(arguments.begin(), program);
    std::vector<char*> pointers;
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    return posix_spawn(&child, program.c_str(), files.Get(), Attributes().Get(), pointers.data(), environ);
}

// The streams are this side's from here on.
ChildRun Watch(pid_t leader, Stream& output, Stream& errors, Clock::time_point deadline)
{
    ChildRun run;
    Child child(leader);
    output.CloseWritingEnd();
    errors.CloseWritingEnd();
    run.end = Attend(child, output, errors, deadline);
    if (run.end == ChildRun::End::Exited)
    {
        run.leftProcesses = child.EndGroup();
        Judge(run, child.GetStatus());
    }
    else
    {
        child.Kill();
    }
    run.output = std::move(output.GetText());
    run.errors = std::move(errors.GetText());
    return run;
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
    files.EmptyInput();
    files.Replace(STDOUT_FILENO, output.GetWritingEnd());
    files.Replace(STDERR_FILENO, errors.GetWritingEnd());
    pid_t child = 0;
    if (const int error = Start(program.string(), arguments, files, child); error != 0)
        return MakeNotStarted(error);
    return Watch(child, output, errors, deadline);
}

void BehaveAsChild()
{
    const auto parent = getppid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        raise(SIGKILL);  // it ended before
    const rlimit limit = {64 * 1024 * 1024, 64 * 1024 * 1024};
    setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace tvx::Platform
