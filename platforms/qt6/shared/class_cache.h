#pragma once

#include <QMetaObject>
#include <QObject>
#include <cstring>
#include <deque>
#include <string>
#include <unordered_map>

namespace tarnix::qt6 {

/// What is known of a class, found out once a class instead of once an object. `Description` is
/// made from a `const QMetaObject&`. Main thread.
///
/// QML makes classes while the application runs and lets go of them with the component that they
/// come from, so that another class may come to stand at the same address. Generated names are
/// never used twice in a process: the name tells whether it is still the same class.
/// Descriptions are never let go of: classes are few, and views point to theirs.
template <typename Description>
class ClassCache {
 public:
  const Description& of(const QObject& object) {
    const QMetaObject* const metaObject = object.metaObject();
    Entry& entry = entries_[metaObject];
    if (entry.description == nullptr || entry.superClass != metaObject->superClass() ||
        std::strcmp(entry.className.c_str(), metaObject->className()) != 0) {
      entry.superClass = metaObject->superClass();
      entry.className = metaObject->className();
      descriptions_.emplace_back(*metaObject);
      entry.description = &descriptions_.back();
    }
    return *entry.description;
  }

 private:
  struct Entry {
    const QMetaObject* superClass = nullptr;
    std::string className;
    const Description* description = nullptr;
  };

  std::unordered_map<const QMetaObject*, Entry> entries_;
  std::deque<Description> descriptions_;
};

}  // namespace tarnix::qt6
