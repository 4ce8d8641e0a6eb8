#pragma once

#include <sys/resource.h>

// The result of an operation that gets nothing of a resource: no descriptor (RLIMIT_NOFILE), no byte in any
// file (RLIMIT_FSIZE).
template <class Resource, class Operation>
auto Without(Resource resource, Operation operation) {
  rlimit before;
  getrlimit(resource, &before);
  const rlimit none{0, before.rlim_max};
  setrlimit(resource, &none);
  const auto result = operation();
  setrlimit(resource, &before);
  return result;
}
