// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

namespace tvx
{

// The severity of a message. Every other number is accepted too, compared by its value, and printed as five blanks.
struct LogLevel
{
    enum : std::int32_t
    {
        Trace = 1,
        Debug = 2,
        Info = 3,
        Warn = 4,
        Error = 5,
        Fatal = 6,
    };
};

// One message as it was logged, unchanged for good. The texts it gives are its own copies and live as long as it does; null
// where the one who logged gave null.
class ILogData : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ILogData/1.0";

    // Slot 11. Gives the name of the logger, borrowed.
    // Threads: any. Fails: never.
    virtual const char* GetLoggerName() = 0;

    // Slot 12. Gives the level as it was passed, a LogLevel.
    // Threads: any. Fails: never.
    virtual std::uint32_t GetLevel() = 0;

    // Slot 13. Gives the source, borrowed.
    // Threads: any. Fails: never.
    virtual const char* GetSource() = 0;

    // Slot 14. Gives the scope, borrowed.
    // Threads: any. Fails: never.
    virtual const char* GetScope() = 0;

    // Slot 15. Gives the source file's path as it was passed, borrowed.
    // Threads: any. Fails: never.
    virtual const char* GetFile() = 0;

    // Slot 16. Gives the line in the source file.
    // Threads: any. Fails: never.
    virtual std::uint32_t GetLine() = 0;

    // Slot 17. Gives the message, borrowed.
    // Threads: any. Fails: never.
    virtual const char* GetMessage() = 0;

protected:
    ~ILogData() = default;
};

// Writes messages under logger names, each name with its own settings. Every message, whether written or not, fires
// "MessageLogged", which belongs to ILogger/1.0; its param is the ILogData. Takes no lock: a host that logs from several
// threads lets them in one at a time.
class ILogger : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ILogger/1.0";

    // Slot 11. Writes one message where the settings of loggerName say, then fires "MessageLogged", and gives 0. All texts
    // are borrowed; a null one is printed as empty.
    //   loggerName  chooses the settings; is not printed
    //   level       a LogLevel; below the minimum nothing is written
    //   source      who speaks
    //   scope       the function or the like; printed with traces only
    //   file        path of the source file, of which traces show the last component
    //   line        in that file; printed with traces only
    //   message     the text
    // Threads: one at a time. Fails: never; an output that cannot be written to is passed over.
    virtual Result Log(const char* loggerName, std::int32_t level, const char* source, const char* scope,
                       const char* file, std::uint32_t line, const char* message) = 0;

    // Slot 12. Sets the minimum level of loggerName, and gives 0.
    //   loggerName  borrowed
    //   level       a LogLevel; messages below it are not written
    // Threads: one at a time. Fails: -4 without a report when memory is exhausted.
    virtual Result SetLevel(const char* loggerName, std::int32_t level) = 0;

    // Slot 13. Gives the minimum level of loggerName.
    //   loggerName  borrowed
    //   out         receives the level; left untouched on failure
    // Threads: one at a time. Fails: -4 with a report when out is null, without one when memory is exhausted.
    virtual Result GetLevel(const char* loggerName, std::int32_t* out) = 0;

    // Slot 14. Subscribes handler to "MessageLogged", or unsubscribes it.
    //   handler  borrowed, kept without a reference; null is ignored, or unsubscribes everybody
    //   cookie   passed back with the event
    //   add      true subscribes, false unsubscribes
    // Threads: any. Fails: never; without memory nothing is subscribed.
    virtual void AdviseMessageLogged(IEventHandler* handler, std::uint64_t cookie, bool add) = 0;

    // Slot 15. Fires "MessageLogged". Log goes through here, so that a logger which puts its own in place sees every message.
    //   record  borrowed, becomes the event's param; handlers that keep it add a reference
    // Threads: one at a time. Fails: never.
    virtual void FireMessageLogged(ILogData* record) = 0;

protected:
    ~ILogger() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::ILogData::Id[];
[[gnu::weak]] constexpr const char tvx::ILogger::Id[];
#endif
