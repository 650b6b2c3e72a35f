#include "probe/platform/bundle.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

#include "tests/contract/qt6_host_world.h"
#include "tests/fakes/fake_bundle.h"

namespace tarnix::contract {
namespace {

/// What a host says of itself; empty where it says nothing.
struct Identity {
  std::string desktopFile{};
  std::string domain{};
  std::string name{};
  std::string displayName{};
  std::string version{};
};

class FakeBundleWorld {
 public:
  void set(const Identity& identity) {
    bundle_.identifier.reset();
    if (!identity.desktopFile.empty()) {
      bundle_.identifier = identity.desktopFile;
    } else if (!identity.domain.empty()) {
      bundle_.identifier = "org.example." + identity.name;
    }
    bundle_.info.clear();
    put("CFBundleDisplayName", identity.displayName);
    put("CFBundleName", identity.name);
    put("CFBundleShortVersionString", identity.version);
  }
  platform::Bundle& bundle() { return bundle_; }

 private:
  void put(const std::string& key, const std::string& value) {
    if (!value.empty()) {
      bundle_.info[key] = value;
    }
  }

  fakes::FakeBundle bundle_;
};

class Qt6BundleWorld {
 public:
  ~Qt6BundleWorld() { set({}); }

  void set(const Identity& identity) {
    QGuiApplication::setDesktopFileName(QString::fromStdString(identity.desktopFile));
    QCoreApplication::setOrganizationDomain(QString::fromStdString(identity.domain));
    QCoreApplication::setApplicationName(QString::fromStdString(identity.name));
    QGuiApplication::setApplicationDisplayName(QString::fromStdString(identity.displayName));
    QCoreApplication::setApplicationVersion(QString::fromStdString(identity.version));
  }
  platform::Bundle& bundle() { return *qt6Services().bundle; }
};

template <class World>
class BundleTest : public testing::Test {
 protected:
  World world;
};

using Worlds = testing::Types<FakeBundleWorld, Qt6BundleWorld>;
TYPED_TEST_SUITE(BundleTest, Worlds);

TYPED_TEST(BundleTest, SaysWhatTheHostSays) {
  this->world.set({.desktopFile = "org.example.Editor",
                   .name = "editor",
                   .displayName = "The Editor",
                   .version = "2.4.1"});
  const platform::Bundle& bundle = this->world.bundle();
  EXPECT_EQ(bundle.bundleIdentifier(), "org.example.Editor");
  EXPECT_EQ(bundle.infoValue("CFBundleDisplayName"), "The Editor");
  EXPECT_EQ(bundle.infoValue("CFBundleName"), "editor");
  EXPECT_EQ(bundle.infoValue("CFBundleShortVersionString"), "2.4.1");
}

TYPED_TEST(BundleTest, SaysNothingOfWhatTheHostLeavesOut) {
  this->world.set({.desktopFile = "org.example.Editor", .name = "editor"});
  EXPECT_EQ(this->world.bundle().infoValue("CFBundleShortVersionString"), std::nullopt);
  EXPECT_EQ(this->world.bundle().infoValue("CFBundleVersion"), std::nullopt);
  EXPECT_EQ(this->world.bundle().infoValue("CFBundleIconFile"), std::nullopt);
  EXPECT_EQ(this->world.bundle().infoValue(""), std::nullopt);
}

TYPED_TEST(BundleTest, TakesTheReversedDomainWhereThereIsNoDesktopFile) {
  this->world.set({.domain = "example.org", .name = "editor"});
  EXPECT_EQ(this->world.bundle().bundleIdentifier(), "org.example.editor");
}

TEST(Qt6BundleTest, CutsTheSuffixOfADesktopFile) {
  Qt6BundleWorld world;
  world.set({.desktopFile = "org.example.Editor.desktop", .name = "editor"});
  EXPECT_EQ(world.bundle().bundleIdentifier(), "org.example.Editor");
}

TEST(Qt6BundleTest, FallsBackToTheNameOfTheExecutable) {
  Qt6BundleWorld world;
  world.set({});
  EXPECT_EQ(world.bundle().bundleIdentifier(), "tarnix_qt6_contract_tests");
}

}  // namespace
}  // namespace tarnix::contract
