// SPDX-License-Identifier: MIT
#include "Tests/BadModules/PlainModule.h"

// What a compiler makes of a static member of a template that nobody hides: a symbol of which the process keeps one for all,
// and with it the file that was loaded first. It refers to itself, so that it is looked up when the file is loaded.
asm(R"asm(
    .pushsection .data
    .globl tvxUniqueSymbol
    .type tvxUniqueSymbol, @gnu_unique_object
    .size tvxUniqueSymbol, 8
tvxUniqueSymbol:
    .quad tvxUniqueSymbol
    .popsection
)asm");
