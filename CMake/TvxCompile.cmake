# SPDX-License-Identifier: MIT
# How everything here is compiled: one standard, one set of warnings, hidden symbols, source paths relative to the root.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(TVX_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 sees overlaps in std::string's own assignment that are not there (GCC bug 105651).
    list(APPEND TVX_WARNINGS -Wno-restrict)
endif()
add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:${TVX_WARNINGS}>")
if(TVX_WARNINGS_AS_ERRORS)
    add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:-Werror>")
endif()

# Report lines carry the path from the project's root, whatever the folders of source and build are.
add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>")

# For what small objects are made of: other libraries are called without a jump between, and memory is given back without its
# size, which would only be dropped on the way.
set(TVX_DIRECT_CALLS -fno-plt -fno-sized-deallocation)

if(TVX_SANITIZE)
    add_compile_options(-fsanitize=${TVX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TVX_SANITIZE})
    # For what only stands around that which the sanitizers are to look at.
    set(TVX_WITHOUT_SANITIZERS -fno-sanitize=all)
endif()
if(TVX_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()
