// An application that comes to a bad end. Arguments: its identifier, how it ends, and optionally
// where: "main" (default), "slot", "thread", "qthread", "exit" (a destructor that runs at exit),
// "child" (a forked one, whose way of ending becomes the exit code) or "program" (the same in this
// program started anew, which begins at once). It begins once a line arrives on standard input.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QRasterWindow>
#include <QThread>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

namespace shop {

/// Without a base and without words.
struct EmptyBasket {};

/// Breaks what `std::exception` promises, so that the runtime crashes when it asks.
class Speechless : public std::exception {
 public:
  const char* what() const noexcept override { return nullptr; }
};

class PaymentRefused : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace shop

namespace {

volatile int zero = 0;
int* volatile nowhere = nullptr;

[[gnu::noinline]] void writeNowhere() { *nowhere = 1; }

void (*volatile noFunction)() = nullptr;

[[gnu::noinline]] void callNothing() {
  noFunction();
  zero = 0;
}

[[gnu::noinline]] int divideByZero() { return 1'000 / zero; }

[[gnu::noinline]] void executeNonsense() { __builtin_trap(); }

[[gnu::noinline]] void readBeyondTheFile() {
  char path[] = "/tmp/crash_host_XXXXXX";
  const int file = ::mkstemp(path);
  ::unlink(path);
  const volatile char* const page =
      static_cast<const char*>(::mmap(nullptr, 4'096, PROT_READ, MAP_SHARED, file, 0));
  zero = page[0];
}

[[gnu::noinline]] int overflow(int depth) {
  volatile char space[1'024];
  space[0] = static_cast<char>(depth);
  const int result = depth < 0 ? 0 : overflow(depth + 1);
  return result + space[0];
}

/// The allocator notices, and aborts with its own lock held.
[[gnu::noinline]] void corruptTheHeap() {
  // A thread's first block lies before the rest of its heap.
  static char* volatile block = nullptr;
  block = static_cast<char*>(std::malloc(2'000));
  std::memset(block + 2'000, 'A', 64);
  block = static_cast<char*>(std::malloc(4'000));
}

[[gnu::noinline]] void refusePayment() { throw shop::PaymentRefused("card expired"); }

void throwWhereNothingMayBeThrown() noexcept { refusePayment(); }

const std::map<std::string, std::function<void()>>& ends() {
  static const std::map<std::string, std::function<void()>> all = {
      {"segv", writeNowhere},
      {"fpe", [] { zero = divideByZero(); }},
      {"ill", executeNonsense},
      {"bus", readBeyondTheFile},
      {"abort", [] { std::abort(); }},
      {"terminate", [] { std::terminate(); }},
      {"overflow", [] { zero = overflow(1); }},
      {"heap", corruptTheHeap},
      {"exception", refusePayment},
      {"noexcept", throwWhereNothingMayBeThrown},
      {"empty", [] { throw shop::EmptyBasket(); }},
      {"exceptions",
       [] {
         for (int count = 0; count < 8; ++count) {
           std::thread(refusePayment).detach();
         }
       }},
      {"speechless", [] { throw shop::Speechless(); }},
      {"call", callNothing},
      {"text", [] { throw "just text"; }},
      {"raise", [] {
         ::raise(SIGFPE);
         std::cout << "alive" << std::endl;
         std::_Exit(0);
       }}};
  return all;
}

class EndsBadly {
 public:
  ~EndsBadly() {
    if (!end.empty()) {
      ends().at(end)();
    }
  }
  std::string end;
};

EndsBadly atExit;

/// In a copy of this process, or in this program started anew. Ends as the child did.
void endInAChild(const std::string& end, bool isProgram) {
  const pid_t child = ::fork();
  if (child == 0 && isProgram) {
    ::execl("/proc/self/exe", "child", "no identifier", end.c_str(), "at once", nullptr);
    std::_Exit(1);
  }
  if (child == 0) {
    ends().at(end)();
    std::_Exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  std::_Exit(WIFSIGNALED(status) ? WTERMSIG(status) : 0);
}

void perform(const std::string& end, const std::string& place) {
  if (place == "slot") {
    QTimer::singleShot(0, qApp, ends().at(end));
  } else if (place == "thread") {
    std::thread(ends().at(end)).detach();
  } else if (place == "qthread") {
    QThread::create(ends().at(end))->start();
  } else if (place == "child" || place == "program") {
    endInAChild(end, place == "program");
  } else if (place == "exit") {
    atExit.end = end;
    QGuiApplication::quit();
  } else {
    ends().at(end)();
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount > 3 && std::string_view(arguments[3]) == "at once") {
    ends().at(arguments[2])();
    return 0;
  }
  QGuiApplication application(argumentCount, arguments);
  QGuiApplication::setDesktopFileName(QString::fromLocal8Bit(arguments[1]));
  const std::string end = arguments[2];
  const std::string place = argumentCount > 3 ? arguments[3] : "main";
  QRasterWindow window;
  window.show();
  std::thread starter([&] {
    std::string line;
    std::getline(std::cin, line);
    if (place == "thread" || place == "qthread") {
      perform(end, place);
    } else {
      QMetaObject::invokeMethod(qApp, [&] { perform(end, place); });
    }
  });
  starter.detach();
  return QGuiApplication::exec();
}
