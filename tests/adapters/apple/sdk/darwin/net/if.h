// Manual page getifaddrs(3) of the platform: the flags of an interface.
#pragma once
#define IFF_UP 0x1
#define IFF_RUNNING 0x40
