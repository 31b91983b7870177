// SPDX-License-Identifier: MIT
#pragma once

#include "Tests/Support/SerializerDoubles.h"
#include "Tool/Checks/TextSerializerDoubles.h"

namespace tvx::test
{

using check::TextSerializerFactory;
using check::TextWriter;
using TextReader = check::TextReaderOf<String>;
using SerializableObject = check::SerializableObjectOf<String>;

}  // namespace tvx::test
