// Listens for notifications on a message bus, as the menu agent does.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace norvik {

class BusListener {
 public:
  // Listens from now on. The test fails where there is no bus at the address.
  explicit BusListener(const std::string& address);
  ~BusListener();
  BusListener(const BusListener&) = delete;
  BusListener& operator=(const BusListener&) = delete;

  // All notifications so far, as "NAME object=OBJECT options=N", with "null" for no object. Waits for the
  // first one; the test fails where none comes.
  std::vector<std::string> received();

 private:
  struct Connection;
  std::unique_ptr<Connection> connection_;
};

}  // namespace norvik
