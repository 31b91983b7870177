// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Host/JsonSerializer/JsonFailure.h"
#include "Host/JsonSerializer/JsonInput.h"
#include "Host/JsonSerializer/JsonText.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializerFactory.h"

#include <string>

namespace tvx::host
{

// Reads one JSON document back. An object is read by the factory that the host's library manager has for its format,
// which sees that object alone.
//
// A name that is not there, a value of another type and the end of a sequence give -1 silently: that is for the asker
// to judge. What is wrong with the document itself is said in a line, and from then on all reading fails until the next
// Begin. One thread at a time.
class JsonReader final : public ClassImpl<JsonReader, IDeserializer, IStringDeserializer>
{
public:
    using Interfaces = InterfaceList<IDeserializer, IStringDeserializer, IObject, IObjectBase>;

    // A null name or out gives -4, silently.
    Result ReadNamedBool(const char* name, bool* out) override;
    Result ReadNamedInt(const char* name, std::int32_t* out) override;
    Result ReadNamedDouble(const char* name, double* out) override;
    Result ReadNamedString(const char* name, IString** out) override;
    Result ReadNamedObject(const char* name, IObjectBase** out) override;
    Result BeginArray(const char* name, std::uint32_t* count) override;

    // An item that could not be read stays the next one.
    Result ReadString(IString** out) override;
    Result ReadObject(IObjectBase** out) override;

    // Items that were not read are skipped.
    Result EndArray() override;

    // The places that the framework leaves to hosts: -1.
    Result UnusedSlot9() override { return TVX_E_FAIL; }
    Result UnusedSlot13() override { return TVX_E_FAIL; }
    Result UnusedSlot15() override { return TVX_E_FAIL; }
    Result UnusedSlot16() override { return TVX_E_FAIL; }
    Result UnusedSlot17() override { return TVX_E_FAIL; }
    Result UnusedSlot18() override { return TVX_E_FAIL; }
    Result UnusedSlot21() override { return TVX_E_FAIL; }

    Result Begin() override;
    Result End() override;

    // -4 for null. What is being read stays as it is until the next Begin.
    Result SetText(IString* text) override;

private:
    using Place = JsonInput::Place;

    template <class Value>
    Result ReadNamed(const char* name, Value* out, JsonReading (*convert)(const Json&, Value&));
    template <class Interface>
    Result ReadNamedWith(const char* name, Interface** out, Result (JsonReader::*give)(const Place&, Interface**));
    template <class Interface>
    Result ReadItemWith(Interface** out, Result (JsonReader::*give)(const Place&, Interface**));

    Result GiveResult(JsonReading reading, const Place& place);
    Result GiveText(const Place& place, IString** out);
    Result GiveObject(const Place& place, IObjectBase** out);
    Result GiveFormatted(const Place& place, const std::string& formatId, IObjectBase** out);
    Ref<IDeserializable> FindReader(const std::string& formatId);

    JsonFailure failure_;
    Ref<IString> text_;
    JsonInput input_;
};

}  // namespace tvx::host
