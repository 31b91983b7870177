// SPDX-License-Identifier: MIT
#include "Tool/Checks/Trial.h"

#include "Host/PluginDocument.h"

namespace tvx::check
{

namespace
{

// Whether a line is a report of the macro: its name, the place in brackets, and nothing else.
bool IsReport(std::string_view line, std::string_view macro)
{
    if (!line.starts_with(macro) || !line.substr(macro.size()).starts_with(": [") || !line.ends_with("]\n"))
        return false;
    const auto place = line.substr(macro.size() + 3, line.size() - macro.size() - 5);
    const auto colon = place.rfind(':');
    if (colon == std::string_view::npos || colon == 0 || place.find('\n') != std::string_view::npos)
        return false;
    const auto number = place.substr(colon + 1);
    return !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos;
}

// The file stays the same one also when a module changes the current folder.
std::filesystem::path MakeAbsolute(const std::filesystem::path& file)
{
    std::error_code failed;
    auto place = std::filesystem::absolute(file, failed);
    return failed ? file : place;
}

}  // namespace

Trial::Trial(const std::filesystem::path& file, std::uint64_t seed, const Platform::OutputDiversion& output,
             TellEnd tell)
    : file_(MakeAbsolute(file)),
      random_(seed),
      output_(output),
      tell_(std::move(tell)),
      expectedOutput_(output.Read().size())
{
}

const host::PluginDocument& Trial::GetDocument()
{
    if (document_)
        return *document_;
    auto document = host::ReadPluginDocument(file_);
    if (!document)
        Skip(document.GetError().message);
    return document_.emplace(std::move(*document));
}

const host::Module& Trial::Load()
{
    if (module_)
        return *module_;
    auto module = host::Module::Load(file_);
    if (!module)
        Skip(module.GetError().message);
    return module_.emplace(std::move(*module));
}

Ref<IObjectBase> Trial::GetExport(const std::string& id)
{
    if (!GetDocument().Offers(id))
        Skip("the module does not offer " + id);
    auto object = Load().GetExport(id);
    if (!object)
        Fail("the module to give its export " + id, object.GetError().message);
    return std::move(*object);
}

void Trial::Same(const std::string& what, const void* came, const void* expected)
{
    Expect(came == expected, what + (expected == nullptr ? " to be null" : " to be the same object and face"),
           came == nullptr ? "null" : "another object or face");
}

void Trial::Gives(const std::string& what, Result came, Result expected)
{
    ExpectSilence(what);
    Expect(came == expected, what + " to give " + ShowResult(expected), ShowResult(came));
}

std::string Trial::TakeOutput()
{
    auto text = output_.Read(expectedOutput_);
    expectedOutput_ += text.size();
    return text;
}

void Trial::ExpectSilence(const std::string& what)
{
    const auto came = TakeOutput();
    Expect(came.empty(), what + " to write nothing to standard output", Show(came));
}

void Trial::ExpectReport(const std::string& what, std::string_view macro)
{
    const auto came = TakeOutput();
    Expect(IsReport(came, macro), what + " to write one report line of " + std::string(macro) + " to standard output",
           came.empty() ? "nothing" : Show(came));
}

void Trial::End(const Outcome& outcome)
{
    if (tell_)
        tell_(outcome);
    throw Ending{outcome};
}

void Trial::Pass()
{
    End({});
}

void Trial::Fail(const std::string& expected, const std::string& came)
{
    End({Verdict::Failed, host::MakeOneLine("expected " + expected + ", came " + came)});
}

void Trial::Skip(const std::string& reason)
{
    End({Verdict::Skipped, host::MakeOneLine(reason)});
}

void Trial::Warn(const std::string& message)
{
    if (!warning_)
        warning_ = host::MakeOneLine(message);
}

}  // namespace tvx::check
