// Makes requests in every way that an application can, and writes down all that it sees of each:
// every signal in its order with the state of the reply at that moment, attributes, headers, bytes.
// Run twice, with and without the probe, it must write the same.
//
//   trace_host http://127.0.0.1:PORT
//
// lists its scenarios, then runs each one that standard input names, until that ends.
#include <fcntl.h>
#include <unistd.h>

#include <QAuthenticator>
#include <QBuffer>
#include <QCryptographicHash>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QHttpMultiPart>
#include <QNetworkAccessManager>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QPointer>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslError>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QThread>
#include <QTimer>
#include <atomic>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace {

constexpr int timeLimit = 20'000;  // milliseconds a scenario

QString base;

void say(const QString& line) {
  std::printf("%s\n", qPrintable(QString(line).replace(base, "BASE")));
}

QString text(const QVariant& value) {
  QString result = value.typeName() == nullptr ? QString("none") : QString(value.typeName()) + " ";
  return result + QString::fromLatin1(value.toByteArray().left(200).toPercentEncoding(" /:;=,\""));
}

/// Writes down what one reply does.
class Tracer : public QObject {
 public:
  explicit Tracer(QNetworkReply* reply, bool isLoose = false) : reply_(reply), isLoose_(isLoose) {
    // Several signals of the network library are only in some versions: all of them are taken from
    // the type information.
    state("made");
    connect(reply, &QNetworkReply::metaDataChanged, this, [this] { state("metaDataChanged"); });
    connect(reply, &QNetworkReply::errorOccurred, this, [this](QNetworkReply::NetworkError code) {
      state(QString("errorOccurred %1").arg(int(code)));
    });
    connect(reply, &QNetworkReply::redirected, this,
            [this](const QUrl& url) { state("redirected " + url.toString()); });
    connect(reply, &QNetworkReply::redirectAllowed, this, [this] { state("redirectAllowed"); });
    connect(reply, &QNetworkReply::readyRead, this, [this] { data("readyRead"); });
    connect(reply, &QNetworkReply::readChannelFinished, this,
            [this] { state("readChannelFinished"); });
    connect(reply, &QNetworkReply::aboutToClose, this, [this] { state("aboutToClose"); });
    connect(reply, &QNetworkReply::bytesWritten, this, [this] { state("bytesWritten"); });
    connect(reply, &QNetworkReply::downloadProgress, this, [this](qint64 now, qint64 total) {
      data(QString("downloadProgress %1 of %2").arg(now).arg(total));
    });
    connect(reply, &QNetworkReply::uploadProgress, this, [this](qint64 now, qint64 total) {
      // How far an upload has come when it is reported is a matter of timing.
      if (now == total || total <= 0) {
        state(QString("uploadProgress %1 of %2").arg(now).arg(total));
      }
    });
    connect(reply, &QNetworkReply::requestSent, this, [this] { state("requestSent"); });
    connect(reply, &QNetworkReply::socketStartedConnecting, this,
            [this] { state("socketStartedConnecting"); });
    connect(reply, &QNetworkReply::encrypted, this, [this] {
      state("encrypted by " + reply_->sslConfiguration().peerCertificate().subjectDisplayName());
    });
    connect(reply, &QNetworkReply::sslErrors, this, [this](const QList<QSslError>& errors) {
      for (const QSslError& error : errors) {
        state("sslErrors " + error.errorString());
      }
    });
    connect(reply, &QNetworkReply::finished, this, [this] { state("finished"); });
    connect(reply, &QObject::destroyed, this, [] { say("  destroyed"); });
  }

  void state(const QString& what) {
    if (reply_ == nullptr) {
      say("  " + what + " (gone)");
      return;
    }
    const QNetworkReply& reply = *reply_;
    QString line = "  " + what + " |";
    line += QString(" open %1").arg(int(reply.openMode()));
    if (!isLoose_) {
      line += QString(" available %1 size %2").arg(reply.bytesAvailable()).arg(reply.size());
    }
    line += QString(" %1%2").arg(reply.isFinished() ? "finished" : "running",
                                 reply.isRunning() ? "" : " idle");
    line += QString(" error %1 \"%2\"").arg(int(reply.error())).arg(reply.errorString());
    say(line);
    const QString head = this->head();
    if (head != lastHead_) {
      lastHead_ = head;
      say(head);
    }
  }

  /// Everything that a reply says of itself.
  QString head() const {
    QString lines = "    url " + reply_->url().toString() + " of " +
                    reply_->request().url().toString() +
                    QString(" operation %1").arg(int(reply_->operation()));
    for (int code = 0; code < 40; ++code) {
      const QVariant value = reply_->attribute(static_cast<QNetworkRequest::Attribute>(code));
      if (value.isValid()) {
        lines += QString("\n    attribute %1 %2").arg(code).arg(text(value));
      }
    }
    for (const auto& [name, value] : reply_->rawHeaderPairs()) {
      lines += "\n    header " + name + ": " + value;
    }
    for (const QNetworkRequest::KnownHeaders header :
         {QNetworkRequest::ContentTypeHeader, QNetworkRequest::ContentLengthHeader,
          QNetworkRequest::LocationHeader, QNetworkRequest::LastModifiedHeader}) {
      if (reply_->header(header).isValid()) {
        lines +=
            QString("\n    known header %1 %2").arg(int(header)).arg(text(reply_->header(header)));
      }
    }
    for (const auto& name : reply_->request().rawHeaderList()) {
      lines += "\n    sent " + name + ": " + reply_->request().rawHeader(name);
    }
    return lines;
  }

  void body(const QByteArray& bytes) {
    say(QString("  body %1 %2 %3")
            .arg(bytes.size())
            .arg(QString(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex()),
                 QString(bytes.left(60).toPercentEncoding(" "))));
  }

 private:
  /// What depends on how the bytes were cut up on the way is written once for a run of it.
  void data(const QString& what) {
    if (isLoose_) {
      if (!hasSaidData_) {
        hasSaidData_ = true;
        state("data");
      }
      return;
    }
    state(what);
  }

  QPointer<QNetworkReply> reply_;
  bool isLoose_;
  bool hasSaidData_ = false;
  QString lastHead_;
};

/// An application's own manager: one that overrides what the probe takes hold of.
class OwnManager : public QNetworkAccessManager {
 protected:
  QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request,
                               QIODevice* body) override {
    QNetworkRequest changed = request;
    changed.setRawHeader("X-Own", "yes");
    return QNetworkAccessManager::createRequest(operation, changed, body);
  }
};

class PlainlyDerivedManager : public QNetworkAccessManager {};

using Make = std::function<QNetworkReply*(QNetworkAccessManager&)>;

QNetworkRequest request(const QString& path) { return QNetworkRequest(QUrl(base + path)); }

void wait(QNetworkReply* reply) {
  if (reply->isFinished()) {
    return;
  }
  QEventLoop loop;
  QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
  QTimer::singleShot(timeLimit, &loop, [&loop] {
    say("  TOO LATE");
    loop.quit();
  });
  loop.exec();
}

void spin(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

/// Until a reply has come to its end or is gone, and a little longer, for what must not follow.
void settle(const QPointer<QNetworkReply>& reply) {
  for (int turn = 0; turn < timeLimit && reply != nullptr && !reply->isFinished(); ++turn) {
    spin(1);
  }
  spin(50);
}

struct Options {
  bool loose = false;
  bool readInSlots = false;
  /// Bytes to read in each readyRead; 0: all.
  qint64 readAtMost = 0;
};

void traceManager(QNetworkAccessManager& manager) {
  QObject::connect(&manager, &QNetworkAccessManager::finished, [](QNetworkReply* reply) {
    say(QString("  manager finished %1").arg(int(reply->error())));
  });
  QObject::connect(&manager, &QNetworkAccessManager::authenticationRequired,
                   [](QNetworkReply*, QAuthenticator* authenticator) {
                     say("  authenticationRequired " + authenticator->realm());
                   });
  QObject::connect(&manager, &QNetworkAccessManager::encrypted, [] { say("  manager encrypted"); });
  QObject::connect(&manager, &QNetworkAccessManager::sslErrors,
                   [](QNetworkReply*, const QList<QSslError>& errors) {
                     say(QString("  manager sslErrors %1").arg(errors.size()));
                   });
}

/// One of many replies at a time: what it does is gathered, to be written in its turn.
class ParallelReply {
 public:
  void watch(QNetworkReply* reply) {
    reply_.reset(reply);
    const auto note = [this](const char* signal) {
      return [this, signal] {
        // How often there is something to read is a matter of chance.
        if (signals_.isEmpty() || signals_.last() != signal) {
          signals_.append(signal);
        }
      };
    };
    // Not whether it connects, and when its request has gone out: that is up to who comes first.
    QObject::connect(reply, &QNetworkReply::metaDataChanged, note("metaDataChanged"));
    QObject::connect(reply, &QNetworkReply::errorOccurred, note("errorOccurred"));
    QObject::connect(reply, &QNetworkReply::readyRead, note("data"));
    QObject::connect(reply, &QNetworkReply::downloadProgress, note("data"));
    QObject::connect(reply, &QNetworkReply::readChannelFinished, note("readChannelFinished"));
    QObject::connect(reply, &QNetworkReply::finished, note("finished"));
  }
  QNetworkReply* reply() const { return reply_.get(); }

  void write() const {
    say("  " + signals_.join(" "));
    Tracer tracer(reply_.get());
    tracer.body(reply_->readAll());
  }

 private:
  std::unique_ptr<QNetworkReply> reply_;
  QStringList signals_;
};

void follow(QNetworkReply* reply, const Options& options = {}) {
  Tracer tracer(reply, options.loose);
  QByteArray read;
  if (options.readInSlots) {
    QObject::connect(reply, &QNetworkReply::readyRead, &tracer, [&, reply] {
      read += options.readAtMost == 0 ? reply->readAll() : reply->read(options.readAtMost);
    });
  }
  wait(reply);
  read += reply->readAll();
  tracer.body(read);
  tracer.state("end");
  delete reply;
}

void simple(const Make& make, const Options& options = {}) {
  QNetworkAccessManager manager;
  traceManager(manager);
  follow(make(manager), options);
}

QByteArray pattern(qsizetype size) {
  QByteArray bytes(size, '\0');
  for (qsizetype index = 0; index < size; ++index) {
    bytes[index] = static_cast<char>('a' + index % 23);
  }
  return bytes;
}

/// A device that gives its bytes in pieces, later, as a socket does.
class LateDevice : public QIODevice {
 public:
  explicit LateDevice(QByteArray bytes) : rest_(std::move(bytes)) {
    open(ReadOnly);
    QTimer::singleShot(20, this, [this] { give(); });
  }
  bool isSequential() const override { return true; }
  qint64 bytesAvailable() const override { return ready_.size() + QIODevice::bytesAvailable(); }
  bool atEnd() const override { return isOver_ && ready_.isEmpty() && QIODevice::atEnd(); }

 protected:
  qint64 readData(char* data, qint64 size) override {
    if (ready_.isEmpty()) {
      return isOver_ ? -1 : 0;
    }
    const qint64 count = qMin<qint64>(size, ready_.size());
    std::copy_n(ready_.constData(), count, data);
    ready_.remove(0, count);
    return count;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  void give() {
    ready_ += rest_.left(30'000);
    rest_.remove(0, 30'000);
    isOver_ = rest_.isEmpty();
    Q_EMIT readyRead();
    if (isOver_) {
      Q_EMIT readChannelFinished();
    } else {
      QTimer::singleShot(20, this, [this] { give(); });
    }
  }

  QByteArray rest_;
  QByteArray ready_;
  bool isOver_ = false;
};

QNetworkRequest with(QNetworkRequest request, QNetworkRequest::Attribute attribute,
                     const QVariant& value) {
  request.setAttribute(attribute, value);
  return request;
}

/// From the end of a pipe that another program writes into.
void uploadFromPipe() {
  QTemporaryFile file;
  if (!file.open()) {
    return;
  }
  file.write(pattern(65'537));
  file.flush();
  QProcess writer;
  writer.start("cat", {file.fileName()});
  simple([&](auto& manager) { return manager.post(request("/echo"), &writer); });
  writer.waitForFinished();
}

/// The same pipe as a file, which does not say when there is more to read, nor when there is no
/// more: the toolkit can send so many bytes as are announced, and no end is looked for.
void uploadFromPipeAsFile() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    return;
  }
  const QByteArray bytes = pattern(65'537);
  // More than a pipe holds: somebody else writes.
  std::unique_ptr<QThread> writer(QThread::create([end = ends[1], bytes] {
    qsizetype written = 0;
    while (written < bytes.size()) {
      const ssize_t count = write(end, bytes.constData() + written, size_t(bytes.size() - written));
      if (count <= 0) {
        break;
      }
      written += count;
    }
    close(end);
  }));
  writer->start();
  QFile pipe;
  if (!pipe.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
    return;
  }
  simple([&](auto& manager) {
    QNetworkRequest streaming =
        with(request("/echo"), QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    streaming.setHeader(QNetworkRequest::ContentLengthHeader, 65'537);
    return manager.post(streaming, &pipe);
  });
  writer->wait();
}

QNetworkReply* multipart(QNetworkAccessManager& manager) {
  auto* const parts = new QHttpMultiPart(QHttpMultiPart::FormDataType);
  parts->setBoundary("BoundaryThatIsTheSameInEveryRun");
  QHttpPart first;
  first.setHeader(QNetworkRequest::ContentDispositionHeader, "form-data; name=\"one\"");
  first.setBody("first part");
  parts->append(first);
  QHttpPart second;
  second.setHeader(QNetworkRequest::ContentDispositionHeader, "form-data; name=\"two\"");
  auto* const device = new QBuffer(parts);
  device->setData(pattern(100'000));
  device->open(QIODevice::ReadOnly);
  second.setBodyDevice(device);
  parts->append(second);
  QNetworkReply* const reply = manager.post(request("/echo"), parts);
  parts->setParent(reply);
  return reply;
}

QNetworkRequest withPolicy(const QString& path, int policy) {
  return with(request(path), QNetworkRequest::RedirectPolicyAttribute, policy);
}

/// Deletes the reply inside one of its signals.
void deleteInside(const char* signal, const QString& path) {
  QNetworkAccessManager manager;
  traceManager(manager);
  QPointer<QNetworkReply> reply = manager.get(request(path));
  Tracer tracer(reply);
  const auto remove = [&reply] { delete reply; };
  const QByteArray name = signal;
  if (name == "metaDataChanged") {
    QObject::connect(reply, &QNetworkReply::metaDataChanged, &tracer, remove);
  } else if (name == "readyRead") {
    QObject::connect(reply, &QNetworkReply::readyRead, &tracer, remove);
  } else if (name == "errorOccurred") {
    QObject::connect(reply, &QNetworkReply::errorOccurred, &tracer, remove);
  } else if (name == "finished") {
    // Not straight away: the manager itself still uses the reply behind this slot.
    QObject::connect(reply, &QNetworkReply::finished, &tracer, [&reply] { reply->deleteLater(); });
  }
  settle(reply);
  tracer.state("end");
}

void abortInside(const char* signal, const QString& path) {
  QNetworkAccessManager manager;
  traceManager(manager);
  std::unique_ptr<QNetworkReply> reply(manager.get(request(path)));
  Tracer tracer(reply.get());
  const auto abort = [&reply] {
    say("  abort:");
    reply->abort();
    say("  aborted.");
  };
  const QByteArray name = signal;
  if (name == "metaDataChanged") {
    QObject::connect(reply.get(), &QNetworkReply::metaDataChanged, &tracer, abort);
  } else if (name == "readyRead") {
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &tracer, abort);
  } else if (name == "finished") {
    QObject::connect(reply.get(), &QNetworkReply::finished, &tracer, abort);
  } else {
    abort();
  }
  settle(reply.get());
  tracer.body(reply->readAll());
  tracer.state("end");
}

/// The signals of a reply, each with a way to have something done in it.
std::vector<std::pair<const char*, std::function<void(QNetworkReply*, std::function<void()>)>>>
everySignal() {
  const auto in = [](auto signal) {
    return [signal](QNetworkReply* reply, std::function<void()> action) {
      QObject::connect(reply, signal, [action] { action(); });
    };
  };
  return {{"socketStartedConnecting", in(&QNetworkReply::socketStartedConnecting)},
          {"requestSent", in(&QNetworkReply::requestSent)},
          {"uploadProgress", in(&QNetworkReply::uploadProgress)},
          {"metaDataChanged", in(&QNetworkReply::metaDataChanged)},
          {"redirected", in(&QNetworkReply::redirected)},
          {"readyRead", in(&QNetworkReply::readyRead)},
          {"downloadProgress", in(&QNetworkReply::downloadProgress)},
          {"errorOccurred", in(&QNetworkReply::errorOccurred)},
          {"readChannelFinished", in(&QNetworkReply::readChannelFinished)},
          {"aboutToClose", in(&QNetworkReply::aboutToClose)},
          {"finished", in(&QNetworkReply::finished)}};
}

/// Does something in each signal in turn, with replies of several kinds. Writes what came of it.
void inEverySignal(const char* what, const std::function<void(QNetworkReply*)>& action) {
  for (const char* const path :
       {"/plain", "/redirect", "/loop", "/status?code=404&body=gone", "/failing"}) {
    for (const auto& [name, connect] : everySignal()) {
      QNetworkAccessManager manager;
      QNetworkRequest posted = request(path);
      posted.setMaximumRedirectsAllowed(2);
      QPointer<QNetworkReply> reply = manager.post(posted, QByteArray("body"));
      int times = 0;
      connect(reply, [&] {
        if (++times == 1) {
          action(reply);
        }
      });
      for (int turn = 0; turn < 1'000 && reply != nullptr && !reply->isFinished(); ++turn) {
        spin(1);
      }
      // Whatever else was on its way.
      spin(1);
      say(QString("  %1 in %2 of %3: %4, %5")
              .arg(what, name, path, times > 0 ? "done" : "never sent",
                   reply == nullptr ? QString("gone") : QString::number(int(reply->error()))));
      delete reply;
    }
  }
}

std::map<QString, std::function<void()>> scenarios() {
  std::map<QString, std::function<void()>> all;
  const auto add = [&all](const char* name, std::function<void()> run) {
    all[name] = std::move(run);
  };
  const auto get = [](const char* path, Options options = {}) {
    return [path, options] {
      simple([path](QNetworkAccessManager& manager) { return manager.get(request(path)); },
             options);
    };
  };
  add("get", get("/plain?a=1#top"));
  add("get-empty", get("/status?code=200"));
  add("accepted", get("/status?code=202"));
  add("head", [] { simple([](auto& manager) { return manager.head(request("/plain")); }); });
  add("post", [] {
    simple([](auto& manager) {
      QNetworkRequest post = request("/echo");
      post.setHeader(QNetworkRequest::ContentTypeHeader, "text/plain");
      return manager.post(post, QByteArray("some text"));
    });
  });
  add("post-nothing", [] {
    simple([](auto& manager) {
      QNetworkRequest post = request("/echo");
      post.setHeader(QNetworkRequest::ContentTypeHeader, "text/plain");
      return manager.post(post, QByteArray());
    });
  });
  add("put",
      [] { simple([](auto& manager) { return manager.put(request("/echo"), QByteArray("x")); }); });
  add("delete",
      [] { simple([](auto& manager) { return manager.deleteResource(request("/echo")); }); });
  add("custom", [] {
    simple([](auto& manager) {
      return manager.sendCustomRequest(request("/echo"), "PATCH", QByteArray("patch"));
    });
  });
  add("derived-manager", [] {
    OwnManager manager;
    traceManager(manager);
    follow(manager.get(request("/plain")));
  });
  add("plainly-derived-manager", [] {
    PlainlyDerivedManager manager;
    traceManager(manager);
    follow(manager.get(request("/plain")));
  });
  add("chunked", get("/chunked"));
  add("gzip", get("/gzip"));
  add("partial-reads", get("/bytes?size=3000", {.readInSlots = true, .readAtMost = 1'000}));
  add("large", get("/bytes?size=5000000", {.loose = true, .readInSlots = true}));
  add("large-partial",
      get("/bytes?size=500000", {.loose = true, .readInSlots = true, .readAtMost = 777}));
  add("large-unread", get("/bytes?size=5000000", {.loose = true}));
  add("trickle", get("/trickle", {.loose = true}));
  add("trickle-read", get("/trickle", {.loose = true, .readInSlots = true}));
  add("204", get("/status?code=204"));
  add("404", get("/status?code=404&body=gone"));
  add("500", get("/status?code=500&body=oops"));
  add("401", get("/auth"));
  add("407", get("/status?code=407&body=who"));
  add("302-other-host-policy", [] {
    simple([](auto& manager) {
      return manager.get(withPolicy("/redirect?code=302", QNetworkRequest::ManualRedirectPolicy));
    });
  });
  add("305-other-host-policy", [] {
    simple([](auto& manager) {
      return manager.get(
          withPolicy("/status?code=305&location=/plain", QNetworkRequest::ManualRedirectPolicy));
    });
  });
  add("302", get("/redirect?code=302"));
  add("301", get("/redirect?code=301&times=3"));
  add("307-post", [] {
    simple([](auto& manager) {
      return manager.post(request("/status?code=307&location=/echo"), QByteArray("again"));
    });
  });
  add("303-post", [] {
    simple([](auto& manager) {
      return manager.post(request("/status?code=303&location=/plain"), QByteArray("once"));
    });
  });
  add("same-origin-redirect", [] {
    simple([](auto& manager) {
      return manager.get(withPolicy("/redirect", QNetworkRequest::SameOriginRedirectPolicy));
    });
  });
  add("user-verified-redirect", [] {
    QNetworkAccessManager manager;
    traceManager(manager);
    QNetworkReply* const reply =
        manager.get(withPolicy("/redirect", QNetworkRequest::UserVerifiedRedirectPolicy));
    QObject::connect(reply, &QNetworkReply::redirected, reply,
                     [reply] { Q_EMIT reply->redirectAllowed(); });
    follow(reply);
  });
  add("redirect-loop", [] {
    simple([](auto& manager) {
      QNetworkRequest looping = request("/loop");
      looping.setMaximumRedirectsAllowed(3);
      return manager.get(looping);
    });
  });
  add("redirect-to-refusal", get("/status?code=302&location=http://127.0.0.1:1/"));
  add("redirect-to-nowhere", get("/status?code=302&location=ftp://nowhere.test/"));
  add("authentication", [] {
    QNetworkAccessManager manager;
    traceManager(manager);
    QNetworkReply* reply = nullptr;
    QObject::connect(&manager, &QNetworkAccessManager::authenticationRequired,
                     [&reply](QNetworkReply* asking, QAuthenticator* authenticator) {
                       say(QString("  it is the reply: %1").arg(asking == reply));
                       authenticator->setUser("user");
                       authenticator->setPassword("secret");
                     });
    reply = manager.get(request("/auth"));
    follow(reply);
  });
  add("cookies", [] {
    QNetworkAccessManager manager;
    traceManager(manager);
    follow(manager.get(request("/cookie")));
    follow(manager.get(request("/cookie")));
    for (const QNetworkCookie& cookie : manager.cookieJar()->cookiesForUrl(QUrl(base))) {
      say("  cookie " + cookie.toRawForm());
    }
  });
  add("cache", [] {
    QTemporaryDir directory;
    QNetworkAccessManager manager;
    traceManager(manager);
    auto* const cache = new QNetworkDiskCache(&manager);
    cache->setCacheDirectory(directory.path());
    manager.setCache(cache);
    follow(manager.get(request("/cached")));
    follow(manager.get(request("/cached")));
    follow(manager.get(with(request("/cached"), QNetworkRequest::CacheLoadControlAttribute,
                            QNetworkRequest::AlwaysCache)));
  });
  add("refused", [] {
    simple([](auto& manager) { return manager.get(QNetworkRequest(QUrl("http://127.0.0.1:1/"))); });
  });
  add("no-such-host", [] {
    simple([](auto& manager) {
      return manager.get(QNetworkRequest(QUrl("http://nowhere.invalid/")));
    });
  });
  add("unknown-scheme", [] {
    simple([](auto& manager) { return manager.get(QNetworkRequest(QUrl("nothing://x/"))); });
  });
  add("data-scheme", [] {
    simple(
        [](auto& manager) { return manager.get(QNetworkRequest(QUrl("data:text/plain,hello"))); });
  });
  add("file-scheme", [] {
    simple([](auto& manager) { return manager.get(QNetworkRequest(QUrl("file:///etc/hostname"))); },
           {.loose = true});
  });
  add("reset", get("/reset"));
  add("early-close", [] {
    simple([](auto& manager) { return manager.post(request("/early-close"), QByteArray("x")); });
  });
  add("timeout", [] {
    simple([](auto& manager) {
      QNetworkRequest slow = request("/slow?seconds=3");
      slow.setTransferTimeout(300);
      return manager.get(slow);
    });
  });
  add("abort-at-once", [] { abortInside("", "/plain"); });
  add("abort-in-meta-data", [] { abortInside("metaDataChanged", "/plain"); });
  add("abort-in-ready-read", [] { abortInside("readyRead", "/plain"); });
  add("abort-in-ready-read-of-chunks", [] { abortInside("readyRead", "/chunked"); });
  add("abort-in-finished", [] { abortInside("finished", "/plain"); });
  add("abort-while-waiting", [] {
    QNetworkAccessManager manager;
    traceManager(manager);
    std::unique_ptr<QNetworkReply> reply(manager.get(request("/slow?seconds=2")));
    Tracer tracer(reply.get());
    spin(200);
    reply->abort();
    tracer.state("end");
  });
  add("close-in-ready-read", [] {
    QNetworkAccessManager manager;
    traceManager(manager);
    std::unique_ptr<QNetworkReply> reply(manager.get(request("/plain")));
    Tracer tracer(reply.get());
    QObject::connect(reply.get(), &QNetworkReply::readyRead, [&reply] { reply->close(); });
    settle(reply.get());
    tracer.state("end");
  });
  add("delete-at-once", [] {
    QNetworkAccessManager manager;
    traceManager(manager);
    delete manager.get(request("/plain"));
    spin(300);
  });
  add("delete-in-meta-data", [] { deleteInside("metaDataChanged", "/plain"); });
  add("delete-in-ready-read", [] { deleteInside("readyRead", "/plain"); });
  add("delete-in-error", [] { deleteInside("errorOccurred", "/status?code=404&body=x"); });
  add("delete-in-finished", [] { deleteInside("finished", "/plain"); });
  add("mocked-delete-everywhere",
      [] { inEverySignal("deleted", [](QNetworkReply* reply) { delete reply; }); });
  add("abort-everywhere",
      [] { inEverySignal("aborted", [](QNetworkReply* reply) { reply->abort(); }); });
  add("loop-everywhere", [] { inEverySignal("looped", [](QNetworkReply*) { spin(5); }); });
  add("delete-manager", [] {
    auto manager = std::make_unique<QNetworkAccessManager>();
    traceManager(*manager);
    QNetworkReply* const reply = manager->get(request("/slow?seconds=1"));
    Tracer tracer(reply);
    spin(100);
    manager.reset();
    tracer.state("end");
  });
  add("delete-manager-in-finished", [] {
    auto* const manager = new QNetworkAccessManager;
    traceManager(*manager);
    QPointer<QNetworkReply> reply = manager->get(request("/redirect"));
    Tracer tracer(reply);
    QObject::connect(reply, &QNetworkReply::finished, manager, &QObject::deleteLater);
    settle(reply);
    say(QString("  reply gone: %1").arg(reply == nullptr));
  });
  add("disconnected", [] {
    QNetworkAccessManager manager;
    std::unique_ptr<QNetworkReply> reply(manager.get(request("/plain")));
    reply->disconnect();
    settle(reply.get());
    Tracer tracer(reply.get());
    tracer.body(reply->readAll());
  });
  add("read-buffer-limit", [] {
    QNetworkAccessManager manager;
    traceManager(manager);
    QNetworkReply* const reply = manager.get(request("/bytes?size=300000"));
    reply->setReadBufferSize(1'000);
    Tracer tracer(reply, true);
    // Nothing is read for a while: no more than the limit may come in.
    spin(300);
    say(QString("  at most the limit: %1").arg(reply->bytesAvailable() <= 1'000));
    QByteArray read;
    QObject::connect(reply, &QNetworkReply::readyRead, &tracer, [&] { read += reply->readAll(); });
    read += reply->readAll();
    wait(reply);
    read += reply->readAll();
    tracer.body(read);
    delete reply;
  });
  add("synchronous", [] {
    simple([](auto& manager) {
      return manager.get(
          with(request("/plain"), QNetworkRequest::SynchronousRequestAttribute, true));
    });
  });
  add("synchronous-post", [] {
    simple([](auto& manager) {
      return manager.post(
          with(request("/echo"), QNetworkRequest::SynchronousRequestAttribute, true),
          QByteArray("sync"));
    });
  });
  add("synchronous-refused", [] {
    simple([](auto& manager) {
      return manager.get(with(QNetworkRequest(QUrl("http://127.0.0.1:1/")),
                              QNetworkRequest::SynchronousRequestAttribute, true));
    });
  });
  add("late-connect", [] {
    QNetworkAccessManager manager;
    QNetworkReply* const reply = manager.get(request("/plain"));
    settle(reply);
    follow(reply);
  });
  add("never-read", [] {
    QNetworkAccessManager manager;
    traceManager(manager);
    QNetworkReply* const reply = manager.get(request("/plain"));
    Tracer tracer(reply);
    wait(reply);
    delete reply;
  });
  add("auto-delete", [] {
    QNetworkAccessManager manager;
    manager.setAutoDeleteReplies(true);
    traceManager(manager);
    QNetworkReply* const reply = manager.get(request("/plain"));
    Tracer tracer(reply);
    wait(reply);
    spin(50);
  });
  add("upload-memory", [] {
    simple([](auto& manager) { return manager.post(request("/echo"), pattern(65'537)); });
  });
  add("upload-file", [] {
    QTemporaryFile file;
    if (!file.open()) {
      return;
    }
    file.write(pattern(65'537));
    file.flush();
    file.seek(0);
    simple([&](auto& manager) { return manager.post(request("/echo"), &file); });
    say(QString("  file stands at %1").arg(file.pos()));
  });
  add("upload-file-from-the-middle", [] {
    QTemporaryFile file;
    if (!file.open()) {
      return;
    }
    file.write(pattern(65'537));
    file.flush();
    file.seek(1'000);
    simple([&](auto& manager) { return manager.post(request("/echo"), &file); });
  });
  add("upload-pipe", uploadFromPipe);
  add("upload-pipe-as-file", uploadFromPipeAsFile);
  add("upload-late-device", [] {
    LateDevice device(pattern(65'537));
    simple([&](auto& manager) { return manager.post(request("/echo"), &device); });
  });
  add("upload-unbuffered-late-device", [] {
    LateDevice device(pattern(65'537));
    simple([&](auto& manager) {
      QNetworkRequest streaming =
          with(request("/echo"), QNetworkRequest::DoNotBufferUploadDataAttribute, true);
      streaming.setHeader(QNetworkRequest::ContentLengthHeader, 65'537);
      return manager.post(streaming, &device);
    });
  });
  add("upload-multipart", [] { simple(multipart); });
  add("upload-closed-device", [] {
    QBuffer device;
    device.setData("x");
    simple([&](auto& manager) { return manager.post(request("/echo"), &device); });
  });
  add("parallel", [] {
    QNetworkAccessManager manager;
    std::vector<ParallelReply> replies(100);
    int left = 100;
    QEventLoop loop;
    for (int number = 0; number < 100; ++number) {
      ParallelReply& reply = replies[size_t(number)];
      reply.watch(manager.get(request(QString("/bytes?size=%1").arg(number * 100))));
      QObject::connect(reply.reply(), &QNetworkReply::finished, [&left, &loop] {
        if (--left == 0) {
          loop.quit();
        }
      });
    }
    QTimer::singleShot(timeLimit, &loop, &QEventLoop::quit);
    loop.exec();
    // In the order in which they were made: the one in which they end is a matter of chance.
    for (const ParallelReply& reply : replies) {
      reply.write();
    }
  });
  const auto secure = [](QNetworkAccessManager& manager) {
    return manager.get(QNetworkRequest(QUrl(qEnvironmentVariable("TRACE_HOST_SECURE") + "/plain")));
  };
  add("tls-unknown-certificate", [secure] { simple(secure); });
  add("tls-accepted-by-reply", [secure] {
    simple([secure](QNetworkAccessManager& manager) {
      QNetworkReply* const reply = secure(manager);
      QObject::connect(reply, &QNetworkReply::sslErrors, reply, [reply] {
        say("  ignoreSslErrors");
        reply->ignoreSslErrors();
      });
      return reply;
    });
  });
  add("redirect-to-unknown-certificate", [] {
    simple([](QNetworkAccessManager& manager) {
      QNetworkReply* const reply = manager.get(request("/redirect"));
      QObject::connect(reply, &QNetworkReply::sslErrors, reply, [reply] {
        say("  ignoreSslErrors");
        reply->ignoreSslErrors();
      });
      return reply;
    });
  });
  add("tls-accepted-by-manager", [secure] {
    simple([secure](QNetworkAccessManager& manager) {
      QObject::connect(&manager, &QNetworkAccessManager::sslErrors,
                       [](QNetworkReply* reply) { reply->ignoreSslErrors(); });
      return secure(manager);
    });
  });
  add("tls-accepted-beforehand", [secure] {
    simple([secure](QNetworkAccessManager& manager) {
      QNetworkReply* const reply = secure(manager);
      reply->ignoreSslErrors();
      return reply;
    });
  });
  add("other-thread", [] {
    std::unique_ptr<QThread> thread(QThread::create(
        [] { simple([](auto& manager) { return manager.get(request("/plain")); }); }));
    thread->start();
    thread->wait();
  });
  add("gigabyte", [] {
    QNetworkAccessManager manager;
    QNetworkReply* const reply = manager.get(request("/bytes?size=1073741824"));
    // Without a limit the toolkit takes in whatever comes faster than it is read.
    reply->setReadBufferSize(4'000'000);
    qint64 received = 0;
    QObject::connect(reply, &QNetworkReply::readyRead,
                     [&] { received += reply->readAll().size(); });
    wait(reply);
    say(QString("  received %1").arg(received + reply->readAll().size()));
    delete reply;
  });
  add("load", [] {
    std::atomic<int> wrong = 0;
    std::vector<std::unique_ptr<QThread>> threads;
    for (int thread = 0; thread < 4; ++thread) {
      threads.emplace_back(QThread::create([&wrong, thread] {
        QNetworkAccessManager manager;
        for (int turn = 0; turn < 250; ++turn) {
          const int size = thread * 1'000 + turn;
          QNetworkReply* const reply = manager.get(request(QString("/bytes?size=%1").arg(size)));
          wait(reply);
          wrong +=
              reply->error() == QNetworkReply::NoError && reply->readAll().size() == size ? 0 : 1;
          delete reply;
        }
      }));
      threads.back()->start();
    }
    for (const std::unique_ptr<QThread>& thread : threads) {
      while (!thread->wait(1)) {
        // The main thread's own work goes on: it carries out what a companion sends.
        spin(10);
      }
    }
    say(QString("  wrong %1").arg(wrong.load()));
  });
  return all;
}

/// Threads that make one request after the other, each numbered, from before there is an event
/// loop. Each of them ends after so many, or when it is told to.
class SteadyRequests {
 public:
  SteadyRequests(int threadCount, int count) {
    for (int number = 0; number < threadCount; ++number) {
      threads_.emplace_back(QThread::create([this, number, count] { run(number, count); }));
      threads_.back()->start();
    }
  }
  ~SteadyRequests() { waitForEnd(); }
  SteadyRequests(const SteadyRequests&) = delete;
  SteadyRequests& operator=(const SteadyRequests&) = delete;

  /// Returns when the last answers are there.
  void stop() {
    isOver_ = true;
    waitForEnd();
  }

 private:
  void waitForEnd() {
    for (const std::unique_ptr<QThread>& thread : threads_) {
      while (!thread->wait(1)) {
        // The main thread's own work goes on.
        spin(10);
      }
    }
  }

  void run(int thread, int count) {
    QNetworkAccessManager manager;
    for (int number = 1; number <= count && !isOver_; ++number) {
      QNetworkReply* const reply = manager.get(
          request(QString("/bytes?size=1&thread=%1&number=%2").arg(thread).arg(number)));
      wait(reply);
      delete reply;
      QThread::msleep(10);
    }
  }

  std::atomic<bool> isOver_ = false;
  std::vector<std::unique_ptr<QThread>> threads_;
};

/// Takes the deep links of this application's own scheme.
class LinkHandler : public QObject {
  Q_OBJECT

 public:
  LinkHandler() { QDesktopServices::setUrlHandler("shop", this, "open"); }
  ~LinkHandler() override { QDesktopServices::unsetUrlHandler("shop"); }
  LinkHandler(const LinkHandler&) = delete;
  LinkHandler& operator=(const LinkHandler&) = delete;

  Q_INVOKABLE void open(const QUrl& url) { opened_.append(url.toString(QUrl::FullyEncoded)); }

  void sayOpened() const {
    for (const QString& url : opened_) {
      say("  " + url);
    }
  }

 private:
  QStringList opened_;
};

/// The next line of standard input; the event loop runs while it is waited for. Null at the end.
QString nextLine() {
  QByteArray line;
  bool isOver = false;
  QEventLoop loop;
  std::unique_ptr<QThread> reader(QThread::create([&] {
    for (int letter = std::getchar(); letter != '\n'; letter = std::getchar()) {
      if (letter == EOF) {
        isOver = true;
        return;
      }
      line += static_cast<char>(letter);
    }
  }));
  QObject::connect(reader.get(), &QThread::finished, &loop, &QEventLoop::quit);
  reader->start();
  loop.exec();
  reader->wait();
  return isOver ? QString() : QString::fromUtf8(line);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  QGuiApplication application(argumentCount, arguments);
  const QStringList words = application.arguments();
  if (words.size() != 2) {
    return 2;
  }
  base = words[1];
  const auto all = scenarios();
  const LinkHandler links;
  std::unique_ptr<SteadyRequests> steady;
  if (const int count = qEnvironmentVariableIntValue("TRACE_HOST_STEADY_REQUESTS"); count > 0) {
    const int threads = qEnvironmentVariableIntValue("TRACE_HOST_STEADY_THREADS");
    steady = std::make_unique<SteadyRequests>(threads > 0 ? threads : 1, count);
  }
  for (const auto& [name, run] : all) {
    say(name);
  }
  say("== ready");
  std::fflush(stdout);
  for (QString name = nextLine(); !name.isNull(); name = nextLine()) {
    if (const auto scenario = all.find(name); scenario != all.end()) {
      scenario->second();
    } else if (name == "opened") {
      links.sayOpened();
    } else if (name == "stop-steady" && steady != nullptr) {
      steady->stop();
    } else {
      say("no such scenario");
    }
    say("== done");
    std::fflush(stdout);
  }
  return 0;
}

#include "trace_host.moc"
