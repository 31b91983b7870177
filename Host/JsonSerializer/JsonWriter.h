// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Host/JsonSerializer/JsonFailure.h"
#include "Host/JsonSerializer/JsonOutput.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializerFactory.h"

#include <string_view>

namespace tvx::host
{

// Writes one JSON document. An object stands there as {"$format":"<its format>", …} with what it writes of itself.
//
// The first failure stays until the next Begin: a document is whole or there is none. One thread at a time.
class JsonWriter final : public ClassImpl<JsonWriter, ISerializer, IStringSerializer>
{
public:
    using Interfaces = InterfaceList<ISerializer, IStringSerializer, IObject, IObjectBase>;

    // What can't be written gives -1 with a line that says why, a null name or text -4 with such a line. A name begins
    // with no "$", is UTF-8, and stands once in its object.
    Result WriteNamedBool(const char* name, bool value) override;
    Result WriteNamedInt(const char* name, std::int32_t value) override;
    Result WriteNamedDouble(const char* name, double value) override;
    Result WriteNamedString(const char* name, const char* text) override;
    Result WriteNamedObject(const char* name, IObjectBase* object) override;
    Result BeginArray(const char* name) override;
    Result WriteString(const char* text) override;
    Result WriteObject(IObjectBase* object) override;
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

    // -4 for a null out, -1 as long as no document has been ended.
    Result GetText(IString** out) override;

private:
    Result AddObject(IObjectBase* object);
    Result AddFormatted(ISerializable& object, std::string_view formatId);

    JsonFailure failure_;
    JsonOutput output_{failure_};
};

}  // namespace tvx::host
