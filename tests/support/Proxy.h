// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace testing_support {

// A socket between a client and a server that can cut connections and delay the data. One thread per client.
class Proxy {
 public:
  // Gets the data of a client before the server; returns true to cut the connection.
  using Cut = std::function<bool(std::string_view fromClient)>;

  explicit Proxy(const QString& serverSocketFolder, std::chrono::microseconds delayEachWay = {});
  ~Proxy();
  Proxy(const Proxy&) = delete;
  Proxy& operator=(const Proxy&) = delete;

  // The folder of the proxy's socket.
  QString SocketFolder() const { return folder_.path(); }
  // The data is forwarded and the connection is cut at once, without the reply. An empty function stops cutting.
  void CutLines(Cut cut);
  // The data is not forwarded.
  void CutLinesBefore(Cut cut);
  int Cuts() const { return cuts_; }
  int Connections() const { return connections_; }
  int RoundTrips() const { return roundTrips_; }  // changes of direction from server to client and back

 private:
  struct Line;  // of one client

  void Accept();
  void Serve(int client);
  // Take what was received; false when the sender has closed the connection.
  bool TakeFromClient(Line& line);
  bool TakeFromServer(Line& line);

  const QString serverSocket_;
  const std::chrono::microseconds delay_;
  QTemporaryDir folder_;
  int listener_ = -1;
  std::mutex mutex_;
  Cut cut_;
  bool forwardsBeforeTheCut_ = true;
  std::atomic<int> cuts_ = 0;
  std::atomic<int> connections_ = 0;
  std::atomic<int> roundTrips_ = 0;
  std::atomic<bool> ending_ = false;
  std::vector<std::thread> lines_;
  std::thread accepting_;
};

}  // namespace testing_support
