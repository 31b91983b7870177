// SPDX-License-Identifier: MIT
#include "Helpers/ImportsContainerImpl.h"
#include "Helpers/Singleton.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"
#include "Tests/Support/HostDoubles.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <utility>

namespace tvx::test
{

namespace
{

// An export with imports.
class Importer final : public ClassImpl<Importer, ImportsContainerImpl<Importer>>,
                       public Singleton<Importer, IImportsContainer>
{
public:
    using Interfaces = InterfaceList<IImportsContainer, IObject, IObjectBase>;
};

// Runs an action when it dies.
class LastWords final : public CountedImpl<LastWords, IObjectBase>
{
public:
    using Interfaces = InterfaceList<IObjectBase>;

    explicit LastWords(std::function<void()> action) : action_(std::move(action)) {}
    ~LastWords() { action_(); }

private:
    std::function<void()> action_;
};

// An export with imports that cannot be made for want of memory.
class Unmakeable final : public ClassImpl<Unmakeable, ImportsContainerImpl<Unmakeable>>,
                         public Singleton<Unmakeable, IImportsContainer>
{
public:
    using Interfaces = InterfaceList<IImportsContainer, IObject, IObjectBase>;

    Unmakeable() { throw std::bad_alloc(); }
};

// An import that runs an action of the test's own inside its query, and then answers with its own members.
class ActingProxy final : public ClassImpl<ActingProxy, IExportProxy>
{
public:
    using Interfaces = InterfaceList<IExportProxy, IObject, IObjectBase>;

    ActingProxy(Ref<IObjectBase> object, std::function<void()> action)
        : object_(std::move(object)),
          action_(std::move(action))
    {
    }

    Result QueryInterface(const char* id, void** out) override
    {
        action_();
        return ClassImpl::QueryInterface(id, out);
    }

    Result GetExportObject(IObjectBase** out) override
    {
        HandOut(object_.Get(), out);
        return TVX_OK;
    }

private:
    Ref<IObjectBase> object_;
    std::function<void()> action_;
};

// The shared instance is one for the process, so every test starts and leaves it empty.
class ImportsContainerTest : public testing::Test
{
protected:
    ImportsContainerTest() { importer->ClearImports(); }
    ~ImportsContainerTest() override { importer->ClearImports(); }

    // Looks the import up and gives what was written, next to the result.
    std::string Lookup(const char* name)
    {
        return CaptureOutput([&] { found = Importer::GetImport<ILibManager>(name); });
    }

    Ref<Importer> importer = Importer::GetOrMake();
    Ref<ILibManager> found;
};

}  // namespace

TEST_F(ImportsContainerTest, KeepsAnImportWithOneReference)
{
    const auto object = MakeRef<ProbeObject>();
    EXPECT_EQ(CaptureOutput([&] { EXPECT_EQ(importer->SetImport("A", object.Get()), TVX_OK); }), "");
    EXPECT_EQ(object->GetRefCount(), 2u);
    EXPECT_EQ(importer->SetImport("B", object.Get()), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 3u);
}

TEST_F(ImportsContainerTest, ReplacesAnImportOfTheSameNameAndReleasesTheOld)
{
    const auto first = MakeRef<ProbeObject>();
    const auto manager = MakeRef<RecordingLibManager>();
    const auto second = MakeRef<ImportProxy>(manager);
    importer->SetImport("A", first.Get());
    EXPECT_EQ(importer->SetImport("A", second.Get()), TVX_OK);
    EXPECT_EQ(first->GetRefCount(), 1u);
    EXPECT_EQ(second->GetRefCount(), 2u);
    EXPECT_EQ(Lookup("A"), "");
    EXPECT_EQ(found.Get(), manager.Get());
}

TEST_F(ImportsContainerTest, KeepsOneReferenceWhenTheSameObjectIsSetAgain)
{
    const auto object = MakeRef<ProbeObject>();
    importer->SetImport("A", object.Get());
    importer->SetImport("A", object.Get());
    EXPECT_EQ(object->GetRefCount(), 2u);
}

TEST_F(ImportsContainerTest, HasTheNewImportInPlaceBeforeItReleasesTheOld)
{
    const auto manager = MakeRef<RecordingLibManager>();
    const auto proxy = MakeRef<ImportProxy>(manager);
    bool seen = false;
    importer->SetImport("A", MakeRef<LastWords>([&] { seen = Importer::GetImport<ILibManager>("A").Get(); }).Get());
    importer->SetImport("A", proxy.Get());
    EXPECT_TRUE(seen);
}

TEST_F(ImportsContainerTest, StoresNullInPlaceOfAnObject)
{
    const auto object = MakeRef<ProbeObject>();
    importer->SetImport("A", object.Get());
    EXPECT_EQ(importer->SetImport("A", nullptr), TVX_OK);
    EXPECT_EQ(object->GetRefCount(), 1u);
    EXPECT_EQ(Lookup("A"), "LibManager: Proxy interface not supported for \"A\".\n");
}

TEST_F(ImportsContainerTest, RefusesANullNameWithAReport)
{
    const auto object = MakeRef<ProbeObject>();
    const auto output = CaptureOutput([&] { EXPECT_EQ(importer->SetImport(nullptr, object.Get()), TVX_E_POINTER); });
    EXPECT_TRUE(IsReport(output, "TVX_RETURN_EPOINTER_IF_NULL", "Helpers/ImportsContainerImpl.h"));
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST_F(ImportsContainerTest, ReleasesAllImportsWhenCleared)
{
    const auto first = MakeRef<ProbeObject>();
    const auto second = MakeRef<ProbeObject>();
    importer->SetImport("A", first.Get());
    importer->SetImport("B", second.Get());
    importer->SetImport("C", nullptr);
    EXPECT_EQ(importer->ClearImports(), TVX_OK);
    EXPECT_EQ(first->GetRefCount(), 1u);
    EXPECT_EQ(second->GetRefCount(), 1u);
    EXPECT_EQ(Lookup("C"), "LibManager: NULL object proxy returned for \"C\".\n");
    EXPECT_EQ(importer->ClearImports(), TVX_OK);  // of an empty table
}

TEST_F(ImportsContainerTest, IsEmptyBeforeTheFirstObjectIsReleased)
{
    std::string seen;
    importer->SetImport("A", MakeRef<LastWords>([&] { seen = Lookup("A") + Lookup("B"); }).Get());
    importer->SetImport("B", nullptr);
    importer->ClearImports();
    EXPECT_EQ(seen, "LibManager: NULL object proxy returned for \"A\".\n"
                    "LibManager: NULL object proxy returned for \"B\".\n");
}

TEST_F(ImportsContainerTest, ReleasesItsImportsWhenItDies)
{
    const auto object = MakeRef<ProbeObject>();
    auto other = MakeRef<Importer>();
    other->SetImport("A", object.Get());
    other = nullptr;
    EXPECT_EQ(object->GetRefCount(), 1u);
}

TEST_F(ImportsContainerTest, MakesNothingOfTheNotifications)
{
    EXPECT_EQ(CaptureOutput(
                  [&]
                  {
                      EXPECT_EQ(importer->OnImportsSet(), TVX_OK);
                      EXPECT_EQ(importer->OnImportsHook(), TVX_OK);
                  }),
              "");
}

TEST_F(ImportsContainerTest, GivesTheInterfaceOfTheImportedObjectWithOneReference)
{
    const auto manager = MakeRef<RecordingLibManager>();
    const auto proxy = MakeRef<ImportProxy>(manager);
    const auto before = manager->GetRefCount();  // ours and the proxy's
    importer->SetImport("LibManager", proxy.Get());
    EXPECT_EQ(Lookup("LibManager"), "");
    EXPECT_EQ(found.Get(), manager.Get());
    EXPECT_EQ(manager->GetRefCount(), before + 1);
    EXPECT_EQ(proxy->GetRefCount(), 2u);  // ours and the table's
    EXPECT_EQ(proxy->calls, 1);
    EXPECT_EQ(importer->GetRefCount(), 2u);  // ours and the holder's
    found = nullptr;
    EXPECT_EQ(manager->GetRefCount(), before);
}

TEST_F(ImportsContainerTest, KeepsAnImportAliveWhoseQueryClearsTheImports)
{
    const auto manager = MakeRef<RecordingLibManager>();
    std::uint32_t countInQuery = 0;
    const auto clear = [&]
    {
        importer->ClearImports();
        countInQuery = manager->GetRefCount();
    };
    importer->SetImport("LibManager", MakeRef<ActingProxy>(manager, clear).Get());
    EXPECT_EQ(Lookup("LibManager"), "");
    EXPECT_EQ(found.Get(), manager.Get());
    EXPECT_EQ(countInQuery, 2u);            // ours and the import's, which is still there
    EXPECT_EQ(manager->GetRefCount(), 2u);  // ours and found: the import is gone
    EXPECT_EQ(Lookup("LibManager"), "LibManager: NULL object proxy returned for \"LibManager\".\n");
}

TEST_F(ImportsContainerTest, SaysThatAnImportWasNeverSet)
{
    EXPECT_EQ(Lookup("LibManager"), "LibManager: NULL object proxy returned for \"LibManager\".\n");
    EXPECT_FALSE(found);
}

TEST_F(ImportsContainerTest, SaysThatAnImportIsAbsentWhenItsExportCannotBeMade)
{
    const auto output = CaptureOutput([&] { found = Unmakeable::GetImport<ILibManager>("LibManager"); });
    EXPECT_EQ(output, "LibManager: NULL object proxy returned for \"LibManager\".\n");
    EXPECT_FALSE(found);
}

TEST_F(ImportsContainerTest, BeginsItsLinesAlikeForEveryImport)
{
    for (const char* const name : {"CrashDumpServer", "Serializer", "", "with \"quotes\""})
        EXPECT_EQ(Lookup(name), "LibManager: NULL object proxy returned for \"" + std::string(name) + "\".\n");
}

TEST_F(ImportsContainerTest, SaysThatAnImportIsNoProxy)
{
    const auto object = MakeRef<RecordingLibManager>();  // the interface asked for, but given directly
    importer->SetImport("LibManager", object.Get());
    EXPECT_EQ(Lookup("LibManager"), "LibManager: Proxy interface not supported for \"LibManager\".\n");
    EXPECT_FALSE(found);
    EXPECT_EQ(object->GetRefCount(), 2u);
}

TEST_F(ImportsContainerTest, SaysThatAProxyGaveNoObjectWhateverItsResult)
{
    for (const Result result : {TVX_OK, TVX_E_FAIL, TVX_S_VALUE})
    {
        const auto proxy = MakeRef<ImportProxy>(nullptr, result);
        importer->SetImport("LibManager", proxy.Get());
        EXPECT_EQ(
            Lookup("LibManager"),
            "LibManager: Library returned NULL object for \"LibManager\". Probably declared and exported contracts "
            "are different or the library is failed to load.\n");
        EXPECT_FALSE(found);
        EXPECT_EQ(proxy->calls, 1);
        EXPECT_EQ(proxy->GetRefCount(), 2u);
    }
}

TEST_F(ImportsContainerTest, TakesTheObjectOfAProxyThatSaysItFailed)
{
    const auto manager = MakeRef<RecordingLibManager>();
    const auto proxy = MakeRef<ImportProxy>(manager, TVX_E_FAIL);
    importer->SetImport("LibManager", proxy.Get());
    EXPECT_EQ(Lookup("LibManager"), "");
    EXPECT_EQ(found.Get(), manager.Get());
}

TEST_F(ImportsContainerTest, SaysThatTheObjectRefusesTheInterface)
{
    const auto object = MakeRef<ProbeObject>();
    const auto proxy = MakeRef<ImportProxy>(object);
    const auto before = object->GetRefCount();
    importer->SetImport("LibManager", proxy.Get());
    EXPECT_EQ(Lookup("LibManager"),
              "LibManager: Library object for \"LibManager\" does not support required interface "
              "com.talvere.general.tvx.ILibManager/1.0. Wrong import declaration or wrong plugin implementation?\n");
    EXPECT_FALSE(found);
    EXPECT_EQ(object->GetRefCount(), before);
    EXPECT_EQ(proxy->GetRefCount(), 2u);
}

TEST_F(ImportsContainerTest, ComparesNamesByteForByte)
{
    const auto manager = MakeRef<RecordingLibManager>();
    const auto proxy = MakeRef<ImportProxy>(manager);
    importer->SetImport("LibManager", proxy.Get());
    for (const char* const name : {"libManager", "LibManager ", "LibManage", ""})
        EXPECT_EQ(Lookup(name), "LibManager: NULL object proxy returned for \"" + std::string(name) + "\".\n");
}

TEST_F(ImportsContainerTest, LooksInTheSharedInstanceAndInNoOther)
{
    const auto manager = MakeRef<RecordingLibManager>();
    const auto proxy = MakeRef<ImportProxy>(manager);
    const auto other = MakeRef<Importer>();
    other->SetImport("LibManager", proxy.Get());
    EXPECT_EQ(Lookup("LibManager"), "LibManager: NULL object proxy returned for \"LibManager\".\n");
    EXPECT_FALSE(found);
}

}  // namespace tvx::test
