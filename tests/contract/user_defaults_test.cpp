#include "probe/platform/user_defaults.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDirIterator>
#include <QRect>
#include <QSettings>
#include <QTemporaryDir>
#include <map>

#include "tests/contract/qt6_host_world.h"
#include "tests/fakes/fake_user_defaults.h"

namespace tarnix::contract {
namespace {

using platform::PropertyValue;
using Values = std::map<std::string, PropertyValue>;

Values valuesOf(const platform::UserDefaults& defaults) {
  Values result;
  for (auto& [key, value] : defaults.dictionaryRepresentation()) {
    EXPECT_TRUE(result.emplace(key, value).second) << key;
  }
  return result;
}

class FakeUserDefaultsWorld {
 public:
  void store(const std::string& key, const std::string& text) {
    defaults_.values.emplace_back(key, PropertyValue{text});
  }
  platform::UserDefaults& defaults() { return defaults_; }

 private:
  fakes::FakeUserDefaults defaults_;
};

/// The settings of an application of this test's own, in a folder that goes with it.
class Qt6UserDefaultsWorld {
 public:
  Qt6UserDefaultsWorld() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path());
    QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, folder_.path() + "/none");
    QCoreApplication::setOrganizationName("tarnix");
    // Every test reads another file: the toolkit keeps what it has read.
    static int count = 0;
    QCoreApplication::setApplicationName(QString("defaults%1").arg(++count));
  }
  ~Qt6UserDefaultsWorld() {
    QCoreApplication::setOrganizationName({});
    QCoreApplication::setApplicationName({});
  }

  void store(const std::string& key, const std::string& text) {
    set(key.c_str(), QString::fromStdString(text));
  }
  void set(const char* key, const QVariant& value) { QSettings().setValue(key, value); }
  platform::UserDefaults& defaults() { return *qt6Services().userDefaults; }

  std::map<QString, QDateTime> files() const {
    std::map<QString, QDateTime> result;
    QDirIterator files(folder_.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
      const QString file = files.next();
      result[file] = files.fileInfo().lastModified();
    }
    return result;
  }

 private:
  QTemporaryDir folder_;
};

template <class World>
class UserDefaultsTest : public testing::Test {
 protected:
  World world;
};

using Worlds = testing::Types<FakeUserDefaultsWorld, Qt6UserDefaultsWorld>;
TYPED_TEST_SUITE(UserDefaultsTest, Worlds);

TYPED_TEST(UserDefaultsTest, IsEmptyWhereNothingWasStored) {
  EXPECT_TRUE(this->world.defaults().dictionaryRepresentation().empty());
}

TYPED_TEST(UserDefaultsTest, HasEveryKeyWithItsGroups) {
  this->world.store("name", "Ada");
  this->world.store("window/main/title", "Überblick");
  const Values values = valuesOf(this->world.defaults());
  ASSERT_EQ(values.size(), 2U);
  EXPECT_EQ(std::get<std::string>(values.at("name").value), "Ada");
  EXPECT_EQ(std::get<std::string>(values.at("window/main/title").value), "Überblick");
}

TEST(Qt6UserDefaultsTest, TellsTheKindsApart) {
  Qt6UserDefaultsWorld world;
  const auto now = QDateTime::fromSecsSinceEpoch(1'700'000'000, Qt::UTC);
  // What an application holds in memory keeps its type until the file is read again.
  world.set("data", QByteArray("\0\1\2", 3));
  world.set("date", now);
  world.set("list", QStringList{"one", "two"});
  world.set("map", QVariantMap{{"key", 1}});
  world.set("flag", true);
  world.set("whole", 42);
  world.set("wide", QVariant::fromValue(Q_UINT64_C(18446744073709551615)));
  world.set("real", 1.5);
  world.set("area", QRect(1, 2, 3, 4));
  const Values values = valuesOf(world.defaults());
  ASSERT_EQ(values.size(), 9U);
  EXPECT_EQ(std::get<PropertyValue::Data>(values.at("data").value).bytes, std::string("\0\1\2", 3));
  EXPECT_EQ(std::get<PropertyValue::Date>(values.at("date").value),
            std::chrono::system_clock::from_time_t(1'700'000'000));
  const auto& list = std::get<PropertyValue::Array>(values.at("list").value).elements;
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(std::get<std::string>(list[1].value), "two");
  const auto& map = std::get<PropertyValue::Dictionary>(values.at("map").value).members;
  ASSERT_EQ(map.size(), 1U);
  EXPECT_EQ(map[0].name, "key");
  EXPECT_EQ(std::get<std::int64_t>(map[0].value.value), 1);
  EXPECT_TRUE(std::get<bool>(values.at("flag").value));
  EXPECT_EQ(std::get<std::int64_t>(values.at("whole").value), 42);
  EXPECT_EQ(std::get<std::uint64_t>(values.at("wide").value), 18446744073709551615U);
  EXPECT_DOUBLE_EQ(std::get<double>(values.at("real").value), 1.5);
  EXPECT_EQ(std::get<PropertyValue::Other>(values.at("area").value).description,
            "QVariant(QRect, QRect(1,2 3x4))");
}

TEST(Qt6UserDefaultsTest, ReadingLeavesTheFilesAlone) {
  Qt6UserDefaultsWorld world;
  const auto before = world.files();
  world.defaults().dictionaryRepresentation();
  EXPECT_EQ(world.files(), before);
  world.store("name", "Ada");
  const auto stored = world.files();
  EXPECT_NE(stored, before);
  world.defaults().dictionaryRepresentation();
  EXPECT_EQ(world.files(), stored);
}

}  // namespace
}  // namespace tarnix::contract
