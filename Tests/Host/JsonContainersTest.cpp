// SPDX-License-Identifier: MIT
#include "Tests/Host/JsonSerializerFixture.h"

#include "Platform/LimitedMemory.h"
#include "Src/CVariantArray.h"
#include "Src/CollectionFactory.h"
#include "Src/Map.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>

namespace tvx::test
{
namespace
{

constexpr std::uint32_t Seed = 421;
constexpr int TreeSize = 10000;

// The serializer with the formats of the containers.
class JsonContainers : public JsonSerializerFixture
{
protected:
    static constexpr const char DictionaryFormat[] = "com.talvere.general.tvx.GenericMapImplementationFormat/1.1";
    static constexpr const char CollectionFormat[] =
        "com.talvere.general.tvx.GenericCollectionImplementationFormat/1.0";
    static constexpr const char ArrayFormat[] = "com.talvere.general.tvx.GenericVariantArrayImplementationFormat/1.0";

    JsonContainers()
    {
        formats_->readers[DictionaryFormat] = MapFactory::GetOrMake();
        formats_->readers[CollectionFormat] = CollectionFactory::GetOrMake();
        formats_->readers[ArrayFormat] = CVariantArrayFactory::GetOrMake();
    }

    static Ref<IMap> MakeDictionary()
    {
        Ref<IMap> made;
        EXPECT_EQ(MapFactory::GetOrMake()->CreateMap(made.Receive()), TVX_OK);
        return made;
    }

    static Ref<ICollection> MakeCollection()
    {
        Ref<ICollection> made;
        EXPECT_EQ(CollectionFactory::GetOrMake()->CreateCollection(made.Receive()), TVX_OK);
        return made;
    }

    static Ref<IVariantArray> MakeArray()
    {
        Ref<IObjectBase> made;
        EXPECT_EQ(CVariantArrayFactory::GetOrMake()->Create(made.Receive()), TVX_OK);
        return Query<IVariantArray>(made);
    }

    static Ref<ISimpleMap> MakeSettings(const char* key, const char* value)
    {
        Ref<IObjectBase> made;
        EXPECT_EQ(CSimpleMapFactory::GetOrMake()->Create(made.Receive()), TVX_OK);
        auto map = Query<ISimpleMap>(made);
        map->SetString(key, value);
        return map;
    }

    std::string Write(IObjectBase* object)
    {
        const auto writer = BeginWriting();
        EXPECT_EQ(writer->WriteNamedObject("object", object), TVX_OK);
        return EndWriting(writer);
    }

    Ref<IObjectBase> Read(const std::string& text)
    {
        const auto reader = BeginReading(text);
        Ref<IObjectBase> read;
        result_ = reader->ReadNamedObject("object", read.Receive());
        return read;
    }

    // Whether what is read back writes itself as object does.
    testing::AssertionResult Survives(IObjectBase* object)
    {
        const auto text = Write(object);
        const auto read = Read(text);
        if (TVX_FAILED(result_) || !read || !read->IsUnique())
            return testing::AssertionFailure() << "not read back, result " << result_ << ": " << text.substr(0, 1000);
        const auto again = Write(read.Get());
        if (again == text)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << again.substr(0, 1000) << "\ninstead of\n" << text.substr(0, 1000);
    }

    // A document whose one object is of a format.
    static std::string Document(const std::string& format, const std::string& content)
    {
        return "{\"object\":{\"$format\":\"" + format + "\"," + content + "}}";
    }

    Result result_ = TVX_E_FAIL;
};

// Builds random trees of all containers.
class JsonContainerTrees : public JsonContainers
{
protected:
    Ref<IObject> MakeLeaf()
    {
        Ref<IVariant> variant;
        const auto factory = VariantFactory::GetOrMake();
        switch (random_() % 4)
        {
        case 0: return MakeSettings(std::to_string(random_()).c_str(), "value\\\"\xC3\xA4");
        case 1: factory->CreateInt(static_cast<std::int32_t>(random_()), variant.Receive()); break;
        case 2: factory->CreateDouble(static_cast<double>(random_()) / 7.0, variant.Receive()); break;
        default: factory->CreateString("\xFF text", variant.Receive()); break;
        }
        return variant;
    }

    Ref<IObject> MakeTree(int depth)
    {
        ++made_;
        if (depth == 0 || made_ >= TreeSize)
            return MakeLeaf();
        switch (random_() % 3)
        {
        case 0: return MakeDictionaryTree(depth);
        case 1: return MakeCollectionTree(depth);
        default: return MakeArrayTree(depth);
        }
    }

    Ref<IObject> MakeDictionaryTree(int depth)
    {
        const auto dictionary = MakeDictionary();
        for (auto count = random_() % 6; count > 0; --count)
            dictionary->SetValue(std::to_string(random_()).c_str(), MakeTree(depth - 1).Get());
        return dictionary;
    }

    Ref<IObject> MakeCollectionTree(int depth)
    {
        const auto collection = MakeCollection();
        for (auto count = random_() % 6; count > 0; --count)
            collection->Add(MakeTree(depth - 1).Get());
        return collection;
    }

    Ref<IObject> MakeArrayTree(int depth)
    {
        const auto array = MakeArray();
        for (auto count = random_() % 6; count > 0; --count)
            array->AppendObject(MakeTree(depth - 1).Get());
        return array;
    }

    std::mt19937 random_{Seed};
    int made_ = 0;
};

TEST_F(JsonContainers, KeepADictionaryOfSettingsMaps)
{
    const auto dictionary = MakeDictionary();
    dictionary->SetValue("second", MakeSettings("a\\b", "1").Get());
    dictionary->SetValue("", MakeSettings("c", "\xFF").Get());
    EXPECT_TRUE(Survives(dictionary.Get()));
    const auto read = Query<IMap>(Read(Write(dictionary.Get())));
    Ref<IObject> value;
    EXPECT_EQ(read->GetValue("second", value.Receive()), TVX_S_VALUE);
    std::int32_t number = 0;
    EXPECT_EQ(Query<ISimpleMap>(value)->GetInt("a\\b", &number), TVX_OK);
    EXPECT_EQ(number, 1);
}

TEST_F(JsonContainers, KeepACollectionOfDictionaries)
{
    const auto collection = MakeCollection();
    const auto dictionary = MakeDictionary();
    dictionary->SetValue("key", MakeSettings("a", "1").Get());
    collection->Add(dictionary.Get());
    collection->Add(MakeDictionary().Get());
    collection->Add(dictionary.Get());
    EXPECT_TRUE(Survives(collection.Get()));
    EXPECT_EQ(Query<ICollection>(Read(Write(collection.Get())))->GetCount(), 3U);
}

TEST_F(JsonContainers, KeepAnArrayOfEveryVariantType)
{
    const auto array = MakeArray();
    array->AppendObject(MakeCollection().Get());
    array->AppendObject(nullptr);
    array->AppendString("text");
    array->AppendDouble(0.1);
    array->AppendFloat(0.1F);
    array->AppendInt(-5);
    array->AppendBool(true);
    EXPECT_TRUE(Survives(array.Get()));
    const auto read = Query<IVariantArray>(Read(Write(array.Get())));
    Ref<IVariant> element;
    float number = 0.0F;
    EXPECT_EQ(read->GetAt(4, element.Receive()), TVX_OK);
    EXPECT_EQ(element->GetFloat(&number), TVX_OK);
    EXPECT_EQ(number, 0.1F);
}

TEST_F(JsonContainers, KeepEachOtherInSettings)
{
    const auto settings = MakeSettings("plain", "1");
    const auto collection = MakeCollection();
    collection->Add(MakeDictionary().Get());
    EXPECT_EQ(settings->SetObject("whole", collection.Get()), TVX_OK);
    const auto dictionary = MakeDictionary();
    dictionary->SetValue("settings", settings.Get());
    EXPECT_TRUE(Survives(dictionary.Get()));
    Ref<IObject> read;
    EXPECT_EQ(settings->GetObject("whole", read.Receive()), TVX_OK);
    EXPECT_EQ(Query<ICollection>(read)->GetCount(), 1U);
}

TEST_F(JsonContainerTrees, SurviveWithTenThousandObjects)
{
    std::cout << "seed " << Seed << '\n';
    const auto root = MakeCollection();
    while (made_ < TreeSize)
        root->Add(MakeTree(12).Get());
    EXPECT_TRUE(Survives(root.Get()));
}

TEST_F(JsonContainers, WriteNullsThatTheyDoNotReadBack)
{
    const auto dictionary = MakeDictionary();
    dictionary->SetValue("key", nullptr);
    const auto collection = MakeCollection();
    collection->Add(nullptr);
    for (IObjectBase* const object :
         {static_cast<IObjectBase*>(dictionary.Get()), static_cast<IObjectBase*>(collection.Get())})
    {
        const auto text = Write(object);
        EXPECT_NE(text.find("null"), std::string::npos);
        CaptureOutput([&] { EXPECT_FALSE(Read(text)); });
        EXPECT_EQ(result_, TVX_E_FAIL);
    }
}

TEST_F(JsonContainers, RefuseToWriteAnArrayWithANullElement)
{
    const auto array = MakeArray();
    array->AppendVariant(nullptr);
    const auto writer = BeginWriting();
    CaptureOutput([&] { EXPECT_EQ(writer->WriteNamedObject("object", array.Get()), TVX_E_FAIL); });
}

TEST_F(JsonContainers, FailToWriteACollectionThatContainsItself)
{
    const auto collection = MakeCollection();
    collection->Add(collection.Get());
    const auto writer = BeginWriting();
    const auto output =
        CaptureOutput([&] { EXPECT_EQ(writer->WriteNamedObject("object", collection.Get()), TVX_E_FAIL); });
    EXPECT_NE(output.find("objects lie in one another more than 256 deep"), std::string::npos) << output;
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 1) << output;
    collection->Clear();
    EXPECT_TRUE(collection->IsUnique());
}

TEST_F(JsonContainers, RefuseSequencesOfWrongItems)
{
    for (const auto& text :
         {Document(DictionaryFormat, "\"Values\":[\"key\",\"no object\"]"),
          Document(DictionaryFormat, "\"Values\":[1,2]"), Document(DictionaryFormat, "\"Values\":{}"),
          Document(DictionaryFormat, "\"Other\":[]"), Document(CollectionFormat, "\"Values\":[true]"),
          Document(CollectionFormat, "\"Values\":[{\"$format\":\"unknown\"}]"),
          Document(CollectionFormat, "\"Values\":4000000000")})
    {
        CaptureOutput([&] { EXPECT_FALSE(Read(text)); });
        EXPECT_EQ(result_, TVX_E_FAIL) << text;
    }
}

TEST_F(JsonContainers, ReadArraysOfHostileSizesLeniently)
{
    struct Row
    {
        const char* content;
        std::uint32_t size;
    };
    for (const auto& row : {Row{"\"size\":-2147483648", 0}, Row{"\"size\":4000000000", 0}, Row{"\"size\":\"2\"", 0},
                            Row{"\"size\":2.5", 0}, Row{"\"other\":1", 0}, Row{"\"size\":100000", 100000},
                            Row{"\"size\":2,\"param1\":null", 2}, Row{"\"size\":1,\"param0\":[],\"param1\":1", 1}})
    {
        const auto read = Query<IVariantArray>(Read(Document(ArrayFormat, row.content)));
        ASSERT_TRUE(read) << row.content;
        std::uint32_t size = 7;
        EXPECT_EQ(read->GetSize(&size), TVX_OK);
        EXPECT_EQ(size, row.size) << row.content;
    }
}

// An array is lenient to what it cannot read, but a document with an object of a format that nobody reads is not read.
TEST_F(JsonContainers, RefuseAnArrayWithAnObjectOfAnUnknownFormat)
{
    const auto text = Document(ArrayFormat, R"("size":2,"param0":{"$format":"unknown"},"param1":null)");
    const auto output = CaptureOutput([&] { EXPECT_FALSE(Read(text)); });
    EXPECT_EQ(result_, TVX_E_FAIL);
    EXPECT_NE(output.find("no installed module reads the format \"unknown\""), std::string::npos) << output;
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 1) << output;
}

TEST_F(JsonContainers, FailToReadAnArrayThatNoMemoryHolds)
{
    if (!Platform::LimitedMemory::IsPossible())
        GTEST_SKIP() << "the sanitizers need more memory than any limit leaves them";
    const auto readAndExit = [&]
    {
        const Platform::LimitedMemory memory(32 << 20);
        const auto read = Read(Document(ArrayFormat, "\"size\":2147483647"));
        std::_Exit(TVX_FAILED(result_) && !read ? 0 : 1);
    };
    EXPECT_EXIT(readAndExit(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace tvx::test
