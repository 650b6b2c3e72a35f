// A small HTTP/1.1 server on loopback that costs next to nothing, so that what is measured is the
// client. Prints its port, and serves until its standard input ends. By path: /small has a body of
// 256 bytes, /record one of 4,096, /bulk/N one of N bytes.
#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

namespace {

bool sendAll(int peer, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(peer, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

std::uint64_t numberBehind(std::string_view text, std::string_view name) {
  const std::size_t place = text.find(name);
  return place == std::string_view::npos
             ? 0
             : std::strtoull(text.data() + place + name.size(), nullptr, 10);
}

bool answer(int peer, std::string_view head) {
  static const std::string block(65'536, 'x');
  std::uint64_t size = 256;
  if (head.find(" /record") != std::string_view::npos) {
    size = 4096;
  } else if (head.find(" /bulk/") != std::string_view::npos) {
    size = numberBehind(head, " /bulk/");
  }
  std::string text =
      "HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\nContent-Length: " +
      std::to_string(size) + "\r\n\r\n";
  const std::uint64_t first = std::min<std::uint64_t>(size, block.size());
  text.append(block, 0, first);
  bool isOpen = sendAll(peer, text);
  for (size -= first; isOpen && size > 0;) {
    const std::uint64_t next = std::min<std::uint64_t>(size, block.size());
    isOpen = sendAll(peer, std::string_view(block).substr(0, next));
    size -= next;
  }
  return isOpen;
}

void serve(int peer) {
  const int on = 1;
  setsockopt(peer, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  std::string input;
  std::string buffer(65'536, '\0');
  while (true) {
    const std::size_t end = input.find("\r\n\r\n");
    if (end != std::string::npos) {
      const std::string head = input.substr(0, end + 4);
      const std::size_t whole = head.size() + numberBehind(head, "ontent-Length: ");
      if (input.size() >= whole) {
        input.erase(0, whole);
        if (!answer(peer, head)) {
          break;
        }
        continue;
      }
    }
    const ssize_t count = recv(peer, buffer.data(), buffer.size(), 0);
    if (count <= 0) {
      break;
    }
    input.append(buffer, 0, static_cast<std::size_t>(count));
  }
  close(peer);
}

}  // namespace

int main() {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  if (bind(listener, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
      listen(listener, 64) != 0 ||
      getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    std::perror("cannot listen");
    return 1;
  }
  std::printf("%d\n", ntohs(address.sin_port));
  std::fflush(stdout);
  std::thread([listener] {
    while (true) {
      const int peer = accept(listener, nullptr, nullptr);
      if (peer >= 0) {
        std::thread(serve, peer).detach();
      }
    }
  }).detach();
  while (std::getchar() != EOF) {
  }
  std::_Exit(0);
}
