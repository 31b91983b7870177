// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"

namespace tvx::bench
{

Comparisons::Comparisons(std::initializer_list<Comparison> rows)
{
    GetAll().insert(GetAll().end(), rows);
}

std::vector<Comparison>& Comparisons::GetAll()
{
    static std::vector<Comparison> all;
    return all;
}

}  // namespace tvx::bench
