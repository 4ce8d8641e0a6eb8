#include "tav_application.h"

#include "shared/vpath.h"

namespace tavon {

unsigned int tavApplication::Init(int /*argc*/, char** argv) {
  // A program may be started without any argument, not even its own name: a null pointer ends the list.
  FullPath = vlib::AbsolutePath(argv != nullptr && argv[0] != nullptr ? argv[0] : "");
  return 0;
}

}  // namespace tavon
