// SPDX-License-Identifier: MIT
#include "Tool/InputLines.h"

#include <algorithm>
#include <string_view>

namespace tvx::tool
{

namespace
{

using TakeLine = std::function<void(const std::string& line)>;

// Waits until there is something, and gives all that is there. Empty at the end.
std::string ReadPart(std::istream& input)
{
    if (input.peek() == std::istream::traits_type::eof())
        return "";
    const auto size = std::max<std::streamsize>(input.rdbuf()->in_avail(), 1);
    std::string part(static_cast<std::size_t>(size), '\0');
    input.read(part.data(), size);
    return part;
}

// Line is what has begun already, and what is left over.
void TakeLines(std::string_view part, std::string& line, const TakeLine& take)
{
    for (auto end = part.find('\n'); end != std::string_view::npos; end = part.find('\n'))
    {
        line.append(part.substr(0, end));
        if (line.ends_with('\r'))
            line.pop_back();
        take(line);
        line.clear();
        part.remove_prefix(end + 1);
    }
    line.append(part);
}

}  // namespace

void ReadLines(std::istream& input, const TakeLine& take, const std::function<bool()>& pause)
{
    std::string line;
    for (auto part = ReadPart(input); !part.empty(); part = ReadPart(input))
    {
        TakeLines(part, line, take);
        if (!pause())
            return;
    }
    if (!line.empty())
        take(line);
    pause();
}

}  // namespace tvx::tool
