// SPDX-License-Identifier: MIT
#include "Tests/Tool/ToolTest.h"

#include <array>
#include <cstdlib>
#include <sstream>

namespace tvx::test
{
namespace
{

using Words = std::vector<std::string>;

// A command line up to the cursor, without the program, and what is offered there, sorted.
struct Completion
{
    Words line;
    Words offered;
};

// The same in every shell. The folder has the files plain.json and "my file".
const std::vector<Completion>& GetCompletions()
{
    static const std::vector<Completion> completions = {
        {{"se"}, {"settings"}},
        {{"qq"}, {}},
        {{"settings", "x.json", "ge"}, {"get"}},
        {{"settings", "x.json", ""}, {"export", "get", "list", "set", "sub"}},
        {{"settings", "pl"}, {"plain.json"}},
        {{"settings", "-p", "get", "plain.json", "ex"}, {"export"}},
        {{"settings", "x.json", "get", ""}, {}},
        {{"settings", "x.json", "get", "--pa"}, {"--path"}},
        {{"settings", "x.json", "get", "K", "--type", ""}, {"double", "int", "text"}},
        {{"settings", "x.json", "get", "K", "--type=i"}, {"--type=int"}},
        {{"settings", "--", "x.json", "g"}, {}},
        {{"list", ""}, {}},
        {{"list", "--js"}, {"--json"}},
        {{"list", "--"}, {"--help", "--json", "--path"}},
        {{"list", "-p", "pl"}, {"plain.json"}},
        {{"list", "--path", "m"}, {"my file"}},
        {{"list", "--path=pl"}, {"--path=plain.json"}},
        {{"info", "pl"}, {"plain.json"}},
        {{"info", "plain.json", ""}, {}},
        {{"info", "--", "pl"}, {"plain.json"}},
        {{"info", "--", "-"}, {}},
        {{"image", "x.png", "p"}, {"plain.json"}},
        {{"log", "--level", "wa"}, {"warn"}},
        {{"log", "--name", ""}, {}},
        {{"log", "--json", "pl"}, {"plain.json"}},
        {{"config", "--json", "pl"}, {"plain.json"}},
        {{"probe", "pl"}, {"plain.json"}},
        {{"completion", ""}, {"bash", "fish", "zsh"}},
        {{"completion", "z"}, {"zsh"}},
    };
    return completions;
}

Words GetLines(const std::string& text)
{
    Words lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line.substr(0, line.find('\t')));  // fish puts the description behind it
    std::sort(lines.begin(), lines.end());
    return lines;
}

// The file of a shell on the search path; empty where it is not installed.
std::string FindShell(const std::string& name)
{
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
    {
        const auto file = std::filesystem::path(folder) / name;
        if (std::filesystem::exists(file))
            return file.string();
    }
    return "";
}

// A shell with the script, in a folder with the files to complete.
class Shell
{
public:
    // The command is given the folder, the script and the line, the program before it.
    Shell(const std::string& name, Words arguments) : file_(FindShell(name)), arguments_(std::move(arguments))
    {
        const auto run = RunTvx({"completion", name});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.errors, "");
        script_ = folder_.Write("script", run.output).string();
        std::filesystem::create_directory(folder_.GetPath() / "files");
        folder_.Write("files/plain.json", "{}");
        folder_.Write("files/my file", "");
    }

    bool IsInstalled() const { return !file_.empty(); }

    ProgramRun Run(Words arguments) const
    {
        Program program;
        program.file = file_;
        program.environment = {{"HOME", folder_.GetPath().string()}, {"LC_ALL", "C.UTF-8"}};
        return RunProgram(program, std::move(arguments));
    }

    // What a line is completed with; complaints of the shell fail the test.
    Words Complete(const Words& line) const
    {
        auto arguments = arguments_;
        arguments.insert(arguments.end(), {(folder_.GetPath() / "files").string(), script_, "tvx"});
        arguments.insert(arguments.end(), line.begin(), line.end());
        const auto run = Run(arguments);
        EXPECT_EQ(run.errors, "");
        return GetLines(run.output);
    }

    const std::string& GetScript() const { return script_; }

private:
    std::string file_;
    Words arguments_;
    ScratchFolder folder_;
    std::string script_;
};

Shell MakeBash()
{
    return {"bash",
            {"--norc", "--noprofile", "-c",
             R"(cd "$1" && source "$2" && shift 2 && COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) && _tvx "$1" "${@: -1}"
                ((${#COMPREPLY[@]} == 0)) || printf '%s\n' "${COMPREPLY[@]}")",
             "bash"}};
}

// What completion offers is known to the line editor only: here it is printed.
Shell MakeZsh()
{
    return {"zsh",
            {"-f", "-c",
             R"(cd "$1" && script=$2 && shift 2
                compdef() { }
                _message() { }
                _offer() { local word; for word; do [[ $word == "$PREFIX"* ]] && print -r -- "$IPREFIX$word"; done; }
                compadd() { shift; _offer "$@"; }
                compset() { IPREFIX=${PREFIX%%=*}=; PREFIX=${PREFIX#*=}; }
                _files() { _offer *; }
                _describe() { _offer "${(@)${(@P)@[-1]}%%:*}"; }
                source "$script"
                words=("$@") CURRENT=$# PREFIX=${@[-1]} IPREFIX=
                _tvx
                return 0)",
             "zsh"}};
}

Shell MakeFish()
{
    return {
        "fish",
        {"--no-config", "-c",
         R"(cd $argv[1]; and source $argv[2]; and complete -C (string join -- ' ' (string escape -- $argv[3..-2]) $argv[-1]))"}};
}

void ExpectEveryCompletion(const Shell& shell)
{
    for (const auto& [line, offered] : GetCompletions())
        EXPECT_EQ(shell.Complete(line), offered) << testing::PrintToString(line);
}

// A command, what to type for it, and what its help lists.
struct Help
{
    std::string path;
    Words line;
    Words commands;
    Words options;
};

// The first word of each row of a section, which ends with an empty line.
Words GetRows(const std::string& help, const std::string& title)
{
    const auto begin = help.find("\n" + title + ":\n");
    if (begin == std::string::npos)
        return {};
    Words rows;
    std::istringstream lines(help.substr(begin + title.size() + 3));
    for (std::string line; std::getline(lines, line) && !line.empty();)
    {
        if (line.starts_with("  ") && line[2] != ' ')
            rows.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
    return rows;
}

// Also gives what to type before the commands below this one: its own operands come first.
Help ReadHelp(const std::string& path, Words line)
{
    auto asked = line;
    asked.emplace_back("--help");
    const auto text = RunTvx(asked).output;
    Help help{path, line, GetRows(text, "Subcommands"), {}};
    for (const auto& row : GetRows(text, "Options"))
    {
        std::istringstream names(row);
        for (std::string name; std::getline(names, name, ',');)
            help.options.push_back(name);
    }
    if (!help.commands.empty())
        help.line.resize(line.size() + GetRows(text, "Positionals").size(), "operand");
    return help;
}

void CollectHelp(const std::string& path, const Words& line, std::vector<Help>& out)
{
    const auto help = ReadHelp(path, line);
    out.push_back(help);
    for (const auto& below : help.commands)
    {
        auto longer = help.line;
        longer.push_back(below);
        CollectHelp(path + " " + below, longer, out);
    }
}

// Every command, the program itself first.
std::vector<Help> CollectHelp()
{
    std::vector<Help> collected;
    CollectHelp("tvx", {}, collected);
    return collected;
}

TEST(CompletionCommand, KnowsEveryCommandAndOptionThatTheHelpShows)
{
    const auto commands = CollectHelp();
    ASSERT_GT(commands.size(), 10U);
    for (const char* const shell : {"bash", "zsh", "fish"})
    {
        const auto script = RunTvx({"completion", shell}).output;
        const auto has = [&script](const std::string& name) {
            return script.find("'" + name + "'") != std::string::npos ||
                   script.find("'" + name + ":") != std::string::npos;
        };
        for (const auto& help : commands)
        {
            EXPECT_TRUE(has(help.path)) << shell << ": " << help.path;
            for (const auto& name : help.commands)
                EXPECT_TRUE(has(name)) << shell << ": " << name;
            for (const auto& name : help.options)
                EXPECT_TRUE(has(name)) << shell << ": " << name;
        }
    }
}

TEST(CompletionCommand, OffersInBashWhatTheHelpOfEachCommandShows)
{
    const auto bash = MakeBash();
    for (const auto& help : CollectHelp())
    {
        auto line = help.line;
        line.emplace_back("-");
        const auto offered = bash.Complete(line);
        for (const auto& option : help.options)
            EXPECT_EQ(std::count(offered.begin(), offered.end(), option), 1) << help.path << ": " << option;
        line.back() = "";
        auto commands = help.commands;
        std::sort(commands.begin(), commands.end());
        if (!commands.empty())
        {
            EXPECT_EQ(bash.Complete(line), commands) << help.path;
        }
    }
}

TEST(CompletionCommand, CompletesInBash)
{
    ExpectEveryCompletion(MakeBash());
}

TEST(CompletionCommand, CompletesInBashWhereItTakesLinesApart)
{
    const auto bash = MakeBash();
    EXPECT_EQ(bash.Complete({"settings", "x.json", "get", "K", "--type", "="}), (Words{"double", "int", "text"}));
    EXPECT_EQ(bash.Complete({"settings", "x.json", "get", "K", "--type", "=", "d"}), (Words{"double"}));
    EXPECT_EQ(bash.Complete({"settings", "x.json", "get", "--type", "=", "int", "--j"}), (Words{"--json"}));
    EXPECT_EQ(bash.Complete({"log", "<", "pl"}), (Words{"plain.json"}));
    EXPECT_EQ(bash.Complete({"info", "2>", "errors", "pl"}), (Words{"plain.json"}));
}

TEST(CompletionCommand, ServesBashWhateverSeparatorItsUserHasChosen)
{
    const auto bash = MakeBash();
    const auto run = bash.Run({"--norc", "--noprofile", "-c",
                               R"(set -eu; source "$1"; IFS=:; COMP_WORDS=(tvx info x) COMP_CWORD=1; _tvx
                                  COMP_WORDS=(tvx settings x '') COMP_CWORD=3; _tvx; echo "${#COMPREPLY[@]}"
                                  complete -p tvx)",
                               "bash", bash.GetScript()});
    EXPECT_TRUE(Answered(run, "5\ncomplete -F _tvx tvx\n"));
}

TEST(CompletionCommand, MarksTheScriptOfZshAsACompletionOfTheProgram)
{
    const auto script = RunTvx({"completion", "zsh"}).output;
    EXPECT_TRUE(script.starts_with("#compdef tvx\n")) << script;
    EXPECT_TRUE(HasInOrder(script, {"'info:Show the document of one module, without running its code'",
                                    R"('log:Log the lines of standard input through the module'\''s logger')",
                                    R"('get:Print the value of a key such as Display\\Width')",
                                    "value='text int double'", "_tvx \"$@\"", "compdef _tvx tvx"}));
}

TEST(CompletionCommand, CompletesInZsh)
{
    const auto zsh = MakeZsh();
    if (!zsh.IsInstalled())
        GTEST_SKIP() << "zsh is not installed";
    EXPECT_TRUE(Answered(zsh.Run({"-f", "-n", zsh.GetScript()}), ""));
    ExpectEveryCompletion(zsh);
}

TEST(CompletionCommand, DescribesCommandsAndOptionsToFish)
{
    const auto script = RunTvx({"completion", "fish"}).output;
    EXPECT_TRUE(HasInOrder(
        script, {R"(printf '%s\t%s\n' 'log' 'Log the lines of standard input through the module\'s logger')",
                 R"(printf '%s\t%s\n' 'get' 'Print the value of a key such as Display\\Width')",
                 "case 'tvx settings get --type'\n            echo 'text int double'\n", "complete -c tvx"}));
}

TEST(CompletionCommand, CompletesInFish)
{
    const auto fish = MakeFish();
    if (!fish.IsInstalled())
        GTEST_SKIP() << "fish is not installed";
    EXPECT_TRUE(Answered(fish.Run({"--no-config", "-n", fish.GetScript()}), ""));
    ExpectEveryCompletion(fish);
}

TEST(CompletionCommand, RefusesShellsThatItDoesNotKnow)
{
    EXPECT_TRUE(Refused(RunTvx({"completion", "csh"}), 2, "SHELL: csh not in {bash,fish,zsh} (tvx --help tells more)"));
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"completion", ""}), 2, "SHELL: "));
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"completion", "ba\nsh"}), 2, "SHELL: ba?sh not in "));
    EXPECT_TRUE(RefusedInOneLine(RunTvx({"completion", "bash", "zsh"}), 2, ""));
}

}  // namespace
}  // namespace tvx::test
