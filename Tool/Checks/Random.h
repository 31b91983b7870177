// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <random>

namespace tvx::check
{

// Numbers that look like chance and are the same for the same seed on every system.
class Random
{
public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    std::uint64_t Next() { return engine_(); }

    // From 0 on, below the limit, which is not 0.
    std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(engine_() % limit); }

    bool Toss() { return Below(2) == 0; }

private:
    std::mt19937_64 engine_;
};

}  // namespace tvx::check
