// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"

namespace tvx::bench
{

Comparisons::Comparisons(const std::vector<Comparison>& rows)
{
    GetAll().insert(GetAll().end(), rows.begin(), rows.end());
}

std::vector<Comparison>& Comparisons::GetAll()
{
    static std::vector<Comparison> all;
    return all;
}

}  // namespace tvx::bench
