#pragma once

#include <dirent.h>
#include <dlfcn.h>
#include <netdb.h>
#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <new>
#include <type_traits>
#include <utility>

// A function of the C library that the test programs define themselves, beneath the libraries under test, so
// that a test can take its place. Until a test does, calls go on to the C library (or the sanitizer in front
// of it):
//
//   const auto notPermitted = system_calls::chmod.FailsWith(EPERM);
//   EXPECT_NE(MakeExecutable(path), 0);
//
// The replacement holds until the object that the call returned goes out of scope. Set and end it while no
// other thread is inside the function.
template <class Signature>
class SystemCall;

template <class Result, class... Arguments>
class SystemCall<Result(Arguments...)> {
 public:
  using StandIn = std::function<Result(Arguments...)>;

  // Takes the place of a function for as long as it lives.
  class Replacement {
   public:
    Replacement(SystemCall& call, StandIn standIn) : m_call(call), m_standIn(std::move(standIn)) {
      m_call.m_standIn = &m_standIn;
    }
    ~Replacement() { m_call.m_standIn = nullptr; }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

   private:
    SystemCall& m_call;
    const StandIn m_standIn;
  };

  // `symbol` is the name that the linker knows.
  constexpr explicit SystemCall(const char* symbol) : m_symbol(symbol) {}

  [[nodiscard]] Replacement ReplaceBy(StandIn standIn) { return Replacement(*this, std::move(standIn)); }

  // Every call sets errno and gives the result that means failure: a null pointer or -1.
  [[nodiscard]] Replacement FailsWith(int error) {
    return ReplaceBy([error](Arguments...) -> Result {
      errno = error;
      if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
      } else {
        return -1;
      }
    });
  }

  // Every call gives this result and does nothing, such as the error number of a thread function.
  [[nodiscard]] Replacement Returns(auto result) {
    return ReplaceBy([result](Arguments...) -> Result { return result; });
  }

  // What the function does when no test has taken its place.
  Result Real(Arguments... arguments) {
    if (m_real == nullptr) m_real = dlsym(RTLD_NEXT, m_symbol);
    return reinterpret_cast<Result (*)(Arguments...)>(m_real.load())(arguments...);
  }

  // For the definition of the function itself.
  Result operator()(Arguments... arguments) {
    const StandIn* const standIn = m_standIn;
    return standIn != nullptr ? (*standIn)(arguments...) : Real(arguments...);
  }

 private:
  const char* const m_symbol;
  std::atomic<void*> m_real{nullptr};
  std::atomic<const StandIn*> m_standIn{nullptr};
};

// The functions that a test can take the place of. To add one, declare it here and define the function of
// that name in system_calls.cpp.
namespace system_calls {

// On 32-bit machines a function with 64-bit file offsets or times has a name of its own, to which the header
// leads the compiler, and so has one of C++ that takes a size.
constexpr const char* NameFor64Bits(const char* name, const char* nameOn32Bits) {
  return sizeof(void*) == 4 ? nameOn32Bits : name;
}

// Files and folders
inline constinit SystemCall<int(const char*, mode_t)> chmod("chmod");
inline constinit SystemCall<int(int)> close("close");
inline constinit SystemCall<FILE*(const char*, const char*)> fopen(NameFor64Bits("fopen", "fopen64"));
inline constinit SystemCall<DIR*(const char*)> opendir("opendir");
inline constinit SystemCall<int(DIR*)> closedir("closedir");
inline constinit SystemCall<dirent*(DIR*)> readdir(NameFor64Bits("readdir", "readdir64"));

// The machine
inline constinit SystemCall<FILE*(const char*, const char*)> popen("popen");
inline constinit SystemCall<int(utsname*)> uname("uname");
inline constinit SystemCall<long()> gethostid("gethostid");

// The network
inline constinit SystemCall<hostent*(const char*)> gethostbyname("gethostbyname");
inline constinit SystemCall<ssize_t(int, const void*, std::size_t, int, const sockaddr*, socklen_t)> sendto(
    "sendto");

// Memory: the forms of `new`, and `delete` of an object
using New = SystemCall<void*(std::size_t)>;
using NewOrNull = SystemCall<void*(std::size_t, const std::nothrow_t&)>;
inline constinit New new_object(NameFor64Bits("_Znwm", "_Znwj"));
inline constinit New new_array(NameFor64Bits("_Znam", "_Znaj"));
inline constinit NewOrNull new_object_or_null(NameFor64Bits("_ZnwmRKSt9nothrow_t", "_ZnwjRKSt9nothrow_t"));
inline constinit NewOrNull new_array_or_null(NameFor64Bits("_ZnamRKSt9nothrow_t", "_ZnajRKSt9nothrow_t"));
inline constinit SystemCall<void(void*)> delete_object("_ZdlPv");

// Pauses of the calling thread
inline constinit SystemCall<unsigned int(unsigned int)> sleep("sleep");
inline constinit SystemCall<int(useconds_t)> usleep("usleep");

// Threads; these return their error number
inline constinit SystemCall<int(pthread_attr_t*, std::size_t)> pthread_attr_setstacksize(
    "pthread_attr_setstacksize");
inline constinit SystemCall<int(pthread_cond_t*)> pthread_cond_signal("pthread_cond_signal");
inline constinit SystemCall<int(pthread_cond_t*, pthread_mutex_t*)> pthread_cond_wait("pthread_cond_wait");
inline constinit SystemCall<int(pthread_t, int)> pthread_kill("pthread_kill");
inline constinit SystemCall<int(pthread_mutex_t*, const pthread_mutexattr_t*)> pthread_mutex_init(
    "pthread_mutex_init");

}  // namespace system_calls
