// SPDX-License-Identifier: MIT
#include "Tests/Host/JsonSerializerFixture.h"

#include <set>

namespace tvx::test
{
namespace
{

class JsonSerializerFactoryTest : public JsonSerializerFixture
{
};

TEST_F(JsonSerializerFactoryTest, IsOneObjectThatTakesImports)
{
    Ref<IObjectBase> exported;
    ASSERT_EQ(host::JsonSerializerFactory::GetExportInstance(exported.Receive()), TVX_OK);
    EXPECT_EQ(Query<ISerializerFactory>(exported).Get(), factory_.Get());
    EXPECT_EQ(Query<IImportsContainer>(exported).Get(), factory_.Get());
    EXPECT_EQ(Query<IObject>(exported).Get(), static_cast<ISerializerFactory*>(factory_.Get()));
    EXPECT_EQ(Query<IObjectBase>(exported).Get(), static_cast<ISerializerFactory*>(factory_.Get()));
    EXPECT_FALSE(Query<IDeserializable>(exported));
}

TEST_F(JsonSerializerFactoryTest, MakesANewWriterAtEveryCall)
{
    const auto first = MakeWriter();
    const auto second = MakeWriter();
    EXPECT_NE(first.Get(), second.Get());
    EXPECT_EQ(first->GetRefCount(), 1u);
    EXPECT_TRUE(Query<IStringSerializer>(first));
    EXPECT_TRUE(Query<IObject>(first));
    EXPECT_EQ(Query<IObjectBase>(first).Get(), first.Get());
    EXPECT_FALSE(Query<IDeserializer>(first));
}

TEST_F(JsonSerializerFactoryTest, MakesANewReaderAtEveryCall)
{
    const auto first = MakeReader();
    const auto second = MakeReader();
    EXPECT_NE(first.Get(), second.Get());
    EXPECT_EQ(first->GetRefCount(), 1u);
    EXPECT_TRUE(Query<IStringDeserializer>(first));
    EXPECT_TRUE(Query<IObject>(first));
    EXPECT_EQ(Query<IObjectBase>(first).Get(), first.Get());
    EXPECT_FALSE(Query<ISerializer>(first));
}

TEST_F(JsonSerializerFactoryTest, RefusesANullOutSilently)
{
    const auto output = CaptureOutput(
        [&]
        {
            EXPECT_EQ(factory_->CreateSerializer(nullptr), TVX_E_POINTER);
            EXPECT_EQ(factory_->CreateDeserializer(nullptr), TVX_E_POINTER);
        });
    EXPECT_EQ(output, "");
}

TEST_F(JsonSerializerFactoryTest, LeavesTheHostsPlacesOfTheWriterUnused)
{
    const auto writer = BeginWriting();
    const std::set<Result> results{writer->UnusedSlot9(),  writer->UnusedSlot13(), writer->UnusedSlot15(),
                                   writer->UnusedSlot16(), writer->UnusedSlot17(), writer->UnusedSlot18(),
                                   writer->UnusedSlot21()};
    EXPECT_EQ(results, std::set<Result>{TVX_E_FAIL});
    EXPECT_EQ(EndWriting(writer), "{}");
}

TEST_F(JsonSerializerFactoryTest, LeavesTheHostsPlacesOfTheReaderUnused)
{
    const auto reader = BeginReading("{}");
    const std::set<Result> results{reader->UnusedSlot9(),  reader->UnusedSlot13(), reader->UnusedSlot15(),
                                   reader->UnusedSlot16(), reader->UnusedSlot17(), reader->UnusedSlot18(),
                                   reader->UnusedSlot21()};
    EXPECT_EQ(results, std::set<Result>{TVX_E_FAIL});
}

}  // namespace
}  // namespace tvx::test
