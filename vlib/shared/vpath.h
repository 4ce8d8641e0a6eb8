#pragma once

#include <string>

// The rule by which tavApplication, tavSystemUtility and droOsUtility find the program's own path.
namespace vlib {

// Makes a program's path absolute: one that begins with "./" or "../" is resolved against the current folder,
// one folder up for each "../". Any other path, absolute or a bare name found on the search path, is returned
// as it is, and so is every path when the current folder is unknown.
std::string AbsolutePath(const std::string& path);

}  // namespace vlib
