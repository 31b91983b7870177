// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Host/Module.h"
#include "Platform/StandardStreams.h"
#include "Tool/Checks/Random.h"
#include "Tool/Checks/Show.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tvx::check
{

// How a check ends before its end. Operations that modules call must not throw it: they record, and the check judges.
struct Ending
{
    Outcome outcome;
};

// What a check works with: the module, what the module writes to standard output, and the expectations, each of which ends
// the check when it does not hold. Whatever a module writes has to be expected, or the check fails.
//
// "What" is always a noun phrase for the sentence "expected … to be/give …": "GetLength of 3 bytes".
class Trial
{
public:
    // Is told how the check ends before anything is released: that may take the process with it.
    using TellEnd = std::function<void(const Outcome&)>;

    // The output is borrowed and keeps standard output aside meanwhile.
    Trial(const std::filesystem::path& file, std::uint64_t seed, const Platform::OutputDiversion& output,
          TellEnd tell = nullptr);

    const std::filesystem::path& GetFile() const { return file_; }
    Random& GetRandom() { return random_; }

    // What the module's document says. Skips the check when it cannot be read.
    const host::PluginDocument& GetDocument();

    // Loads the module, or gives it when it is loaded. Skips the check when it cannot be loaded.
    const host::Module& Load();

    // Unloads it: every object of it has to be released before.
    void Unload() { module_.reset(); }

    // An export of the module, or an interface of it. Fails the check when it is refused.
    Ref<IObjectBase> GetExport(const std::string& id);
    template <class Interface>
    Ref<Interface> Get(const std::string& id)
    {
        return QueryAs<Interface>(GetExport(id), "the export " + id);
    }

    // An interface of an object; fails the check when it is refused.
    template <class Interface, class Held>
    Ref<Interface> QueryAs(const Ref<Held>& object, const std::string& what)
    {
        auto face = Query<Interface>(object);
        Expect(static_cast<bool>(face), what + " to answer " + Interface::Id, "a refusal");
        return face;
    }

    // Fails the check unless it holds: "expected (expected), came (came)".
    void Expect(bool holds, const std::string& expected, const std::string& came)
    {
        if (!holds)
            Fail(expected, came);
    }

    // The same value. Texts are compared as texts, also where they are pointers.
    template <class Came, class Expected>
    void Equal(const std::string& what, const Came& came, const Expected& expected)
    {
        Expect(IsSame(came, expected), what + " to be " + Show(expected), Show(came));
    }

    // The same address: the same face of the same object, or null.
    void Same(const std::string& what, const void* came, const void* expected);

    // The result code, and nothing on standard output, which a call beforehand wrote.
    void Gives(const std::string& what, Result came, Result expected);

    // The result code of the call, and exactly one report line of the macro.
    template <class Call>
    void Reports(const std::string& what, const char* macro, Result expected, Call&& call)
    {
        ExpectSilence("what comes before " + what);
        const Result came = call();
        ExpectReport(what, macro);
        Gives(what, came, expected);
    }

    // Exactly these bytes on standard output while the call runs.
    template <class Call>
    void Writes(const std::string& what, std::string_view expected, Call&& call)
    {
        const auto came = TakeOutput(std::forward<Call>(call));
        Expect(came == expected, what + " to write " + Show(expected) + " to standard output", Show(came));
    }

    // What a call wrote to standard output; it counts as expected.
    template <class Call>
    std::string TakeOutput(Call&& call)
    {
        ExpectSilence("what comes before");
        call();
        return TakeOutput();
    }

    // What was written to standard output and not yet expected.
    std::string TakeOutput();

    // Nothing that was not expected.
    void ExpectSilence(const std::string& what);

    // Ends the check, wherever it is.
    [[noreturn]] void Pass();
    [[noreturn]] void Fail(const std::string& expected, const std::string& came);
    [[noreturn]] void Skip(const std::string& reason);

    // The check goes on, and is a warning in the end unless it fails. Only the first one counts.
    void Warn(const std::string& message);
    const std::optional<std::string>& GetWarning() const { return warning_; }

private:
    [[noreturn]] void End(const Outcome& outcome);
    void ExpectReport(const std::string& what, std::string_view macro);

    std::filesystem::path file_;
    Random random_;
    const Platform::OutputDiversion& output_;
    TellEnd tell_;
    std::size_t expectedOutput_;  // how much of it has been expected
    std::optional<host::PluginDocument> document_;
    std::optional<host::Module> module_;
    std::optional<std::string> warning_;
};

}  // namespace tvx::check
