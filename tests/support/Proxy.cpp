// SPDX-License-Identifier: MIT
#include "tests/support/Proxy.h"

#include <QFile>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <deque>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace testing_support {
namespace {

using Clock = std::chrono::steady_clock;

sockaddr_un AddressOf(const QString& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const QByteArray name = QFile::encodeName(path);
  std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()) + 1);
  return address;
}

int ConnectTo(const QString& path) {
  const int line = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_un address = AddressOf(path);
  if (::connect(line, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return line;
  ::close(line);
  return -1;
}

void SendAll(int line, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(line, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
}

// Delayed data, each piece with the time of its arrival.
using Travelling = std::deque<std::pair<Clock::time_point, std::string>>;

void Deliver(Travelling& bytes, int line) {
  while (!bytes.empty() && bytes.front().first <= Clock::now()) {
    SendAll(line, bytes.front().second);
    bytes.pop_front();
  }
}

}  // namespace

Proxy::Proxy(const QString& serverSocketFolder, std::chrono::microseconds delayEachWay)
    : serverSocket_(serverSocketFolder + u"/.s.PGSQL.5432"), delay_(delayEachWay) {
  const QString path = folder_.filePath(u".s.PGSQL.5432"_s);
  listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_un address = AddressOf(path);
  if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener_, 128) != 0) {
    throw std::runtime_error("proxy: no socket");
  }
  accepting_ = std::thread([this] { Accept(); });
}

Proxy::~Proxy() {
  ending_ = true;
  accepting_.join();
  for (std::thread& line : lines_)
    line.join();
  ::close(listener_);
}

void Proxy::CutLines(Cut cut) {
  const std::lock_guard lock(mutex_);
  cut_ = std::move(cut);
  forwardsBeforeTheCut_ = true;
}

void Proxy::CutLinesBefore(Cut cut) {
  const std::lock_guard lock(mutex_);
  cut_ = std::move(cut);
  forwardsBeforeTheCut_ = false;
}

void Proxy::Accept() {
  while (!ending_) {
    pollfd waiting{listener_, POLLIN, 0};
    if (::poll(&waiting, 1, 10) <= 0) continue;
    const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) continue;
    ++connections_;
    lines_.emplace_back([this, client] { Serve(client); });
  }
}

void Proxy::Serve(int client) {
  const int server = ConnectTo(serverSocket_);
  Travelling toServer;
  Travelling toClient;
  std::array<char, 65536> buffer{};
  bool clientSpokeLast = false;
  bool cutting = false;
  while (server >= 0 && !ending_) {
    int wait = 10;
    for (const Travelling* way : {&toServer, &toClient}) {
      if (way->empty()) continue;
      const auto left = std::chrono::duration_cast<std::chrono::microseconds>(way->front().first - Clock::now());
      wait = left <= 500us ? 0 : 1;
    }
    std::array<pollfd, 2> lines{pollfd{client, POLLIN, 0}, pollfd{server, POLLIN, 0}};
    if (::poll(lines.data(), lines.size(), wait) > 0) {
      if (lines[0].revents != 0) {
        const ssize_t size = ::recv(client, buffer.data(), buffer.size(), 0);
        if (size <= 0) break;
        const std::string_view said(buffer.data(), static_cast<std::size_t>(size));
        const std::lock_guard lock(mutex_);
        cutting = cut_ && cut_(said);
        if (!cutting || forwardsBeforeTheCut_) toServer.emplace_back(Clock::now() + delay_, said);
        if (!clientSpokeLast) ++roundTrips_;
        clientSpokeLast = true;
      }
      if (!cutting && lines[1].revents != 0) {
        const ssize_t size = ::recv(server, buffer.data(), buffer.size(), 0);
        if (size <= 0) break;
        toClient.emplace_back(Clock::now() + delay_, std::string(buffer.data(), static_cast<std::size_t>(size)));
        clientSpokeLast = false;
      }
    }
    Deliver(toServer, server);
    Deliver(toClient, client);
    if (cutting && toServer.empty()) {
      ++cuts_;
      break;
    }
  }
  for (const auto& [when, bytes] : toClient)
    SendAll(client, bytes);
  ::close(client);
  if (server >= 0) ::close(server);
}

}  // namespace testing_support
