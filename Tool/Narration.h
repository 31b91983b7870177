// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/IObject.h"
#include "Interfaces/ISerializerFactory.h"
#include "Interfaces/Ref.h"
#include "Platform/StandardStreams.h"

#include <filesystem>
#include <ostream>
#include <string>

namespace tvx::tool
{

// One line of the tour.
template <class... Parts>
void Say(const Parts&... parts)
{
    static_cast<void>((Platform::GetStandardOutput() << ... << parts) << '\n');
}

// Says every event that reaches it.
class Narrator final : public ClassImpl<Narrator, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject* sender, const char* interfaceId, const char* eventName, std::uint64_t param,
                   std::uint64_t userData) override;
};

// The JSON text that a fresh serializer makes of an object, through its two faces, and the way back.
Result WriteToText(ISerializerFactory& factory, IObjectBase* object, std::string& text);
Result ReadFromText(ISerializerFactory& factory, const std::string& text, Ref<IObjectBase>& object);

// A new folder among the system's temporary files; empty when there cannot be one.
std::filesystem::path MakeTourFolder();

}  // namespace tvx::tool
