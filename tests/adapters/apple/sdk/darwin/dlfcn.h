// Manual page dlsym(3) of the platform; POSIX dlfcn.h.
#pragma once
#ifdef __cplusplus
extern "C" {
#endif
#define RTLD_DEFAULT ((void*)-2)
void* dlsym(void* handle, const char* symbol);
#ifdef __cplusplus
}
#endif
