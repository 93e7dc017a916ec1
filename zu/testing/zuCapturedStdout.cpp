#include "zu/testing/zuCapturedStdout.h"

#include <unistd.h>

#include <cstdio>

namespace zu::testing {

std::string capturedStdout(const std::function<void()>& action) {
  std::fflush(stdout);
  std::FILE* file = std::tmpfile();
  const int saved = dup(1);
  dup2(fileno(file), 1);
  action();
  std::fflush(stdout);
  dup2(saved, 1);
  close(saved);
  std::rewind(file);
  std::string bytes;
  char chunk[4096];
  for (std::size_t read; (read = std::fread(chunk, 1, sizeof chunk, file)) > 0;) {
    bytes.append(chunk, read);
  }
  std::fclose(file);
  return bytes;
}

}  // namespace zu::testing
