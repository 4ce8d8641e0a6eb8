#include "tav_application.h"

#include "shared/vpath.h"

namespace tavon {

unsigned int tavApplication::Init(int argc, char** argv) {
  // A program may be started without any argument, not even its own name.
  FullPath = vlib::AbsolutePath(argc > 0 ? argv[0] : "");
  return 0;
}

}  // namespace tavon
