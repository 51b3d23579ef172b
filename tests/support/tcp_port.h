// TCP ports of this computer, for tests of programs that listen.
#pragma once

#include <string>

namespace norvik {

// Listens on a free port, without taking connections from the queue, for as long as it lives.
class TcpListener {
 public:
  // Throws std::runtime_error where there is no port.
  TcpListener();
  ~TcpListener();
  TcpListener(const TcpListener&) = delete;
  TcpListener& operator=(const TcpListener&) = delete;

  int port() const { return port_; }

 private:
  int socket_;
  int port_ = 0;
};

// A port that nobody listens on at the time of the call.
int freePort();

// Whether somebody listens on the port.
bool connects(int port);

// What is sent to somebody who connects until the connection is closed or nothing comes for half a second;
// empty where nobody listens.
std::string greetingOn(int port);

}  // namespace norvik
