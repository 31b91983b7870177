// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace tvx::Platform
{

// Zeroed memory of at least size bytes straight from the system, which fills in each part when it is first used, large parts at
// a time where it can. Begins at the beginning of such a part. Null when the system refuses.
void* TakePages(std::size_t size) noexcept;

// Ends it.
void GiveBackPages(void* pages, std::size_t size) noexcept;

// Lets the system have any part of it when memory is short. What stood there is gone then; the next writing keeps the part again.
void OfferPages(void* pages, std::size_t size) noexcept;

}  // namespace tvx::Platform
