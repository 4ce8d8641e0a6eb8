#include "system_calls.h"

// A function with 64-bit file offsets has a name of its own on 32-bit machines. The compiler finds it for the
// definitions below, for the search it is told here.
static constexpr const char* LargeFile(const char* name, const char* nameOn32Bits) {
  return sizeof(void*) == 4 ? nameOn32Bits : name;
}

namespace system_calls {

constinit SystemCall<int(const char*, mode_t)> chmod("chmod");
constinit SystemCall<FILE*(const char*, const char*)> fopen(LargeFile("fopen", "fopen64"));
constinit SystemCall<DIR*(const char*)> opendir("opendir");
constinit SystemCall<dirent*(DIR*)> readdir(LargeFile("readdir", "readdir64"));
constinit SystemCall<FILE*(const char*, const char*)> popen("popen");
constinit SystemCall<int(utsname*)> uname("uname");
constinit SystemCall<hostent*(const char*)> gethostbyname("gethostbyname");
constinit SystemCall<ssize_t(int, void*, std::size_t, int, sockaddr*, socklen_t*)> recvfrom("recvfrom");
constinit SystemCall<ssize_t(int, const void*, std::size_t, int, const sockaddr*, socklen_t)> sendto(
    "sendto");
constinit SystemCall<int(pthread_attr_t*, std::size_t)> pthread_attr_setstacksize(
    "pthread_attr_setstacksize");
constinit SystemCall<int(pthread_cond_t*, const pthread_condattr_t*)> pthread_cond_init("pthread_cond_init");
constinit SystemCall<int(pthread_cond_t*)> pthread_cond_signal("pthread_cond_signal");
constinit SystemCall<int(pthread_mutex_t*, const pthread_mutexattr_t*)> pthread_mutex_init(
    "pthread_mutex_init");

}  // namespace system_calls

extern "C" {

int chmod(const char* path, mode_t mode) noexcept { return system_calls::chmod(path, mode); }
FILE* fopen(const char* path, const char* mode) { return system_calls::fopen(path, mode); }
DIR* opendir(const char* path) { return system_calls::opendir(path); }
dirent* readdir(DIR* folder) { return system_calls::readdir(folder); }
FILE* popen(const char* command, const char* mode) { return system_calls::popen(command, mode); }
int uname(utsname* o_names) noexcept { return system_calls::uname(o_names); }
hostent* gethostbyname(const char* name) { return system_calls::gethostbyname(name); }
ssize_t recvfrom(int descriptor, void* buffer, std::size_t size, int flags, sockaddr* from,
                 socklen_t* length) {
  return system_calls::recvfrom(descriptor, buffer, size, flags, from, length);
}
ssize_t sendto(int descriptor, const void* data, std::size_t size, int flags, const sockaddr* to,
               socklen_t length) {
  return system_calls::sendto(descriptor, data, size, flags, to, length);
}
int pthread_attr_setstacksize(pthread_attr_t* attributes, std::size_t size) noexcept {
  return system_calls::pthread_attr_setstacksize(attributes, size);
}
int pthread_cond_init(pthread_cond_t* o_condition, const pthread_condattr_t* attributes) noexcept {
  return system_calls::pthread_cond_init(o_condition, attributes);
}
int pthread_cond_signal(pthread_cond_t* condition) noexcept {
  return system_calls::pthread_cond_signal(condition);
}
int pthread_mutex_init(pthread_mutex_t* o_mutex, const pthread_mutexattr_t* attributes) noexcept {
  return system_calls::pthread_mutex_init(o_mutex, attributes);
}

}  // extern "C"
