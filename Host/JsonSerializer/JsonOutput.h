// SPDX-License-Identifier: MIT
#pragma once

#include "Host/JsonSerializer/JsonFailure.h"
#include "Host/JsonSerializer/JsonLevels.h"

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace tvx::host
{

// The text of a document that is being written, and the place in it where the next value goes.
//
// Every operation that gives a Result sets the failure of the document when it fails; such a text is never given away.
class JsonOutput
{
public:
    struct Level
    {
        std::size_t depth = 0;
        std::string sequence = {};  // the name of the sequence; an object's level has none
        bool isSequence = false;
        std::size_t count = 0;  // of the values written so far
        std::string last = {};  // the name written last
        std::set<std::string, std::less<>> names = {};
    };

    // The failure is borrowed for the output's lifetime.
    explicit JsonOutput(JsonFailure& failure) : failure_(failure) {}

    void Begin();
    Result End();

    // Whether the text is a whole document.
    bool IsEnded() const { return isEnded_; }
    bool IsInsideObject() const { return host::IsInsideObject(levels_); }
    const std::string& GetText() const { return text_; }

    // Make the place for a value, whose text Append then gives.
    Result StartNamed(const char* name);
    Result StartItem();
    void Append(std::string_view json) { text_ += json; }

    Result AddNamed(const char* name, std::string_view json);
    Result AddItem(std::string_view json);
    Result BeginSequence(const char* name);
    Result EndSequence();

    // Opens an object as the value just started, as long as what it gives lives.
    OpenObject<Level> EnterObject();

    // How many objects the place lies in.
    std::size_t GetDepth() const { return levels_.back().depth; }

    // The value just started, for messages.
    std::string DescribeValue() const;

    Result FailForNull();

private:
    void StartValue();
    const char* GetNameProblem(const std::string& name, const std::string& json) const;

    JsonFailure& failure_;
    JsonLevels<Level> levels_;  // empty before Begin and after End
    std::string text_;
    bool isEnded_ = false;
};

}  // namespace tvx::host
