// SPDX-License-Identifier: MIT
#include "Host/VariableExpansion.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace tvx::host
{

namespace
{

constexpr int MostReplacements = 1000;
constexpr std::size_t MostGrowth = 64 * 1024;

constexpr std::string_view NameCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";

bool IsOfName(char character)
{
    return NameCharacters.find(character) != std::string_view::npos;
}

// Other systems have parentheses in names, too.
std::size_t FindEndOfForeignName(const std::string& text, std::size_t from)
{
    const auto isOfName = [](char character) { return IsOfName(character) || character == '(' || character == ')'; };
    const auto end = std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), isOfName);
    return static_cast<std::size_t>(end - text.begin());
}

// The place of a $NAME in a text.
struct Reference
{
    std::size_t begin;
    std::size_t end;
};

std::optional<Reference> FindReference(const std::string& text, std::size_t from)
{
    const auto begins = [](char first, char second) { return first == '$' && IsOfName(second); };
    const auto begin = std::adjacent_find(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), begins);
    if (begin == text.end())
        return std::nullopt;
    const auto end = std::find_if_not(begin + 1, text.end(), IsOfName);
    return Reference{static_cast<std::size_t>(begin - text.begin()), static_cast<std::size_t>(end - text.begin())};
}

// The part of a text that came out of a variable: from start on, and so many characters before the text's end. The end
// counts from behind, because everything that changes the text later happens before it.
struct Region
{
    std::string variable;
    std::size_t start;
    std::size_t behind;
};

class Expander
{
public:
    Expander(const std::string& text, const ReadVariable& readVariable)
        : written_(text),
          text_(text),
          readVariable_(readVariable)
    {
    }

    VariableExpansion Run()
    {
        std::size_t from = 0;
        for (int count = 0; const auto reference = FindReference(text_, from); ++count)
        {
            const auto variable = text_.substr(reference->begin + 1, reference->end - reference->begin - 1);
            LeaveRegions(*reference);
            if (auto loop = FindLoop(variable); !loop.empty())
                return {false, written_, std::move(loop), ""};
            if (count == MostReplacements || text_.size() > written_.size() + MostGrowth)
                return {false, written_, {}, ""};
            Replace(*reference, variable);
            // Only the character before the value can begin another reference with it.
            from = reference->begin - std::min<std::size_t>(reference->begin, 1);
        }
        return {true, text_, {}, text_.find_first_of("/\\") == 0 ? nothingBefore_ : ""};
    }

private:
    // Regions lie within one another, so that the innermost one is left first.
    void LeaveRegions(const Reference& reference)
    {
        const auto holds = [&](const Region& region)
        { return reference.begin >= region.start && text_.size() - reference.end >= region.behind; };
        while (!regions_.empty() && !holds(regions_.back()))
            regions_.pop_back();
    }

    // A variable within what came out of itself comes out of that again and again.
    std::vector<std::string> FindLoop(const std::string& variable) const
    {
        std::vector<std::string> loop;
        const auto isIt = [&](const Region& region) { return region.variable == variable; };
        for (auto region = std::find_if(regions_.begin(), regions_.end(), isIt); region != regions_.end(); ++region)
            loop.push_back(region->variable);
        if (!loop.empty())
            loop.push_back(variable);
        return loop;
    }

    void Replace(const Reference& reference, const std::string& variable)
    {
        const auto value = readVariable_(variable).value_or("");
        if (reference.begin == 0)
            nothingBefore_ = value.empty() ? variable : "";
        regions_.push_back({variable, reference.begin, text_.size() - reference.end});
        text_.replace(reference.begin, reference.end - reference.begin, value);
    }

    const std::string& written_;
    std::string text_;
    const ReadVariable& readVariable_;
    std::vector<Region> regions_;
    std::string nothingBefore_;  // the variable that left nothing at the text's beginning last
};

}  // namespace

std::optional<std::string> ReadEnvironmentVariable(const std::string& name)
{
    const char* const value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::string FindForeignReference(const std::string& text)
{
    const auto lastBrace = text.find_last_of('}');  // behind it no brace is looked for, time and again
    for (std::size_t begin = text.find_first_of("$%"); begin < text.size(); begin = text.find_first_of("$%", begin + 1))
    {
        const bool isBraced = text.compare(begin, 2, "${") == 0 && lastBrace != std::string::npos && begin < lastBrace;
        if (text[begin] == '$' && !isBraced)
            continue;
        const auto name = begin + (isBraced ? 2 : 1);
        const auto end = isBraced ? text.find('}', name) : FindEndOfForeignName(text, name);
        if (end != name && end < text.size() && text[end] == (isBraced ? '}' : '%'))
            return text.substr(begin, end + 1 - begin);
    }
    return "";
}

VariableExpansion ExpandVariables(const std::string& text, const ReadVariable& readVariable)
{
    return Expander(text, readVariable).Run();
}

}  // namespace tvx::host
