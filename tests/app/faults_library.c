// Preloaded under ura_event by tests/app/faults: gives it too little memory and another time.
//
// URA_FAIL_ALLOCATION=N   the Nth allocation since the program started fails, N+ all from there on
// URA_TIME=SECONDS        the time of day
//
// A fault that was made is told on standard error, which the program itself never uses.
#define _GNU_SOURCE  // RTLD_NEXT
#include <dlfcn.h>
#include <errno.h>
#include <netdb.h>
#include <nss.h>
#include <stddef.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

// What the C library itself allocates with, under the names below.
extern void* __libc_malloc(size_t size);
extern void* __libc_calloc(size_t count, size_t size);
extern void* __libc_realloc(void* block, size_t size);

static unsigned long failing;  // 0: none
static unsigned long allocation;
static int lasting;
static int lookingUp;
static struct hostent* (*libraryLookup)(const char* name);
static int (*librarySetting)(const char* database, const char* services);

// Runs before the program's own constructors; what the loader allocates until then always succeeds.
__attribute__((constructor)) static void ReadOrders(void) {
  const char* const text = getenv("URA_FAIL_ALLOCATION");
  char* rest = NULL;
  *(void**)&libraryLookup = dlsym(RTLD_NEXT, "gethostbyname");
  *(void**)&librarySetting = dlsym(RTLD_NEXT, "__nss_configure_lookup");
  if (text == NULL) return;
  allocation = 0;
  failing = strtoul(text, &rest, 10);
  lasting = *rest == '+';
}

// Formatted output would allocate.
static void Tell(const char* text) {
  if (write(STDERR_FILENO, text, strlen(text)) < 0) abort();
}

static int Fails(void) {
  ++allocation;
  if (failing == 0 || allocation < failing || (allocation > failing && !lasting)) return 0;
  if (allocation == failing) Tell("fault made\n");
  if (lookingUp) Tell("fault made in the name lookup\n");
  errno = ENOMEM;
  return 1;
}

void* malloc(size_t size) { return Fails() ? NULL : __libc_malloc(size); }

void* calloc(size_t count, size_t size) { return Fails() ? NULL : __libc_calloc(count, size); }

void* realloc(void* block, size_t size) { return Fails() ? NULL : __libc_realloc(block, size); }

struct hostent* gethostbyname(const char* name) {
  struct hostent* found = NULL;
  lookingUp = 1;
  found = libraryLookup(name);
  lookingUp = 0;
  return found;
}

int __nss_configure_lookup(const char* database, const char* services) {
  int result = 0;
  lookingUp = 1;
  result = librarySetting(database, services);
  lookingUp = 0;
  return result;
}

time_t time(time_t* o_time) {
  const char* const text = getenv("URA_TIME");
  struct timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  if (text != NULL) now.tv_sec = (time_t)strtoll(text, NULL, 10);
  if (o_time != NULL) *o_time = now.tv_sec;
  return now.tv_sec;
}
