// A process that serves and announces as a host does, without a toolkit: what the tests of
// discovery, of other users and of forked children look at. Prints its port, then one line an
// event, until its standard input ends. Arguments: the service's name, then optional words:
//   fork     forks once the listener is ready, and the child lives on without the parent's work
//   random   counts on its own sequence of random numbers, and says the first one when it ends
//   exit=N   leaves by `exit` with this code once the listener is ready
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "platforms/linux/loopback_network.h"
#include "probe/platform/connection.h"
#include "probe/platform/listener.h"

namespace {

using namespace tarnix::platform;

void say(const std::string& line) {
  const std::string text = line + "\n";
  static_cast<void>(!write(STDOUT_FILENO, text.data(), text.size()));
}

void serve(const std::shared_ptr<Connection>& connection) {
  connection->receive([connection](std::string bytes, std::optional<NetworkError> error) {
    if (error) {
      say("lost");
      connection->cancel();
      return;
    }
    connection->send(std::move(bytes), [](std::optional<NetworkError>) {});
    serve(connection);
  });
}

}  // namespace

int main(int argumentCount, char** arguments) {
  bool forks = false;
  bool isRandom = false;
  int exitCode = -1;
  for (int index = 2; index < argumentCount; ++index) {
    forks |= std::strcmp(arguments[index], "fork") == 0;
    isRandom |= std::strcmp(arguments[index], "random") == 0;
    std::sscanf(arguments[index], "exit=%d", &exitCode);
  }
  std::srand(1);
  ListenerResult result = tarnix::linux_platform::LoopbackNetwork::shared().makeListener({});
  if (!result.listener) {
    say("no listener: " + result.error);
    return 1;
  }
  Listener& listener = *result.listener;
  listener.setService({argumentCount > 1 ? arguments[1] : "a host", "_tarnix._tcp"});
  listener.setStateHandler([&](ListenerState state) {
    if (state == ListenerState::ready) {
      say("port " + std::to_string(listener.port()));
    }
  });
  listener.setNewConnectionHandler([](std::shared_ptr<Connection> connection) {
    say("connection");
    connection->start();
    serve(connection);
  });
  listener.start();
  if (exitCode >= 0) {
    usleep(20'000);
    std::exit(exitCode);
  }
  if (forks) {
    usleep(200'000);
    const pid_t child = fork();
    if (child == 0) {
      // Whatever a forked child does with what it inherited must come to nothing.
      listener.cancel();
      result.listener.reset();
      say("child lives");
      pause();
      std::exit(0);
    }
    say("child " + std::to_string(child));
  }
  char byte = 0;
  while (read(STDIN_FILENO, &byte, 1) > 0) {
  }
  if (isRandom) {
    say("random " + std::to_string(std::rand()));
  }
  return 0;
}
