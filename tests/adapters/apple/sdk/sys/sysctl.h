// The kernel's list of processes, as far as the adapter reads it. Written from the manual page sysctl(3) of
// the platform (KERN_PROC, KERN_PROC_ALL, struct kinfo_proc).
#pragma once

#include <stddef.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { CTL_KERN = 1, KERN_PROC = 14, KERN_PROC_ALL = 0 };

struct kinfo_proc {
  struct {
    pid_t p_pid;
  } kp_proc;
  struct {
    struct {
      uid_t cr_uid;  // the effective one
    } e_ucred;
    pid_t e_ppid;
  } kp_eproc;
};

int sysctl(int* name, unsigned int namelen, void* oldp, size_t* oldlenp, void* newp, size_t newlen);

#ifdef __cplusplus
}
#endif
