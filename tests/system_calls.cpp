#include "system_calls.h"

extern "C" {

int chmod(const char* path, mode_t mode) noexcept { return system_calls::chmod(path, mode); }
int close(int descriptor) { return system_calls::close(descriptor); }
FILE* fopen(const char* path, const char* mode) { return system_calls::fopen(path, mode); }
DIR* opendir(const char* path) { return system_calls::opendir(path); }
int closedir(DIR* folder) { return system_calls::closedir(folder); }
dirent* readdir(DIR* folder) { return system_calls::readdir(folder); }
FILE* popen(const char* command, const char* mode) { return system_calls::popen(command, mode); }
int uname(utsname* o_names) noexcept { return system_calls::uname(o_names); }
long gethostid() { return system_calls::gethostid(); }
hostent* gethostbyname(const char* name) { return system_calls::gethostbyname(name); }
ssize_t sendto(int descriptor, const void* data, std::size_t size, int flags, const sockaddr* to,
               socklen_t length) {
  return system_calls::sendto(descriptor, data, size, flags, to, length);
}
unsigned int sleep(unsigned int seconds) { return system_calls::sleep(seconds); }
int usleep(useconds_t microseconds) { return system_calls::usleep(microseconds); }
int pthread_attr_setstacksize(pthread_attr_t* attributes, std::size_t size) noexcept {
  return system_calls::pthread_attr_setstacksize(attributes, size);
}
int pthread_cond_signal(pthread_cond_t* condition) noexcept {
  return system_calls::pthread_cond_signal(condition);
}
int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
  return system_calls::pthread_cond_wait(condition, mutex);
}
int pthread_kill(pthread_t thread, int signal) noexcept { return system_calls::pthread_kill(thread, signal); }
int pthread_mutex_init(pthread_mutex_t* o_mutex, const pthread_mutexattr_t* attributes) noexcept {
  return system_calls::pthread_mutex_init(o_mutex, attributes);
}

}  // extern "C"

void* operator new(std::size_t bytes) { return system_calls::new_object(bytes); }
void* operator new[](std::size_t bytes) { return system_calls::new_array(bytes); }
void* operator new(std::size_t bytes, const std::nothrow_t& noThrow) noexcept {
  return system_calls::new_object_or_null(bytes, noThrow);
}
void* operator new[](std::size_t bytes, const std::nothrow_t& noThrow) noexcept {
  return system_calls::new_array_or_null(bytes, noThrow);
}
void operator delete(void* memory) noexcept { system_calls::delete_object(memory); }
void operator delete(void* memory, std::size_t) noexcept { system_calls::delete_object(memory); }
