// An application that writes log lines when it is told to: prints "ready", and for each line of
// standard input that holds a number of threads and a number of lines it writes so many to standard
// error, from threads of its own, and prints how many nanoseconds that took.
#include <unistd.h>

#include <QGuiApplication>
#include <QRasterWindow>
#include <chrono>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

void writeLines(long count) {
  for (long number = 0; number < count; ++number) {
    const std::string line = "[info] bench.writer: line " + std::to_string(number) + " of a log\n";
    static_cast<void>(!::write(STDERR_FILENO, line.data(), line.size()));
  }
}

void serve() {
  std::cout << "ready" << std::endl;
  long threadCount = 0;
  long lineCount = 0;
  while (std::cin >> threadCount >> lineCount) {
    const auto begin = std::chrono::steady_clock::now();
    std::vector<std::thread> threads;
    for (long index = 0; index < threadCount; ++index) {
      threads.emplace_back(writeLines, lineCount / threadCount);
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    const auto end = std::chrono::steady_clock::now();
    std::cout << std::chrono::nanoseconds(end - begin).count() << std::endl;
  }
  QMetaObject::invokeMethod(qApp, [] { QGuiApplication::quit(); });
}

}  // namespace

int main(int argumentCount, char** arguments) {
  QGuiApplication application(argumentCount, arguments);
  QRasterWindow window;
  window.show();
  std::thread server(serve);
  const int result = QGuiApplication::exec();
  server.join();
  return result;
}
