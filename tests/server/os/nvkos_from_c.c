/* Compiled as C, which is the test of the header. */
#include "tests/server/os/nvkos_from_c.h"

#include <string.h>

#include "src/server/mac/os/nvkos.h"

int32_t versionFromC(const char* identifier) {
  int32_t major = -7, minor = -7, bugfix = -7;
  if (strcmp(NVKOS_SysName(), __nvkos_sys_name) != 0) return -1;
  if (NVKOS_SystemVersion(&major, &minor, &bugfix) != 1 || major != 0 || minor != 0 || bugfix != 0) return -1;
  if (NVKOS_SysVerEqual(0, 0) != 1 || NVKOS_SysVerEqualOrGreater(0, 1) != 0 || NVKOS_SysVerGreater(0, 0) != 0) return -1;
  return NVKOS_BundleVersion(identifier, NULL, NULL, NULL);
}
