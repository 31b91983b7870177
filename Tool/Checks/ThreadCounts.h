// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Trial.h"

#include <chrono>
#include <functional>
#include <string>

namespace tvx::check
{

// Takes references on the object on several threads at once, all of which are then held together, and drops them on as
// many. Fails the check unless the count is exact in between and at the end, and every reference is to the expected
// face. That is done again and again for so long: where processors are busy with others, threads seldom meet.
//   what  the object, as a noun phrase
//   take  gives a reference; runs on any thread
void ExpectExactCount(Trial& trial, const std::string& what, IObjectBase& object, const IObjectBase* expectedFace,
                      std::chrono::milliseconds duration, const std::function<Ref<IObjectBase>()>& take);

}  // namespace tvx::check
