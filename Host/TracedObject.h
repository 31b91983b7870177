// SPDX-License-Identifier: MIT
#pragma once

#include "Host/TracedModules.h"
#include "Interfaces/IObject.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace tvx::host
{

// What is known of one object of a module. It stays when the object has gone, as long as the tracer.
struct TracedObject
{
    enum class State
    {
        Alive,
        Dead,
        Unloaded,
    };

    const TracedModule* module = nullptr;
    const void* table = nullptr;             // of its class
    const std::string* className = nullptr;  // the strings are the tracer's, one for all objects
    std::atomic<const std::string*> exportId = nullptr;
    std::atomic<const std::string*> givenBy = nullptr;
    IObject* listenedAt = nullptr;          // where its end is heard of; null for an object that does not tell
    std::atomic<bool> isListening = false;  // whether it has been asked to tell
    std::uint32_t held = 0;                 // the references of the host program
    std::atomic<State> state = State::Alive;

    // Whether it was alive until now.
    bool End(State how)
    {
        auto alive = State::Alive;
        return state.compare_exchange_strong(alive, how);
    }

    bool IsAlive() const { return state.load(std::memory_order_acquire) == State::Alive; }
};

}  // namespace tvx::host
