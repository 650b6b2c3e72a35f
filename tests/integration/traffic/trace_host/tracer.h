#pragma once

#include <QByteArray>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QString>

namespace trace_host {

/// Writes down what one reply does. A loose one leaves out what depends on how the bytes were cut
/// up on the way.
class Tracer : public QObject {
 public:
  explicit Tracer(QNetworkReply* reply, bool isLoose = false);

  void state(const QString& what);
  void body(const QByteArray& bytes);

 private:
  /// Everything that a reply says of itself.
  QString head() const;
  void data(const QString& what);

  QPointer<QNetworkReply> reply_;
  bool isLoose_;
  bool hasSaidData_ = false;
  QString lastHead_;
};

}  // namespace trace_host
