// SPDX-License-Identifier: MIT
#include "Helpers/Ref.h"
#include "InterfacesHelpers/UserDataContainer.h"
#include "Src/CLogData.h"
#include "Src/CVariantArray.h"
#include "Src/Collection.h"
#include "Src/CollectionFactory.h"
#include "Src/ConsoleLoggerPlug.h"
#include "Src/Image.h"
#include "Src/ImageFactory.h"
#include "Src/Map.h"
#include "Src/SimpleMap.h"
#include "Src/SimpleMapFactory.h"
#include "Src/SimpleMapIterator.h"
#include "Src/SimpleMapIteratorNoSubMaps.h"
#include "Src/String.h"
#include "Src/StringFactory.h"
#include "Src/Variant.h"
#include "Src/VariantFactory.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tool/Checks/KnownIds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <string>
#include <vector>

// Asks every class of the module for every identifier of the framework.
namespace tvx::test
{

namespace
{

// As text: that a header still says the same is part of what is tested.
using check::KnownIds;

// What an object of one class answers: which face for which identifier.
struct Subject
{
    std::vector<IObjectBase*> faces;  // the primary one first; the object is held by it
    std::map<std::string, void*> answers;
    Ref<IObjectBase> object;
};

// Face answers the identifiers of the interfaces Answered, which it is or derives from.
template <class Face, class... Answered>
struct Through
{
    template <class Class>
    static void AddTo(Subject& subject, Class& object)
    {
        Face* const face = &object;
        subject.faces.push_back(face);
        (subject.answers.emplace(Answered::Id, static_cast<Answered*>(face)), ...);
    }
};

template <class... Answers, class Class>
Subject MakeSubject(const Ref<Class>& object)
{
    Subject subject;
    (Answers::AddTo(subject, *object), ...);
    subject.object = Ref<IObjectBase>(subject.faces.front());
    return subject;
}

template <class Class, class... Arguments>
Subject MakeVariant(Arguments... arguments)
{
    return MakeSubject<Through<IVariant, IVariant, IObject, IObjectBase>, Through<ISerializable, ISerializable>>(
        MakeRef<Class>(arguments...));
}

// Iterators are known by the pointer that made them and have no identifier of their own.
template <class Class, class Interface, class Table>
Subject MakeIterator()
{
    static const Table table;
    return MakeSubject<Through<Interface, IObjectBase>>(MakeRef<Class>(table));
}

Subject MakeSimpleMap()
{
    return MakeSubject<Through<ISimpleMap5, ISimpleMap5, ISimpleMap4, ISimpleMap3, ISimpleMap2, ISimpleMap1, ISimpleMap,
                               IObject, IObjectBase>,
                       Through<ISerializable, ISerializable>, Through<IUserDataContainer, IUserDataContainer>>(
        MakeRef<SimpleMap>());
}

Subject MakeSimpleMapFactory()
{
    return MakeSubject<Through<IFactory, IFactory, IObject, IObjectBase>, Through<IDeserializable, IDeserializable>,
                       Through<IImportsContainer, IImportsContainer>>(MakeRef<CSimpleMapFactory>());
}

Subject MakeVariantFactory()
{
    return MakeSubject<Through<IVariantFactory, IVariantFactory, IObject, IObjectBase>,
                       Through<IDeserializable, IDeserializable>>(MakeRef<VariantFactory>());
}

Subject MakeMap()
{
    return MakeSubject<Through<IMap, IMap, IObject, IObjectBase>, Through<ISerializable, ISerializable>>(
        MakeRef<Map>());
}

Subject MakeMapFactory()
{
    return MakeSubject<Through<IMapFactory, IMapFactory, IObject, IObjectBase>,
                       Through<IDeserializable, IDeserializable>>(MakeRef<MapFactory>());
}

Subject MakeCollection()
{
    return MakeSubject<Through<ICollection2, ICollection2, ICollection, IObject, IObjectBase>,
                       Through<ISerializable, ISerializable>>(MakeRef<Collection>());
}

Subject MakeCollectionFactory()
{
    return MakeSubject<Through<ICollectionFactory, ICollectionFactory, IObject, IObjectBase>,
                       Through<IDeserializable, IDeserializable>, Through<ITVXPlugin, ITVXPlugin, IConstTVXPlugin>>(
        MakeRef<CollectionFactory>());
}

Subject MakeVariantArray()
{
    return MakeSubject<Through<IVariantArray, IVariantArray, IObject, IObjectBase>,
                       Through<ISerializable, ISerializable>>(MakeRef<CVariantArray>());
}

// The one class whose IObject is not its primary face.
Subject MakeVariantArrayFactory()
{
    return MakeSubject<Through<IDeserializable, IDeserializable, IObjectBase>, Through<IFactory, IFactory, IObject>>(
        MakeRef<CVariantArrayFactory>());
}

Subject MakeLogger()
{
    return MakeSubject<Through<ILogger, ILogger, IObject, IObjectBase>, Through<IConfigurable, IConfigurable>,
                       Through<IImportsContainer, IImportsContainer>>(MakeRef<CBasicLogger>());
}

Subject MakeLogData()
{
    return MakeSubject<Through<ILogData, ILogData, IObject, IObjectBase>>(
        MakeRef<CLogData>(LogEntry{"Main", 1, "source", "scope", "file", 1, "message"}));
}

// IConstImage is only answered by images that never change, which IImage derives from all the same.
Subject MakeImage()
{
    return MakeSubject<Through<IImage, IImage, IImageBase, IObject, IObjectBase>>(
        MakeRef<Image>(Raster({1, 1, 0, 0, 0}, Content::Zeros)));
}

Subject MakeConstImage()
{
    return MakeSubject<Through<IConstImage, IConstImage, IImageBase, IObject, IObjectBase>>(
        MakeRef<ConstImage>(Raster({1, 1, 0, 0, 0}, Content::Zeros)));
}

struct Row
{
    const char* name;
    Subject (*make)();
};

void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.name;
}

// One row a class.
constexpr Row Rows[] = {
    {"String", [] { return MakeSubject<Through<IString, IString, IObjectBase>>(MakeRef<String>("text")); }},
    {"StringFactory",
     [] { return MakeSubject<Through<IStringFactory, IStringFactory, IObjectBase>>(MakeRef<StringFactory>()); }},
    {"BoolVariant", [] { return MakeVariant<BoolVariant>(true); }},
    {"IntVariant", [] { return MakeVariant<IntVariant>(1); }},
    {"FloatVariant", [] { return MakeVariant<FloatVariant>(1.0F); }},
    {"DoubleVariant", [] { return MakeVariant<DoubleVariant>(1.0); }},
    {"StringVariant", [] { return MakeVariant<StringVariant>(nullptr); }},
    {"ObjectVariant", [] { return MakeVariant<ObjectVariant>(nullptr); }},
    {"VariantFactory", &MakeVariantFactory},
    {"SimpleMap", &MakeSimpleMap},
    {"CSimpleMapFactory", &MakeSimpleMapFactory},
    {"CSimpleMapIterator", &MakeIterator<CSimpleMapIterator, ISimpleMapIterator, EntryTable>},
    {"CSimpleMapIteratorNoSubMaps", &MakeIterator<CSimpleMapIteratorNoSubMaps, ISimpleMapIterator, EntryTable>},
    {"Map", &MakeMap},
    {"MapFactory", &MakeMapFactory},
    {"Collection", &MakeCollection},
    {"CollectionFactory", &MakeCollectionFactory},
    {"CVariantArray", &MakeVariantArray},
    {"CVariantArrayFactory", &MakeVariantArrayFactory},
    {"CBasicLogger", &MakeLogger},
    {"CLogData", &MakeLogData},
    {"Image", &MakeImage},
    {"ConstImage", &MakeConstImage},
    {"ImageFactory",
     [] { return MakeSubject<Through<IImageFactory, IImageFactory, IObject, IObjectBase>>(MakeRef<ImageFactory>()); }},
    {"CUserDataIterator", &MakeIterator<CUserDataIterator, IUserDataIterator, UserDataTable>},
};

class QueryMatrix : public testing::TestWithParam<Row>
{
protected:
    // Whether face refuses id silently and touches neither out nor count.
    testing::AssertionResult Refuses(IObjectBase& face, const std::string& id)
    {
        int mark = 0;
        void* out = &mark;
        const auto result = face.QueryInterface(id.c_str(), &out);
        if (result == TVX_E_NOINTERFACE && out == &mark && subject.object->GetRefCount() == 1)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << id << ": result " << result << (out == &mark ? "" : ", out touched")
                                           << ", count " << subject.object->GetRefCount();
    }

    // Whether face answers id with the expected pointer and one more reference.
    testing::AssertionResult Answers(IObjectBase& face, const std::string& id, void* expected)
    {
        void* out = nullptr;
        const auto result = face.QueryInterface(id.c_str(), &out);
        const auto count = subject.object->GetRefCount();
        if (!TVX_FAILED(result))
            subject.object->Release();
        if (result == TVX_OK && out == expected && count == 2)
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << id << ": result " << result << ", out " << out << " for " << expected << ", count " << count;
    }

    testing::AssertionResult AnswersAsListed(IObjectBase& face, const std::string& id)
    {
        const auto listed = subject.answers.find(id);
        return listed == subject.answers.end() ? Refuses(face, id) : Answers(face, id, listed->second);
    }

    Subject subject = GetParam().make();
};

}  // namespace

TEST_P(QueryMatrix, GivesTheRightFaceForEveryKnownIdentifierOrRefuses)
{
    const auto output = CaptureOutput(
        [&]
        {
            for (const char* const id : KnownIds)
                EXPECT_TRUE(AnswersAsListed(*subject.object, id));
        });
    EXPECT_EQ(output, "");
}

TEST_P(QueryMatrix, AnswersAlikeThroughEachOfItsFaces)
{
    for (IObjectBase* const face : subject.faces)
    {
        for (const char* const id : KnownIds)
            EXPECT_TRUE(AnswersAsListed(*face, id));
    }
}

TEST_P(QueryMatrix, CountsThroughEachOfItsFaces)
{
    for (IObjectBase* const face : subject.faces)
    {
        EXPECT_TRUE(face->IsUnique());
        EXPECT_EQ(face->AddRef(), 2u);
        EXPECT_EQ(subject.object->GetRefCount(), 2u);
        EXPECT_FALSE(face->IsUnique());
        EXPECT_EQ(face->Release(), 1u);
    }
}

TEST_P(QueryMatrix, IsDescribedByKnownIdentifiersOnly)
{
    const std::vector<std::string> known(std::begin(KnownIds), std::end(KnownIds));
    for (const auto& [id, face] : subject.answers)
        EXPECT_NE(std::find(known.begin(), known.end(), id), known.end()) << id;
}

TEST_P(QueryMatrix, RefusesPrefixesOfItsIdentifiers)
{
    for (const auto& [id, face] : subject.answers)
    {
        for (std::size_t length = 0; length < id.size(); ++length)
            EXPECT_TRUE(Refuses(*subject.object, id.substr(0, length)));
    }
}

TEST_P(QueryMatrix, RefusesItsIdentifiersWithOneCharacterMore)
{
    for (const auto& [id, face] : subject.answers)
    {
        for (const char more : {'0', ' ', '\n', '.', '\x7f', '\x01'})
            EXPECT_TRUE(Refuses(*subject.object, id + more));
        EXPECT_TRUE(Refuses(*subject.object, " " + id));
    }
}

TEST_P(QueryMatrix, RefusesItsIdentifiersInAnotherCase)
{
    for (const auto& [id, face] : subject.answers)
    {
        for (std::size_t at = 0; at < id.size(); ++at)
        {
            auto other = id;
            other[at] = static_cast<char>(other[at] ^ 0x20);
            EXPECT_TRUE(Refuses(*subject.object, other));
        }
    }
}

TEST_P(QueryMatrix, RefusesOtherVersionsOfItsIdentifiers)
{
    for (const auto& [id, face] : subject.answers)
    {
        const auto name = id.substr(0, id.find('/') + 1);
        for (const char* const version : {"0.9", "1.6", "2.1", "3.0", "1.10"})
            EXPECT_TRUE(Refuses(*subject.object, name + version));
    }
}

TEST_P(QueryMatrix, RefusesEverythingIntoANullOut)
{
    for (IObjectBase* const face : subject.faces)
    {
        for (const char* const id : KnownIds)
            EXPECT_EQ(face->QueryInterface(id, nullptr), TVX_E_NOINTERFACE) << id;
        EXPECT_EQ(face->QueryInterface(nullptr, nullptr), TVX_E_NOINTERFACE);
    }
    EXPECT_EQ(subject.object->GetRefCount(), 1u);
}

TEST_P(QueryMatrix, RefusesANullIdentifier)
{
    void* out = this;
    EXPECT_EQ(subject.object->QueryInterface(nullptr, &out), TVX_E_NOINTERFACE);
    EXPECT_EQ(out, this);
}

INSTANTIATE_TEST_SUITE_P(Classes, QueryMatrix, testing::ValuesIn(Rows),
                         [](const testing::TestParamInfo<Row>& row) { return std::string(row.param.name); });

}  // namespace tvx::test
