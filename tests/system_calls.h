#pragma once

#include <dirent.h>
#include <netdb.h>
#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdio>

#include "system_call.h"

// The functions of the C library that a test can take the place of; see SystemCall for how. To add one,
// declare it here and define it in system_calls.cpp.
namespace system_calls {

// Files and folders
extern SystemCall<int(const char*, mode_t)> chmod;
extern SystemCall<FILE*(const char*, const char*)> fopen;
extern SystemCall<DIR*(const char*)> opendir;
extern SystemCall<dirent*(DIR*)> readdir;

// The machine
extern SystemCall<FILE*(const char*, const char*)> popen;
extern SystemCall<int(utsname*)> uname;

// The network
extern SystemCall<hostent*(const char*)> gethostbyname;
extern SystemCall<ssize_t(int, void*, std::size_t, int, sockaddr*, socklen_t*)> recvfrom;
extern SystemCall<ssize_t(int, const void*, std::size_t, int, const sockaddr*, socklen_t)> sendto;

// Threads; these return their error number
extern SystemCall<int(pthread_attr_t*, std::size_t)> pthread_attr_setstacksize;
extern SystemCall<int(pthread_cond_t*, const pthread_condattr_t*)> pthread_cond_init;
extern SystemCall<int(pthread_cond_t*)> pthread_cond_signal;
extern SystemCall<int(pthread_mutex_t*, const pthread_mutexattr_t*)> pthread_mutex_init;

}  // namespace system_calls
