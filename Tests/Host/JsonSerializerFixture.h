// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/HandOut.h"
#include "Host/HostString.h"
#include "Host/IFormatReaders.h"
#include "Host/JsonSerializer/JsonSerializerFactory.h"
#include "Src/SimpleMapFactory.h"
#include "Src/VariantFactory.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace tvx::test
{

// An object that writes itself as the test says, under the format "test/1.0" unless told otherwise.
class ScriptedObject final : public ClassImpl<ScriptedObject, IObject, ISerializable>
{
public:
    using Interfaces = InterfaceList<IObject, IObjectBase, ISerializable>;
    using Script = std::function<Result(ISerializer& writer)>;

    explicit ScriptedObject(Script script = nullptr) : script_(std::move(script)) {}

    Result GetFormatId(IString** out) override
    {
        const auto made = HandOutNew<host::HostString>(out, format);
        return TVX_FAILED(formatResult) ? formatResult : made;
    }

    Result Serialize(ISerializer* writer) override { return script_ ? script_(*writer) : TVX_OK; }

    std::string format = "test/1.0";
    Result formatResult = TVX_OK;

private:
    Script script_;
};

// Reads objects back as the test says.
class ScriptedFormat final : public ClassImpl<ScriptedFormat, IDeserializable>
{
public:
    using Interfaces = InterfaceList<IDeserializable, IObject, IObjectBase>;
    using Script = std::function<Result(IDeserializer& reader, IObjectBase** out)>;

    explicit ScriptedFormat(Script script) : script_(std::move(script)) {}

    Result GetFormatId(IString** out) override { return HandOutNew<host::HostString>(out, std::string("test/1.0")); }

    Result Deserialize(IDeserializer* reader, IObjectBase** out) override { return script_(*reader, out); }

private:
    Script script_;
};

// A library manager that knows the formats put into it.
class FormatReaders final : public ClassImpl<FormatReaders, host::IFormatReaders>
{
public:
    using Interfaces = InterfaceList<host::IFormatReaders, IObject, IObjectBase>;

    Result FindReader(const char* formatId, IDeserializable** out) override
    {
        const auto found = readers.find(formatId);
        if (found == readers.end())
            return TVX_E_FAIL;
        HandOut(found->second.Get(), out);
        return TVX_OK;
    }

    std::map<std::string, Ref<IDeserializable>> readers;
};

// The serializer and the module's factories, connected as a host connects them.
class JsonSerializerFixture : public testing::Test
{
protected:
    static constexpr const char MapFormat[] = "com.talvere.general.tvx.GenericSimpleMapImplementationFormat/1.1";
    static constexpr const char VariantFormat[] = "com.talvere.general.tvx.GenericVariantImplementationFormat/1.1";

    JsonSerializerFixture()
    {
        formats_->readers[MapFormat] = CSimpleMapFactory::GetOrMake();
        formats_->readers[VariantFormat] = VariantFactory::GetOrMake();
        const auto manager = MakeRef<ImportProxy>(Ref<IObjectBase>(formats_));
        factory_->SetImport("LibManager", manager.Get());
        const auto serializer = MakeRef<ImportProxy>(Ref<ISerializerFactory>(factory_));
        CSimpleMapFactory::GetOrMake()->SetImport("Serializer", serializer.Get());
    }

    ~JsonSerializerFixture() override
    {
        CSimpleMapFactory::GetOrMake()->ClearImports();
        factory_->ClearImports();
    }

    static IObjectBase* AsBase(const Ref<ScriptedObject>& object) { return static_cast<IObject*>(object.Get()); }

    Ref<ISerializer> MakeWriter() const
    {
        Ref<ISerializer> writer;
        EXPECT_EQ(factory_->CreateSerializer(writer.Receive()), TVX_OK);
        return writer;
    }

    // A writer whose document is begun.
    Ref<ISerializer> BeginWriting() const
    {
        auto writer = MakeWriter();
        EXPECT_EQ(Query<IStringSerializer>(writer)->Begin(), TVX_OK);
        return writer;
    }

    // Ends the document and gives its text, or "failed".
    static std::string EndWriting(const Ref<ISerializer>& writer)
    {
        const auto document = Query<IStringSerializer>(writer);
        Ref<IString> text;
        if (TVX_FAILED(document->End()) || TVX_FAILED(document->GetText(text.Receive())))
            return "failed";
        return text->GetText();
    }

    Ref<IDeserializer> MakeReader() const
    {
        Ref<IDeserializer> reader;
        EXPECT_EQ(factory_->CreateDeserializer(reader.Receive()), TVX_OK);
        return reader;
    }

    // A reader that was given text; whether reading has begun is in began.
    Ref<IDeserializer> BeginReading(const std::string& text)
    {
        auto reader = MakeReader();
        const auto document = Query<IStringDeserializer>(reader);
        EXPECT_EQ(document->SetText(MakeRef<host::HostString>(text).Get()), TVX_OK);
        began_ = document->Begin();
        return reader;
    }

    // Adds the format "test/1.0".
    Ref<ScriptedFormat> AddFormat(ScriptedFormat::Script script)
    {
        auto format = MakeRef<ScriptedFormat>(std::move(script));
        formats_->readers["test/1.0"] = format;
        return format;
    }

    const Ref<FormatReaders> formats_ = MakeRef<FormatReaders>();
    const Ref<host::JsonSerializerFactory> factory_ = host::JsonSerializerFactory::GetOrMake();
    Result began_ = TVX_E_FAIL;
};

}  // namespace tvx::test
