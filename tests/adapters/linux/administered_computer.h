// A Linux computer on which an administrator has granted everything, for tests that start tools.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "src/adapters/linux/linux_computer.h"

namespace norvik {

class AdministeredComputer {
 public:
  // On the root folder, with a clock that runs so much faster than real time.
  explicit AdministeredComputer(const std::string& root, double speed = 1) : computer(options(root, speed)) {
    const std::array<AuthorizationItem, 1> rights{{{"system.privilege.admin", "", 0}}};
    EXPECT_EQ(computer.authorization.AuthorizationCreate({}, 0, authorization_), errAuthorizationSuccess);
    EXPECT_EQ(computer.authorization.AuthorizationCopyRights(authorization_, rights,
                                                             kAuthorizationFlagInteractionAllowed),
              errAuthorizationSuccess);
  }

  // Starts a tool; with somebody who reads its output, where a pipe is given.
  void start(const char* path, std::vector<const char*> arguments = {}, FileRef* pipe = nullptr) {
    arguments.push_back(nullptr);
    EXPECT_EQ(computer.authorization.AuthorizationExecuteWithPrivileges(authorization_, path, 0,
                                                                        arguments.data(), pipe),
              errAuthorizationSuccess);
  }

  static LinuxComputerOptions options(const std::string& root, double speed = 1) {
    LinuxComputerOptions options;
    options.root = root;
    options.speed = speed;
    options.stateFolder = "/.norvik/state";
    options.authorization = [] { return true; };
    return options;
  }

  LinuxComputer computer;

 private:
  AuthorizationRef authorization_ = nullptr;
};

}  // namespace norvik
