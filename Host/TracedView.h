// SPDX-License-Identifier: MIT
#pragma once

#include "Host/TracedInterface.h"
#include "Interfaces/IObject.h"

namespace tvx::host
{

// What an object says of one of its interfaces.
struct TracedView
{
    const TracedInterface* longest;  // of those that the interface pointer can be called as
    const void* identity;            // the same for all interfaces of the object
    IObject* listenedAt;             // where the object tells its end; null when it does not
};

// Asks the object for every interface that the tracer knows. It is known to be an as.
TracedView ExamineObject(IObjectBase& real, const TracedInterface& as);

}  // namespace tvx::host
