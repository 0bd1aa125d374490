// The tests of one build of the library. Ends with 77, which CTest reports as skipped, where the processor cannot run
// it.
#include "driver.hpp"

#include <cstdio>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const std::string build = driver::tested_build();
  if (!harness::processor_runs(build)) {
    std::printf("skipped: this processor lacks the instructions of the %s build\n", build.c_str());
    return 77;
  }
  return RUN_ALL_TESTS();
}
