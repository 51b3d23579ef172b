// Somebody who listens for notifications on a message bus, as the menu agent does.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace norvik {

class BusListener {
 public:
  // Listens from the moment that it is made.
  explicit BusListener(const std::string& address);
  ~BusListener();

  // What has come, after waiting for a while for the first: "NAME object=OBJECT options=N", "null" for none.
  std::vector<std::string> received();

 private:
  struct Connection;
  std::unique_ptr<Connection> connection_;
};

}  // namespace norvik
