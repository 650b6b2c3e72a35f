#include "probe/platform/class_registry.h"

#include <gtest/gtest.h>

#include "tests/contract/qt6_host_world.h"
#include "tests/fakes/fake_class_registry.h"

namespace tarnix::contract {

namespace sample {

/// Exported, as the classes of a library are.
class [[gnu::visibility("default")]] Exported {
 public:
  virtual ~Exported();
};

Exported::~Exported() = default;

/// Known to the toolkit's registry, as the classes of a QML module are.
struct Registered {};

}  // namespace sample

namespace {

class FakeClassRegistryWorld {
 public:
  FakeClassRegistryWorld() {
    registry_.classes = {"tarnix.contract.sample.Exported", "tarnix.contract.sample.Registered"};
  }
  platform::ClassRegistry& registry() { return registry_; }

 private:
  fakes::FakeClassRegistry registry_;
};

class Qt6ClassRegistryWorld {
 public:
  Qt6ClassRegistryWorld() { qRegisterMetaType<sample::Registered>(); }
  platform::ClassRegistry& registry() { return *qt6Services().classRegistry; }
};

template <class World>
class ClassRegistryTest : public testing::Test {
 protected:
  World world;
};

using Worlds = testing::Types<FakeClassRegistryWorld, Qt6ClassRegistryWorld>;
TYPED_TEST_SUITE(ClassRegistryTest, Worlds);

TYPED_TEST(ClassRegistryTest, FindsTheClassesOfTheProcess) {
  EXPECT_TRUE(this->world.registry().hasClass("tarnix.contract.sample.Exported"));
  EXPECT_TRUE(this->world.registry().hasClass("tarnix.contract.sample.Registered"));
}

TYPED_TEST(ClassRegistryTest, FindsNoOthers) {
  for (const char* name : {"Tarnix.CompanionServer", "tarnix.contract.sample.Missing", "Exported",
                           "tarnix.contract.sample", "", ".", "tarnix..Exported"}) {
    EXPECT_FALSE(this->world.registry().hasClass(name)) << name;
  }
}

TEST(Qt6ClassRegistryTest, FindsClassesWithoutNamespaceInAnyLibrary) {
  EXPECT_TRUE(qt6Services().classRegistry->hasClass("QWidget"));
  EXPECT_TRUE(qt6Services().classRegistry->hasClass("QQuickItem"));
}

}  // namespace
}  // namespace tarnix::contract
