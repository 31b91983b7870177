// SPDX-License-Identifier: MIT
#pragma once

#include "Src/String.h"
#include "Tool/Checks/SerializerDoubles.h"

namespace tvx::test
{

using check::RecordingWriter;
using check::RecordingWriterImpl;

template <class Counted>
using ScriptedReaderImpl = check::ScriptedReaderImpl<Counted, String>;

class ScriptedReader final : public ScriptedReaderImpl<CountedImpl<ScriptedReader, IDeserializer>>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IObjectBase>;
};

}  // namespace tvx::test
