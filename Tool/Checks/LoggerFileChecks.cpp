// SPDX-License-Identifier: MIT
#include "Tool/Checks/LogFolder.h"
#include "Tool/Checks/LoggerFiles.h"

namespace tvx::check
{

namespace
{

void WritesToTheDefaultFile(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1);
    logger.Writes("a message for the file only", {}, "");
    trial.Equal("what is in \"log.txt\", without times,", WithoutTimes(folder.Read("log.txt")), InfoLine);
}

void WritesToTheFileOfAName(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1, {{"Net\\Filename", "net.log"}});
    logger.Log({.logger = "Net", .text = "net"});
    logger.Log({.logger = "Main", .text = "main"});
    logger.Log({.logger = "Web", .text = "web"});
    trial.Equal("what is in the name's own file", WithoutTimes(folder.Read("net.log")), " INFO  [Net] net\n");
    trial.Equal("what is in the file of the others", WithoutTimes(folder.Read("log.txt")),
                " INFO  [Net] main\n INFO  [Net] web\n");
}

void WritesTheSameToBothOutputs(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1, {{"Default\\ToStdOut", true}, {"Default\\MinLevel", 1}});
    const auto output = logger.Log({.level = LogLevel::Trace});
    trial.Equal("the line on standard output", WithoutTimes(output), TraceLine("Socket.cpp"));
    trial.Equal("the line in the file", folder.Read("log.txt"), output);
}

void WritesFromTheMinimumOn(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1, {{"Default\\MinLevel", 4}});
    for (const std::int32_t level : {3, 4, -1, 5})
        logger.Log({.level = level});
    trial.Equal("what is in the file", WithoutTimes(folder.Read("log.txt")),
                " WARN  [Net] opened\n ERROR [Net] opened\n");
}

void EmptiesAFileOfAnEarlierRun(Trial& trial)
{
    const LogFolder folder;
    folder.Append("log.txt", "what an earlier run has left\n");
    LoggerBench logger(trial);
    ConfigureFile(logger, 1);
    trial.Equal("the lines in the file before a name is used", folder.CountLines("log.txt"), 1u);
    logger.GetLevel("Main");
    trial.Equal("what is in the file when a name is used", folder.Read("log.txt"), "");
    logger.Log({});
    trial.Equal("what is in the file after a message", WithoutTimes(folder.Read("log.txt")), InfoLine);
}

void SharesAFile(Trial& trial)
{
    const LogFolder folder;
    {
        LoggerBench logger(trial);
        ConfigureFile(logger, 200);
        logger.Log({.logger = "Main", .text = "1"});
        logger.Log({.logger = "Net", .text = "2"});
        logger.Log({.logger = "Main", .text = "3"});
    }
    Unload(trial);
    trial.Equal("what is in the file", WithoutTimes(folder.Read("log.txt")),
                " INFO  [Net] 1\n INFO  [Net] 2\n INFO  [Net] 3\n");
}

void OpensASecondSpellingAgain(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1, {{"Net\\Filename", "./log.txt"}});
    logger.Log({});
    trial.Equal("the lines in the file after a message", folder.CountLines("log.txt"), 1u);
    logger.GetLevel("Net");
    trial.Equal("what is in the file when it was opened as \"./log.txt\"", folder.Read("log.txt"), "");
    logger.Log({.logger = "Net", .text = "net"});
    trial.Equal("what is in the file in the end", WithoutTimes(folder.Read("log.txt")), " INFO  [Net] net\n");
}

void LetsOthersIntoTheFile(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1);
    logger.Log({});
    trial.Expect(folder.Append("log.txt", "other\n"), "that others may write to the file", "a refusal");
    trial.Equal("what others read from the file", WithoutTimes(folder.Read("log.txt")),
                std::string(InfoLine) + "(no time) other\n");
}

// The folder comes too late: the first attempt counts.
void SkipsAFileThatCannotBeOpened(Trial& trial)
{
    const LogFolder folder;
    {
        LoggerBench logger(trial);
        ConfigureFile(logger, 1, {{"Default\\Filename", "missing/log.txt"}, {"Default\\ToStdOut", true}});
        const MessageListener listener(logger);
        logger.Writes("a message whose file cannot be opened", {}, InfoLine);
        std::filesystem::create_directory("missing");
        logger.Writes("a second message", {}, InfoLine);
        logger.Writes("a message under another name with the same file", {.logger = "Net"}, InfoLine);
        trial.Equal("the number of events", listener.messages.size(), 3u);
    }
    Unload(trial);
    trial.Expect(!folder.Has("missing/log.txt"), "a file that could not be opened not to be tried again", "the file");
}

void OpensAFileUnderAnotherNameAfterAFailure(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    ConfigureFile(logger, 1, {{"Main\\Filename", "missing/log.txt"}});
    logger.Writes("a message whose file cannot be opened", {}, "");
    logger.Log({.logger = "Net"});
    trial.Equal("what is in the other file", WithoutTimes(folder.Read("log.txt")), InfoLine);
}

void TakesATextOnlyWithSuccess(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    logger.ImportCrashDumpServer();
    const ScriptedConfiguration::Values values = {{"Default\\ToFile", true}, {"Default\\Filename", "$failed.log"}};
    logger.Configure(MakeRef<ScriptedConfiguration>(values, TVX_E_FAIL));
    logger.GetLevel("Main");
    trial.Expect(folder.Has("log.txt"), "a file name that came with a failure not to count", "no \"log.txt\"");
    logger.Configure(MakeRef<ScriptedConfiguration>(ScriptedConfiguration::Values{{"Net\\Filename", "net.log"}}, 102));
    logger.GetLevel("Net");
    trial.Expect(folder.Has("net.log"), "a file name that came with 102 to count", "no such file");
}

void ReleasesTheTextsItReads(Trial& trial)
{
    const LogFolder folder;
    LoggerBench logger(trial);
    const auto configuration = ConfigureFile(logger, 1, {{"Default\\Filename", "a.log"}, {"Main\\Filename", "b.log"}});
    logger.Log({});
    trial.Equal("the number of texts that were read", configuration->texts.size(), 2u);
    for (const auto& text : configuration->texts)
        trial.Equal("the references on a text that was read", text->GetRefCount(), 1u);
}

constexpr Check Checks[] = {
    {"logger-file-has-a-default-name", "Output to a file is turned on without a file name.",
     "Without a name the file is \"log.txt\" in the current folder, and gets the lines that standard output would.",
     WritesToTheDefaultFile},
    {"logger-file-of-a-name", "One name has a file of its own.",
     "A name with a file of its own writes there, all others to the default one.", WritesToTheFileOfAName},
    {"logger-file-gets-the-same-line", "A trace with both outputs turned on.",
     "Both outputs get the same line, byte for byte.", WritesTheSameToBothOutputs},
    {"logger-file-gets-what-passes-the-minimum", "Messages around the minimum with output to a file.",
     "The minimum level holds for the file as it does for standard output.", WritesFromTheMinimumOn},
    {"logger-file-is-emptied", "There is a file already.",
     "A file is opened, and emptied, when a name that writes to it is first used.", EmptiesAFileOfAnEarlierRun},
    {"logger-file-is-shared", "Two names write to one file.",
     "Names with the same file name share one open file: their lines stand there in the order of the calls.",
     SharesAFile},
    {"logger-file-in-a-second-spelling-is-opened-again", "One name writes to log.txt, another to ./log.txt.",
     "File names are compared as texts: a second spelling opens, and empties, the same file again.",
     OpensASecondSpellingAgain},
    {"logger-file-lets-others-in", "The check reads and writes a file that is in use.",
     "Others may read and write a log file while it is open.", LetsOthersIntoTheFile},
    {"logger-file-that-cannot-be-opened-is-skipped", "The folder of the file is made after the first message.",
     "A file that cannot be opened is passed over for good: Log gives 0, writes to standard output and fires its "
     "event.",
     SkipsAFileThatCannotBeOpened},
    {"logger-file-that-cannot-be-opened-spares-others", "One of two names has a file that cannot be opened.",
     "A failure stays with the file name it belongs to.", OpensAFileUnderAnotherNameAfterAFailure},
    {"logger-file-name-needs-a-success", "File names that come along with a failure, and with a positive result.",
     "The text of a file name counts unless the result of its read is negative.", TakesATextOnlyWithSuccess},
    {"logger-file-name-is-released", "The references on the texts of file names are counted.",
     "A text that the configuration gave is copied and released.", ReleasesTheTextsItReads},
};

}  // namespace

extern const Family LoggerFileFamily = {"logger", LoggerExport, Needs::Module, Checks};

}  // namespace tvx::check
