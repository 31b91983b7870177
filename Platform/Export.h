// SPDX-License-Identifier: MIT
#pragma once

// The export mark: stands before GetExport, the one function that a module shows.
#ifdef _WIN32
#define TVX_EXPORT extern "C" __declspec(dllexport)
#else
#define TVX_EXPORT extern "C" __attribute__((visibility("default")))
#endif
