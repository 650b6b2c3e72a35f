#include "platforms/qt6/quick/hosted_view.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QUrl>
#include <QVariant>
#include <cstring>

#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/class_origin.h"

namespace tarnix::qt6::hosted_view {

namespace {

// The marks of classes that are made for a file, and for a place where something is declared.
// Components inside a file have classes without any.
constexpr const char* markOfFile = "_QMLTYPE_";
constexpr const char* markOfPlace = "_QML_";

// What is looked at to find something that was declared in the same file.
constexpr int mostRelatives = 24;
constexpr int deepestRelative = 3;

bool isToolkitsFile(const QUrl& file) {
  const QString path = file.path();
  return path.contains(QLatin1String("/qt-project.org/")) ||
         path.contains(QLatin1String("/qml/QtQuick")) || path.contains(QLatin1String("/qml/Qt"));
}

/// The context of the file that ends with making `object`, if `context` is of one of the files that
/// had part in it: a type of the application's is made in the file that uses it, around a type of
/// the toolkit's, made in its own.
const QQmlContext* outermostOf(const QQmlContext* context, const QObject& object) {
  if (context == nullptr || context->contextObject() != &object) {
    return nullptr;
  }
  for (const QQmlContext* around = context->parentContext();
       around != nullptr && around->contextObject() == &object; around = around->parentContext()) {
    context = around;
  }
  return context;
}

const QQmlContext* findBelow(const QObject& parent, const QObject& object, int depth, int& budget) {
  const auto look = [&](const QObject* child) -> const QQmlContext* {
    if (child == nullptr || --budget < 0) {
      return nullptr;
    }
    if (const QQmlContext* const found = outermostOf(qmlContext(child), object)) {
      return found;
    }
    return depth < deepestRelative ? findBelow(*child, object, depth + 1, budget) : nullptr;
  };
  if (parent.isQuickItemType()) {
    const QList<QQuickItem*> items = static_cast<const QQuickItem&>(parent).childItems();
    for (const QQuickItem* item : items) {
      if (const QQmlContext* const found = look(item)) {
        return found;
      }
      if (budget < 0) {
        return nullptr;
      }
    }
  }
  for (const QObject* child : parent.children()) {
    if (const QQmlContext* const found = look(child)) {
      return found;
    }
    if (budget < 0) {
      return nullptr;
    }
  }
  return nullptr;
}

/// A component with a name inside a file is made in a context of its own, of the same file.
bool isInsideFile(const QQmlContext& context) {
  const QQmlContext* const around = context.parentContext();
  return around != nullptr && around->baseUrl() == context.baseUrl();
}

/// The file of which `object` is the outermost thing; empty when it is none.
QUrl fileOf(const QObject& object) {
  const QQmlContext* context = outermostOf(qmlContext(&object), object);
  if (context == nullptr) {
    int budget = mostRelatives;
    context = findBelow(object, object, 0, budget);
  }
  return context == nullptr || isInsideFile(*context) ? QUrl() : context->baseUrl();
}

/// The class that was made for a file or component; empty when the toolkit's own is used as it is.
QString madeClassName(const QObject& object) {
  const QMetaObject& metaObject = *object.metaObject();
  const char* const name = metaObject.className();
  if (const char* const mark = std::strstr(name, markOfFile)) {
    return QString::fromUtf8(name, mark - name);
  }
  return std::strstr(name, markOfPlace) == nullptr && isMadeWhileRunning(metaObject)
             ? QString::fromUtf8(name)
             : QString();
}

/// "Page" for QQuickPage.
QString nameOfToolkitsType(const QObject& object) {
  QString name = QString::fromStdString(writtenClassName(*object.metaObject()));
  for (const char* prefix : {"QQuick", "Q"}) {
    const QLatin1String text(prefix);
    if (name.startsWith(text) && name.size() > text.size() && name[text.size()].isUpper()) {
      name.remove(0, text.size());
      break;
    }
  }
  for (const char* suffix : {"QmlImpl", "Item"}) {
    const QLatin1String text(suffix);
    if (name.endsWith(text) && name.size() > text.size()) {
      name.chop(text.size());
    }
  }
  return name;
}

QString nameOfFile(const QUrl& file) {
  const QString name = file.fileName();
  return name.left(name.indexOf(u'.'));
}

class HostingController : public platform::ViewController {
 public:
  explicit HostingController(const QObject& object) : object_(object) {}

  std::string className() const override {
    return "UIHostingController<" + typeName(object_).toStdString() + ">";
  }
  std::optional<std::string> title() const override {
    const QString text = hosted_view::title(object_);
    return text.isEmpty() ? std::nullopt : std::optional(text.toStdString());
  }
  std::string bundlePath() const override { return bundlePathOf(object_); }

 private:
  const QObject& object_;
};

}  // namespace

bool isDeclared(const QObject& object) { return qmlContext(&object) != nullptr; }

bool isOfApplicationsType(const QObject& object) {
  const QUrl file = fileOf(object);
  return file.isEmpty() ? !madeClassName(object).isEmpty() : !isToolkitsFile(file);
}

QString typeName(const QObject& object) {
  const QUrl file = fileOf(object);
  const QString made = madeClassName(object);
  if (!made.isEmpty() && (file.isEmpty() || isToolkitsFile(file))) {
    return made;
  }
  if (!file.isEmpty() && !isToolkitsFile(file)) {
    return nameOfFile(file);
  }
  return nameOfToolkitsType(object);
}

QString title(const QObject& object) {
  const QVariant title = object.property("title");
  return title.typeId() == QMetaType::QString ? title.toString() : QString();
}

std::unique_ptr<platform::ViewController> controllerOf(const QObject& object) {
  return std::make_unique<HostingController>(object);
}

}  // namespace tarnix::qt6::hosted_view
