#include "system_calls.h"

extern "C" {

int chmod(const char* path, mode_t mode) noexcept { return system_calls::chmod(path, mode); }
FILE* fopen(const char* path, const char* mode) { return system_calls::fopen(path, mode); }
dirent* readdir(DIR* folder) { return system_calls::readdir(folder); }
FILE* popen(const char* command, const char* mode) { return system_calls::popen(command, mode); }
int uname(utsname* o_names) noexcept { return system_calls::uname(o_names); }
hostent* gethostbyname(const char* name) { return system_calls::gethostbyname(name); }
ssize_t sendto(int descriptor, const void* data, std::size_t size, int flags, const sockaddr* to,
               socklen_t length) {
  return system_calls::sendto(descriptor, data, size, flags, to, length);
}
int pthread_attr_setstacksize(pthread_attr_t* attributes, std::size_t size) noexcept {
  return system_calls::pthread_attr_setstacksize(attributes, size);
}
int pthread_cond_signal(pthread_cond_t* condition) noexcept {
  return system_calls::pthread_cond_signal(condition);
}
int pthread_mutex_init(pthread_mutex_t* o_mutex, const pthread_mutexattr_t* attributes) noexcept {
  return system_calls::pthread_mutex_init(o_mutex, attributes);
}

}  // extern "C"
