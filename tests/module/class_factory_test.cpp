#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <thread>
#include <vector>

#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/thread_gate.h"

namespace brantel {
namespace {

using ::testing::Values;
using ::testing::ValuesIn;

TEST(GetClassObject, RefusesANullOutPointer) {
  const LoadedModule module;

  EXPECT_EQ(module.GetClassObject(ToGuid(kLaunchProgram.clsid), ToGuid(kClassFactoryIid), nullptr),
            E_POINTER);
  EXPECT_EQ(module.GetClassObject(ToGuid(kStrangerId), ToGuid(kClassFactoryIid), nullptr),
            E_POINTER);
}

TEST(GetClassObject, RefusesUnknownClassesAndClearsTheOutPointer) {
  const LoadedModule module;
  // Identifiers that the module knows, but not as classes, and one that nobody knows.
  for (const wchar_t* id : {kStrangerId, kExpectedLibraryId, kNotifierIid,
                            kLaunchProgram.file_magic, L"{00000000-0000-0000-0000-000000000000}"}) {
    void* object = kLeftover;
    EXPECT_EQ(module.GetClassObject(ToGuid(id), ToGuid(kClassFactoryIid), &object),
              static_cast<HRESULT>(0x80040111))
        << id;
    EXPECT_EQ(object, nullptr) << id;
  }
}

class EveryClassFactory : public ::testing::TestWithParam<ExpectedClass> {
 protected:
  HRESULT GetClassObject(const wchar_t* iid, void** object) const {
    return module_.GetClassObject(ToGuid(GetParam().clsid), ToGuid(iid), object);
  }

  LoadedModule module_;
};

INSTANTIATE_TEST_SUITE_P(Classes, EveryClassFactory, ValuesIn(kExpectedClasses), NameOfClass);

TEST_P(EveryClassFactory, RefusesOtherInterfacesAndClearsTheOutPointer) {
  for (const wchar_t* iid : {kStrangerId, kDispatchIid, kNotifierIid, kNotifierHostIid}) {
    void* object = kLeftover;
    EXPECT_EQ(GetClassObject(iid, &object), E_NOINTERFACE) << iid;
    EXPECT_EQ(object, nullptr) << iid;
  }
}

TEST_P(EveryClassFactory, IsTheSameObjectForEveryInterfaceAndEveryTime) {
  ComPointer<IUnknown> as_unknown;
  ComPointer<IClassFactory> as_factory;
  ComPointer<IClassFactory> again;
  ASSERT_EQ(GetClassObject(kUnknownIid, as_unknown.put_void()), S_OK);
  ASSERT_EQ(GetClassObject(kClassFactoryIid, as_factory.put_void()), S_OK);
  const IClassFactory* first = as_factory.get();
  as_factory = {};
  as_unknown = {};

  ASSERT_EQ(GetClassObject(kClassFactoryIid, again.put_void()), S_OK);
  EXPECT_EQ(again.get(), first);
  ASSERT_EQ(GetClassObject(kUnknownIid, as_unknown.put_void()), S_OK);
  ComPointer<IUnknown> identity;
  ASSERT_EQ(again->QueryInterface(ToGuid(kUnknownIid), identity.put_void()), S_OK);
  EXPECT_EQ(as_unknown.get(), identity.get());
}

TEST_P(EveryClassFactory, AnswersQueryInterfaceByTheRules) {
  const auto factory = module_.FactoryOf(GetParam());
  ComPointer<IUnknown> unknown;
  ASSERT_EQ(factory->QueryInterface(ToGuid(kUnknownIid), unknown.put_void()), S_OK);
  ComPointer<IClassFactory> back;
  ASSERT_EQ(unknown->QueryInterface(ToGuid(kClassFactoryIid), back.put_void()), S_OK);
  EXPECT_EQ(back.get(), factory.get());

  void* object = kLeftover;
  EXPECT_EQ(factory->QueryInterface(ToGuid(kDispatchIid), &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(factory->QueryInterface(ToGuid(kUnknownIid), nullptr), E_POINTER);
}

TEST_P(EveryClassFactory, CreatesObjectsByEachOfferedInterface) {
  const auto factory = module_.FactoryOf(GetParam());
  for (const wchar_t* iid : OfferedInterfaces(GetParam())) {
    ComPointer<IUnknown> object;
    EXPECT_EQ(factory->CreateInstance(nullptr, ToGuid(iid), object.put_void()), S_OK) << iid;
    EXPECT_NE(object.get(), nullptr) << iid;
  }
}

TEST_P(EveryClassFactory, CreatesANewObjectEveryTime) {
  const auto first = module_.CreateNotifier(GetParam());
  const auto second = module_.CreateNotifier(GetParam());

  EXPECT_NE(first.get(), second.get());
}

TEST_P(EveryClassFactory, CreatesNothingByAnInterfaceThatIsNotOffered) {
  const auto factory = module_.FactoryOf(GetParam());
  std::vector<const wchar_t*> iids = {kStrangerId, kDispatchIid, kNotifierHostIid,
                                      kClassFactoryIid};
  if (!GetParam().has_web_forms) iids.push_back(kNotifierWebConfigIid);
  for (const wchar_t* iid : iids) {
    void* object = kLeftover;
    EXPECT_EQ(factory->CreateInstance(nullptr, ToGuid(iid), &object), E_NOINTERFACE) << iid;
    EXPECT_EQ(object, nullptr) << iid;
  }
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_P(EveryClassFactory, RefusesToBePartOfAnotherObject) {
  RecordingHost outer;
  void* object = kLeftover;

  EXPECT_EQ(module_.FactoryOf(GetParam())->CreateInstance(&outer, ToGuid(kUnknownIid), &object),
            CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(outer.references(), 1);
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_P(EveryClassFactory, RefusesANullOutPointer) {
  EXPECT_EQ(module_.FactoryOf(GetParam())->CreateInstance(nullptr, ToGuid(kUnknownIid), nullptr),
            E_POINTER);
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_P(EveryClassFactory, DoesNotKeepTheModuleByItself) {
  const auto factory = module_.FactoryOf(GetParam());

  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_P(EveryClassFactory, LetsTheModuleGoAfterTheLastReleaseOfAllObjects) {
  auto first = module_.CreateNotifier(GetParam());
  EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
  auto second = module_.Create<IUnknown>(GetParam(), kNotifierConfigIid);
  ComPointer<IUnknown> first_by_another_pointer;
  ASSERT_EQ(
      first->QueryInterface(ToGuid(kSupportErrorInfoIid), first_by_another_pointer.put_void()),
      S_OK);

  first = {};
  second = {};
  EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
  first_by_another_pointer = {};
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_P(EveryClassFactory, CountsServerLocks) {
  const auto factory = module_.FactoryOf(GetParam());

  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  EXPECT_EQ(factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
  EXPECT_EQ(factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST(LockCount, AddsObjectsAndLocksOfAllClasses) {
  const LoadedModule module;
  auto beeper = module.CreateNotifier(kBeeper);
  const auto factory = module.FactoryOf(kLaunchProgram);
  ASSERT_EQ(factory->LockServer(TRUE), S_OK);

  beeper = {};
  EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
  ASSERT_EQ(factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

TEST(LockCount, IsKeptByManyThreadsAtOnce) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 20000;
  const LoadedModule module;
  const auto factory = module.FactoryOf(kLaunchProgram);
  ThreadGate start(kThreads);
  std::vector<std::jthread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      start.PassTogether();
      for (int round = 0; round < kRounds; ++round) {
        factory->LockServer(TRUE);
        const auto notifier = module.CreateNotifier(kLaunchProgram);
        factory->LockServer(FALSE);
      }
    });
  }
  threads.clear();

  EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

// One factory for a class that several threads ask for at the same moment. The class must be new to
// the module, so each round loads it afresh and asks for all classes in turn.
class FirstRequest : public ::testing::TestWithParam<int> {
 protected:
  static constexpr std::size_t kClasses = kExpectedClasses.size();

  using Factories = std::vector<std::array<IClassFactory*, kClasses>>;

  // What each thread is given. The references stay with the caller.
  static Factories AskFromAllThreads(const LoadedModule& module) {
    const auto thread_count = static_cast<std::size_t>(GetParam());
    Factories factories(thread_count);
    ThreadGate gate(GetParam());
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < thread_count; ++i) {
      threads.emplace_back([&, i] {
        for (std::size_t row = 0; row < kClasses; ++row) {
          const CLSID clsid = ToGuid(kExpectedClasses.at(row).clsid);
          void* object = nullptr;
          gate.PassTogether();
          module.GetClassObject(clsid, ToGuid(kClassFactoryIid), &object);
          factories[i].at(row) = static_cast<IClassFactory*>(object);
        }
      });
    }
    threads.clear();
    return factories;
  }
};

INSTANTIATE_TEST_SUITE_P(Threads, FirstRequest, Values(2, 16));

TEST_P(FirstRequest, OfSeveralThreadsAtOnceMakesOneFactory) {
  for (int round = 0; round < 40; ++round) {
    ASSERT_EQ(GetModuleHandleW(ModuleFile().c_str()), nullptr) << "the module is still loaded";
    const LoadedModule module;
    const Factories factories = AskFromAllThreads(module);
    std::set<const IClassFactory*> different;
    for (const auto& of_thread : factories) {
      for (std::size_t row = 0; row < kClasses; ++row) {
        ASSERT_NE(of_thread.at(row), nullptr) << kExpectedClasses.at(row);
        EXPECT_EQ(of_thread.at(row), factories.front().at(row)) << kExpectedClasses.at(row);
        different.insert(of_thread.at(row));
        of_thread.at(row)->Release();
      }
    }
    EXPECT_EQ(different.size(), kClasses);
  }
}

}  // namespace
}  // namespace brantel
