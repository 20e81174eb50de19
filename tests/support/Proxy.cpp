// SPDX-License-Identifier: MIT
#include "tests/support/Proxy.h"

#include <QFile>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
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

// Milliseconds until the first data arrives, at most 10.
int WaitFor(const Travelling& first, const Travelling& second) {
  int wait = 10;
  for (const Travelling* way : {&first, &second}) {
    if (!way->empty()) wait = std::min(wait, way->front().first - Clock::now() <= 500us ? 0 : 1);
  }
  return wait;
}

}  // namespace

struct Proxy::Line {
  int client;
  int server;
  Travelling toServer{};
  Travelling toClient{};
  std::array<char, 65536> buffer{};
  bool clientSpokeLast = false;
  bool cutting = false;
};

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

bool Proxy::TakeFromClient(Line& line) {
  const ssize_t size = ::recv(line.client, line.buffer.data(), line.buffer.size(), 0);
  if (size <= 0) return false;
  const std::string_view said(line.buffer.data(), static_cast<std::size_t>(size));
  const std::lock_guard lock(mutex_);
  line.cutting = cut_ && cut_(said);
  if (!line.cutting || forwardsBeforeTheCut_) line.toServer.emplace_back(Clock::now() + delay_, said);
  if (!line.clientSpokeLast) ++roundTrips_;
  line.clientSpokeLast = true;
  return true;
}

bool Proxy::TakeFromServer(Line& line) {
  const ssize_t size = ::recv(line.server, line.buffer.data(), line.buffer.size(), 0);
  if (size <= 0) return false;
  line.toClient.emplace_back(Clock::now() + delay_, std::string(line.buffer.data(), static_cast<std::size_t>(size)));
  line.clientSpokeLast = false;
  return true;
}

void Proxy::Serve(int client) {
  Line line{.client = client, .server = ConnectTo(serverSocket_)};
  while (line.server >= 0 && !ending_) {
    std::array<pollfd, 2> ends{pollfd{client, POLLIN, 0}, pollfd{line.server, POLLIN, 0}};
    if (::poll(ends.data(), ends.size(), WaitFor(line.toServer, line.toClient)) > 0) {
      if (ends[0].revents != 0 && !TakeFromClient(line)) break;
      if (ends[1].revents != 0 && !line.cutting && !TakeFromServer(line)) break;
    }
    Deliver(line.toServer, line.server);
    Deliver(line.toClient, client);
    if (line.cutting && line.toServer.empty()) {
      ++cuts_;
      break;
    }
  }
  for (const auto& [when, bytes] : line.toClient)
    SendAll(client, bytes);
  ::close(client);
  if (line.server >= 0) ::close(line.server);
}

}  // namespace testing_support
