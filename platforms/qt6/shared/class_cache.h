#pragma once

#include <QMetaObject>
#include <QObject>
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>

namespace tarnix::qt6 {

/// What is known of a class, found out once a class instead of once an object. `Description` is
/// made from a `const QMetaObject&`. Main thread.
///
/// QML makes classes while the application runs and lets go of them with the component that they
/// come from, so that another class may come to stand at the same address. Generated names are
/// never used twice in a process: the name tells whether it is still the same class.
template <typename Description>
class ClassCache {
 public:
  /// Valid until the class of another object at the same address is asked for, thus for this turn
  /// of the event loop.
  std::shared_ptr<const Description> of(const QObject& object) {
    const QMetaObject* const metaObject = object.metaObject();
    Entry& entry = entries_[metaObject];
    if (entry.description == nullptr || entry.superClass != metaObject->superClass() ||
        std::strcmp(entry.className.c_str(), metaObject->className()) != 0) {
      entry.superClass = metaObject->superClass();
      entry.className = metaObject->className();
      entry.description = std::make_shared<const Description>(*metaObject);
    }
    return entry.description;
  }

 private:
  struct Entry {
    const QMetaObject* superClass = nullptr;
    std::string className;
    std::shared_ptr<const Description> description;
  };

  std::unordered_map<const QMetaObject*, Entry> entries_;
};

}  // namespace tarnix::qt6
