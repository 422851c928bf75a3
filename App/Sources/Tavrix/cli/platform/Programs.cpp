#include "cli/platform/Programs.h"

#include <unistd.h>

#include <cerrno>

namespace tavrix::cli {

bool canStartProgram(const std::string& path) { return access(path.c_str(), X_OK) == 0; }

int becomeProgram(const std::string& path, const std::vector<std::string>& arguments) {
  std::vector<std::string> words{path};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  execv(path.c_str(), pointers.data());
  return errno;
}

}  // namespace tavrix::cli
