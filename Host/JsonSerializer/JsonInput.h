// SPDX-License-Identifier: MIT
#pragma once

#include "Host/JsonSerializer/JsonLevels.h"
#include "Host/JsonSerializer/JsonText.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tvx::host
{

// A document that is being read, and the place in it where names and items are looked up.
class JsonInput
{
public:
    struct Level
    {
        const Json* node = nullptr;
        std::size_t depth = 0;
        std::string_view sequence = {};  // the name of the sequence
        std::size_t next = 0;            // the index of its next item
    };

    // A value of the document, or none, and what it is called there.
    struct Place
    {
        const Json* value = nullptr;
        std::string_view name = {};  // its own, or its sequence's
        std::size_t item = 0;        // counted from 1; 0 for a named value
    };

    // Gives what is wrong with the text, or the empty text.
    std::string Begin(std::string_view text);
    void End();

    bool IsBegun() const { return !levels_.empty(); }
    bool IsInsideObject() const { return host::IsInsideObject(levels_); }

    Place FindNamed(const char* name) const;
    Place FindNextItem() const;
    void SkipItem() { ++levels_.back().next; }

    // Both give whether they could; a sequence is the value of a place that was found.
    bool BeginSequence(const Place& place);
    bool EndSequence();

    // Goes into the object of a place, as long as what it gives lives.
    OpenObject<Level> EnterObject(const Place& place);

    // How many objects the place lies in.
    std::size_t GetDepth() const { return levels_.back().depth; }

    // A place, for messages.
    static std::string Describe(const Place& place);

private:
    Json tree_;
    JsonLevels<Level> levels_;  // empty before Begin and after End
};

}  // namespace tvx::host
